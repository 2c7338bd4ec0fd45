#pragma once
#include <QObject>
#include <functional>

class QSocketNotifier;

namespace vt {

// Turns SIGTERM and SIGINT (the session ending, a service manager, Ctrl+C in a terminal)
// into a call on the GUI thread, where the program's closing path can run safely.
// Only one may exist at a time: a signal handler can reach nothing but static data.
class SessionEnd : public QObject {
    Q_OBJECT

public:
    // deadlineMs > 0: the first signal also starts a last-resort timer, after which the
    // process is ended by SIGALRM whatever it is doing, so that nothing unforeseen can keep
    // an ending session waiting.
    explicit SessionEnd(std::function<void()> onSessionEnd, int deadlineMs = 0, QObject* parent = nullptr);
    ~SessionEnd() override;
    SessionEnd(const SessionEnd&) = delete;
    SessionEnd& operator=(const SessionEnd&) = delete;

    // False when the pipe or the handlers could not be set up; the signals then keep their
    // default effect of ending the process at once.
    bool isWatching() const { return m_notifier != nullptr; }

private:
    static void onSignal(int signal);
    void readSignal();

    std::function<void()> m_onSessionEnd;
    QSocketNotifier* m_notifier = nullptr;
};

}  // namespace vt
