#pragma once
#include <string>
#include <vector>

#include "platform/instance_lock.h"
#include "platform/locale_info.h"
#include "shell/main_view.h"

namespace vt::test {

// A desktop whose short date format the test chooses.
class FakeLocaleInfo : public LocaleInfo {
public:
    std::string ShortDateFormat() const override { return format; }
    std::string format = "dd/MM/yyyy";
};

// An instance lock that is free unless the test says another copy holds it.
class FakeInstanceLock : public InstanceLock {
public:
    bool TryAcquire() override { return !held_elsewhere; }
    bool held_elsewhere = false;
};

// A main window that only remembers what it was told to show.
class RecordingMainView : public MainView {
public:
    void SetCaption(const std::string& caption) override { captions.push_back(caption); }
    std::vector<std::string> captions;
};

}  // namespace vt::test
