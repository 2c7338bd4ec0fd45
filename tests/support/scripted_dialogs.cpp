#include "scripted_dialogs.h"

namespace vt::test {

namespace {
MsgAnswer FirstButton(MsgButtons buttons) {
    switch (buttons) {
        case MsgButtons::YesNo:
        case MsgButtons::YesNoCancel:
            return MsgAnswer::Yes;
        default:
            return MsgAnswer::Ok;
    }
}
}  // namespace

MsgAnswer ScriptedDialogs::ShowBox(const MessageBox& box) {
    shown_.push_back(box);
    if (!answers_.empty()) {
        const MsgAnswer answer = answers_.front();
        answers_.pop_front();
        return answer;
    }
    return box.default_answer.value_or(FirstButton(box.buttons));
}

std::optional<std::string> ScriptedDialogs::AskText(const InputBox& box) {
    asked_.push_back(box);
    if (inputs_.empty()) {
        return std::nullopt;
    }
    auto typed = std::move(inputs_.front());
    inputs_.pop_front();
    return typed;
}

std::vector<std::string> ScriptedDialogs::Texts() const {
    std::vector<std::string> texts;
    for (const auto& box : shown_) {
        texts.push_back(box.text);
    }
    return texts;
}

}  // namespace vt::test
