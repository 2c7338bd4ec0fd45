// Starts a program and measures how long it takes to put a window of a given name on the
// screen, by watching the display for windows being mapped rather than polling for them.
//
//   window_watch [--answer NAME] MAIN -- program [arguments...]
//
// With --answer, a window named NAME that comes first (a message box) is answered with Enter
// through the XTest extension, as a user would; the time the user takes is not counted: the
// result is (box shown − start) + (main window shown − Enter pressed).
// Prints "<milliseconds> <pid> <milliseconds to the first window>" (the box, when there is
// one) and leaves the program running. Gives up after 60 s.
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

double MillisecondsBetween(Clock::time_point from, Clock::time_point to) {
    return std::chrono::duration<double, std::milli>(to - from).count();
}

// The window's title as the desktop shows it: the UTF-8 _NET_WM_NAME, else WM_NAME.
std::string WindowName(Display* display, Window window) {
    const Atom net_wm_name = XInternAtom(display, "_NET_WM_NAME", False);
    const Atom utf8 = XInternAtom(display, "UTF8_STRING", False);
    Atom type = None;
    int format = 0;
    unsigned long items = 0;
    unsigned long after = 0;
    unsigned char* data = nullptr;
    std::string name;
    if (XGetWindowProperty(display, window, net_wm_name, 0, 1024, False, utf8, &type, &format, &items, &after, &data) ==
            Success &&
        data != nullptr) {
        name.assign(reinterpret_cast<const char*>(data), items);
        XFree(data);
        return name;
    }
    char* plain = nullptr;
    if (XFetchName(display, window, &plain) != 0 && plain != nullptr) {
        name = plain;
        XFree(plain);
    }
    return name;
}

void PressEnter(Display* display) {
    const KeyCode enter = XKeysymToKeycode(display, XK_Return);
    XTestFakeKeyEvent(display, enter, True, 0);
    XTestFakeKeyEvent(display, enter, False, 0);
    XFlush(display);
}

}  // namespace

int main(int argc, char** argv) {
    std::string answer;
    int arg = 1;
    if (arg + 1 < argc && std::strcmp(argv[arg], "--answer") == 0) {
        answer = argv[arg + 1];
        arg += 2;
    }
    if (arg + 2 >= argc || std::strcmp(argv[arg + 1], "--") != 0) {
        std::fprintf(stderr, "usage: window_watch [--answer NAME] MAIN -- program [arguments...]\n");
        return 2;
    }
    const std::string main_name = argv[arg];
    char** command = argv + arg + 2;

    Display* display = XOpenDisplay(nullptr);
    if (display == nullptr) {
        std::fprintf(stderr, "window_watch: no display\n");
        return 2;
    }
    XSelectInput(display, DefaultRootWindow(display), SubstructureNotifyMask);
    XSync(display, False);

    const Clock::time_point start = Clock::now();
    const pid_t pid = fork();
    if (pid == 0) {
        // The program's own output would mix with the result line.
        const int null_device = open("/dev/null", O_WRONLY);
        dup2(null_device, STDOUT_FILENO);
        dup2(null_device, STDERR_FILENO);
        execvp(command[0], command);
        _exit(127);
    }
    if (pid < 0) {
        std::perror("window_watch: fork");
        return 2;
    }

    double counted = 0;
    double first = -1;
    Clock::time_point from = start;
    const int connection = ConnectionNumber(display);
    while (MillisecondsBetween(start, Clock::now()) < 60000) {
        if (waitpid(pid, nullptr, WNOHANG) == pid) {
            std::fprintf(stderr, "window_watch: the program ended before showing \"%s\"\n", main_name.c_str());
            return 1;
        }
        if (XPending(display) == 0) {
            fd_set readable;
            FD_ZERO(&readable);
            FD_SET(connection, &readable);
            timeval wait{0, 100000};
            select(connection + 1, &readable, nullptr, nullptr, &wait);
            continue;
        }
        XEvent event;
        XNextEvent(display, &event);
        if (event.type != MapNotify) {
            continue;
        }
        const Clock::time_point shown = Clock::now();
        const std::string name = WindowName(display, event.xmap.window);
        if (name == main_name) {
            counted += MillisecondsBetween(from, shown);
            if (first < 0) {
                first = counted;
            }
            std::fprintf(stderr, "window_watch: \"%s\" %.1f ms after %s\n", name.c_str(),
                         MillisecondsBetween(from, shown), answer.empty() ? "the start" : "the answer");
            std::printf("%.1f %d %.1f\n", counted, static_cast<int>(pid), first);
            return 0;
        }
        if (!answer.empty() && name == answer) {
            counted += MillisecondsBetween(from, shown);
            first = counted;
            std::fprintf(stderr, "window_watch: \"%s\" %.1f ms after the start\n", name.c_str(),
                         MillisecondsBetween(from, shown));
            // Give the box the moment a user's eye would, then answer; only what follows the
            // key counts again.
            usleep(200000);
            XSetInputFocus(display, event.xmap.window, RevertToParent, CurrentTime);
            PressEnter(display);
            from = Clock::now();
        }
    }
    std::fprintf(stderr, "window_watch: no window \"%s\" within 60 s\n", main_name.c_str());
    return 1;
}
