#pragma once
#include "platform/dialogs.h"

namespace vt {

// Message boxes and input boxes on screen, over the active window. The buttons speak Spanish
// whatever the desktop's language, like the rest of the program.
class QtDialogs : public Dialogs {
public:
    MsgAnswer Show(const MessageBox& box) override;
    std::optional<std::string> Ask(const InputBox& box) override;
};

}  // namespace vt
