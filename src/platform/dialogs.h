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

// What closing a box without a button (Escape, the window's close button) answers.
inline MsgAnswer CloseAnswer(MsgButtons buttons) {
    switch (buttons) {
        case MsgButtons::OkCancel:
        case MsgButtons::YesNoCancel:
            return MsgAnswer::Cancel;
        case MsgButtons::YesNo:
            return MsgAnswer::No;
        case MsgButtons::Ok:
            break;
    }
    return MsgAnswer::Ok;
}

// Every message and question of the program goes through here.
class Dialogs {
public:
    virtual ~Dialogs() = default;
    // Once the desktop session is ending nothing waits for the user: a box is answered at
    // once as if closed, and an input box as cancelled, without being shown.
    MsgAnswer Show(const MessageBox& box) { return session_ending_ ? CloseAnswer(box.buttons) : ShowBox(box); }
    // The typed text, or nothing when the user cancelled.
    std::optional<std::string> Ask(const InputBox& box) { return session_ending_ ? std::nullopt : AskText(box); }

    // The common shapes, for brevity at the call sites.
    void Inform(const std::string& text) { Show({text, MsgIcon::Information, MsgButtons::Ok, {}, {}}); }
    void Warn(const std::string& text) { Show({text, MsgIcon::Exclamation, MsgButtons::Ok, {}, {}}); }
    void Fatal(const std::string& text, const std::string& title = {}) {
        Show({text, MsgIcon::Critical, MsgButtons::Ok, title, {}});
    }

    // The desktop session is ending: every box and dialog open now is closed without a
    // choice, and no further one is shown. Whoever opened one sees SessionEnding() afterwards.
    void EndSession() {
        session_ending_ = true;
        CloseOpenDialogs();
    }
    bool SessionEnding() const { return session_ending_; }

protected:
    virtual MsgAnswer ShowBox(const MessageBox& box) = 0;
    virtual std::optional<std::string> AskText(const InputBox& box) = 0;
    virtual void CloseOpenDialogs() {}
    // For a stand-in that serves several runs of the program in one test: each run begins
    // with its session open.
    void ReopenSession() { session_ending_ = false; }

private:
    bool session_ending_ = false;
};

}  // namespace vt
