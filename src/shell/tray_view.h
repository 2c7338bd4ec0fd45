#pragma once

namespace vt {

// What App asks of the tray icon window at start-up; from then on the tray's own one-second
// timer draws the icon from the state.
class TrayView {
public:
    virtual ~TrayView() = default;
    // Puts the icon in the tray with its first picture and tip, and starts its timer.
    virtual void Load() = 0;
};

}  // namespace vt
