#pragma once
#include <string>

namespace vt {

// What App asks of the main window.
class MainView {
public:
    virtual ~MainView() = default;
    virtual void SetCaption(const std::string& caption) = 0;
};

}  // namespace vt
