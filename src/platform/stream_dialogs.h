#pragma once
#include <optional>
#include <ostream>
#include <string>

#include "platform/dialogs.h"

namespace vt {

// For work done where nobody can click a box (the command-line tool, a computation that
// borrows a routine made for the windows): what a box would say goes to a stream, or nowhere,
// and every box is answered as if closed.
class StreamDialogs : public Dialogs {
public:
    explicit StreamDialogs(std::ostream* out = nullptr) : out_(out) {}

protected:
    MsgAnswer ShowBox(const MessageBox& box) override {
        if (out_ != nullptr) {
            *out_ << box.text << "\n";
        }
        return MsgAnswer::Cancel;
    }
    std::optional<std::string> AskText(const InputBox&) override { return std::nullopt; }

private:
    std::ostream* out_;
};

}  // namespace vt
