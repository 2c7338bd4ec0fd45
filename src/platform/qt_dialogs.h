#pragma once
#include "platform/dialogs.h"

namespace vt {

// Message boxes and input boxes on screen, over the active window. The buttons speak Spanish
// whatever the desktop's language, like the rest of the program.
class QtDialogs : public Dialogs {
protected:
    MsgAnswer ShowBox(const MessageBox& box) override;
    std::optional<std::string> AskText(const InputBox& box) override;
    // Every dialog of the program on screen, message boxes and editors alike.
    void CloseOpenDialogs() override;
};

}  // namespace vt
