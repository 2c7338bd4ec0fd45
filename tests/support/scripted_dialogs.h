#pragma once
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "platform/dialogs.h"

namespace vt::test {

// Records every message box and input box the program shows, and answers from a script
// given in advance. With the script used up, a message box is answered with its default
// button and an input box is cancelled.
class ScriptedDialogs : public Dialogs {
public:
    MsgAnswer ShowBox(const MessageBox& box) override;
    std::optional<std::string> AskText(const InputBox& box) override;

    void QueueAnswer(MsgAnswer answer) { answers_.push_back(answer); }
    void QueueInput(std::optional<std::string> typed) { inputs_.push_back(std::move(typed)); }

    const std::vector<MessageBox>& Shown() const { return shown_; }
    const std::vector<InputBox>& Asked() const { return asked_; }
    // The texts of the message boxes shown so far, in order.
    std::vector<std::string> Texts() const;
    void Forget() {
        shown_.clear();
        asked_.clear();
    }
    // A test that starts the program again after its session ended.
    using Dialogs::ReopenSession;

private:
    std::deque<MsgAnswer> answers_;
    std::deque<std::optional<std::string>> inputs_;
    std::vector<MessageBox> shown_;
    std::vector<InputBox> asked_;
};

}  // namespace vt::test
