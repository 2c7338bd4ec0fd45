#include "shell/qt_session_end.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/socket.h>
#include <time.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <array>
#include <cerrno>

namespace vt {

namespace {
// The self-pipe: the handler may only do async-signal-safe things, so it writes one byte and
// the event loop, watching the other end, does the real work. Static because a signal
// handler has no other way to find it.
int g_pipe[2] = {-1, -1};

constexpr std::array<int, 2> kSignals{SIGTERM, SIGINT};
struct sigaction g_previous[kSignals.size()];

// The last-resort timer: made beforehand, because only arming it is safe in a handler.
timer_t g_deadline{};
bool g_hasDeadline = false;
struct itimerspec g_deadlineSpec {};
volatile sig_atomic_t g_deadlineArmed = 0;

void ClosePipe() {
    for (int& fd : g_pipe) {
        if (fd >= 0) {
            ::close(fd);
            fd = -1;
        }
    }
}
}  // namespace

SessionEnd::SessionEnd(std::function<void()> onSessionEnd, int deadlineMs, QObject* parent)
    : QObject(parent), m_onSessionEnd(std::move(onSessionEnd)) {
    if (g_pipe[0] >= 0) {
        return;  // another one is already watching
    }
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, g_pipe) != 0) {
        g_pipe[0] = g_pipe[1] = -1;
        return;
    }
    if (deadlineMs > 0) {
        struct sigevent event {};
        event.sigev_notify = SIGEV_SIGNAL;
        event.sigev_signo = SIGALRM;
        g_hasDeadline = ::timer_create(CLOCK_MONOTONIC, &event, &g_deadline) == 0;
        g_deadlineSpec.it_value.tv_sec = deadlineMs / 1000;
        g_deadlineSpec.it_value.tv_nsec = static_cast<long>(deadlineMs % 1000) * 1000000L;
        g_deadlineArmed = 0;
    }
    // A burst of signals must never block the handler on a full socket.
    ::fcntl(g_pipe[1], F_SETFL, ::fcntl(g_pipe[1], F_GETFL) | O_NONBLOCK);

    struct sigaction action {};
    action.sa_handler = &SessionEnd::onSignal;
    sigemptyset(&action.sa_mask);
    // Restart interrupted system calls so that the rest of the program never sees EINTR.
    action.sa_flags = SA_RESTART;
    for (size_t i = 0; i < kSignals.size(); ++i) {
        ::sigaction(kSignals[i], &action, &g_previous[i]);
    }

    m_notifier = new QSocketNotifier(g_pipe[0], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &SessionEnd::readSignal);
}

SessionEnd::~SessionEnd() {
    if (m_notifier == nullptr) {
        return;
    }
    for (size_t i = 0; i < kSignals.size(); ++i) {
        ::sigaction(kSignals[i], &g_previous[i], nullptr);
    }
    delete m_notifier;
    m_notifier = nullptr;
    ClosePipe();
    if (g_hasDeadline) {
        ::timer_delete(g_deadline);
        g_hasDeadline = false;
    }
}

void SessionEnd::onSignal(int) {
    const int saved_errno = errno;
    if (g_hasDeadline && g_deadlineArmed == 0) {
        g_deadlineArmed = 1;
        // SIGALRM's own effect, ending the process, whatever anyone made of it before.
        struct sigaction fatal {};
        fatal.sa_handler = SIG_DFL;
        sigemptyset(&fatal.sa_mask);
        ::sigaction(SIGALRM, &fatal, nullptr);
        ::timer_settime(g_deadline, 0, &g_deadlineSpec, nullptr);
    }
    const char byte = 1;
    [[maybe_unused]] const ssize_t written = ::write(g_pipe[1], &byte, 1);
    errno = saved_errno;
}

void SessionEnd::readSignal() {
    // Drain everything: several signals before the loop came round end the session once.
    std::array<char, 16> bytes{};
    while (::recv(g_pipe[0], bytes.data(), bytes.size(), MSG_DONTWAIT) > 0) {
    }
    if (m_onSessionEnd) {
        m_onSessionEnd();
    }
}

}  // namespace vt
