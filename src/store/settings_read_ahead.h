#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <thread>

#include "store/app_state.h"

namespace vt {

// The settings file read and parsed on a thread of its own. Started as the program starts, the
// work overlaps the set-up of the window system, which would otherwise wait for it; LoadSettings
// then takes the result, but only while the file still holds the very bytes that were parsed.
// Reading ahead changes nothing on disk, so a copy that ends at once (a second instance, a bad
// date format) leaves no trace of it.
class SettingsReadAhead {
public:
    explicit SettingsReadAhead(std::string settings_file);
    ~SettingsReadAhead();
    SettingsReadAhead(const SettingsReadAhead&) = delete;
    SettingsReadAhead& operator=(const SettingsReadAhead&) = delete;

    // Waits for the thread; then, once only, the settings parsed from bytes when bytes are what
    // was read from settings_file and they loaded without a message to show.
    std::optional<Settings> Take(const std::string& settings_file, std::string_view bytes);

private:
    std::string file_;
    std::string bytes_;
    std::optional<Settings> settings_;
    std::thread thread_;
};

}  // namespace vt
