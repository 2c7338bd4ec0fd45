#pragma once
#include <string>

namespace vt {

// What App asks of the tray icon window at start-up; from then on the tray's own one-second
// timer draws the icon from the state.
class TrayView {
public:
    virtual ~TrayView() = default;
    // Puts the icon in the tray with its first picture and tip, and starts its timer.
    virtual void Load() = 0;
    // A desktop notification, where the desktop offers them, so that a user away from the
    // screen finds a fired reminder in the notification list.
    virtual void Notify(const std::string& title, const std::string& text) = 0;
};

}  // namespace vt
