#pragma once
#include <optional>
#include <string>

namespace vt {

enum class MsgIcon { None, Critical, Question, Exclamation, Information };
enum class MsgButtons { Ok, OkCancel, YesNo, YesNoCancel };
enum class MsgAnswer { Ok, Cancel, Yes, No };

// One message box as the user sees it. An empty title means the program's default title.
struct MessageBox {
    std::string text;
    MsgIcon icon = MsgIcon::None;
    MsgButtons buttons = MsgButtons::Ok;
    std::string title;
    // The button that Enter presses; when unset, the first one.
    std::optional<MsgAnswer> default_answer;
};

// One input box: a prompt, a title and the text it starts with.
struct InputBox {
    std::string prompt;
    std::string title;
    std::string initial;
};

// Every message and question of the program goes through here.
class Dialogs {
public:
    virtual ~Dialogs() = default;
    virtual MsgAnswer Show(const MessageBox& box) = 0;
    // The typed text, or nothing when the user cancelled.
    virtual std::optional<std::string> Ask(const InputBox& box) = 0;

    // The common shapes, for brevity at the call sites.
    void Inform(const std::string& text) { Show({text, MsgIcon::Information, MsgButtons::Ok, {}, {}}); }
    void Warn(const std::string& text) { Show({text, MsgIcon::Exclamation, MsgButtons::Ok, {}, {}}); }
    void Fatal(const std::string& text, const std::string& title = {}) {
        Show({text, MsgIcon::Critical, MsgButtons::Ok, title, {}});
    }
};

}  // namespace vt
