#pragma once
// Stand-ins for the desktop that the access log talks to.
#include <cstdlib>
#include <ctime>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/recent_files.h"
#include "platform/shell_folders.h"
#include "platform/shell_open.h"

namespace vt::test {

// A list of recent files held in memory; on_list runs while the scan waits for it.
class FakeRecentFiles : public RecentFiles {
public:
    RecentListing List() override {
        ++calls;
        if (on_list) {
            on_list();
        }
        return listing;
    }
    void Add(std::string name, std::string target, DateTime modified, std::string link_path = {}) {
        listing.files.push_back({std::move(name), std::move(target), std::move(link_path), modified, false});
    }
    RecentListing listing;
    std::function<void()> on_list;
    int calls = 0;
};

class RecordingShellOpen : public ShellOpen {
public:
    bool Open(const std::string& target, const std::string& working_folder) override {
        opened.push_back(target + " | " + working_folder);
        return true;
    }
    std::vector<std::string> opened;
};

class FakeShellFolders : public ShellFolders {
public:
    std::string CarpetaEspecial(int number) override { return number == kRecentFolder ? recent : std::string{}; }
    std::string RecentFilesView() override { return view; }
    std::string recent;
    std::string view;
};

// Pins the process's time zone for one test and puts the previous one back afterwards, so that
// local times are the same on every machine.
class ScopedTimeZone {
public:
    explicit ScopedTimeZone(const char* zone) {
        if (const char* old = std::getenv("TZ")) {
            previous_ = old;
        }
        ::setenv("TZ", zone, 1);
        ::tzset();
    }
    ~ScopedTimeZone() {
        previous_ ? ::setenv("TZ", previous_->c_str(), 1) : ::unsetenv("TZ");
        ::tzset();
    }
    ScopedTimeZone(const ScopedTimeZone&) = delete;
    ScopedTimeZone& operator=(const ScopedTimeZone&) = delete;

private:
    std::optional<std::string> previous_;
};

// Central European time with its summer rule, written out so that no time zone database is
// needed: UTC+1, and UTC+2 from the last Sunday of March to the last Sunday of October.
inline constexpr const char* kMadrid = "CET-1CEST,M3.5.0,M10.5.0/3";

}  // namespace vt::test
