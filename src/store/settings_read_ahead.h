#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <thread>

#include "store/app_state.h"

namespace vt {

// The settings file parsed on a thread of its own, so that the parse overlaps work that would
// otherwise wait for it: the set-up of the window system at the start, the disk flushes of a
// save before the file is read back. LoadSettings then takes the result, but only when the
// file holds the very bytes that were parsed; otherwise it parses the file itself. Reading
// ahead changes nothing on disk, so a copy that ends at once (a second instance, a bad date
// format) leaves no trace of it.
class SettingsReadAhead {
public:
    SettingsReadAhead() = default;
    // Reads settings_file and parses it.
    explicit SettingsReadAhead(std::string settings_file);
    ~SettingsReadAhead();
    SettingsReadAhead(const SettingsReadAhead&) = delete;
    SettingsReadAhead& operator=(const SettingsReadAhead&) = delete;

    // Parses bytes that are about to be written to settings_file.
    void ParseAhead(std::string settings_file, std::string bytes);

    // Waits for the thread; then, once only, the settings parsed from bytes when bytes are what
    // was parsed for settings_file and they loaded without a message to show.
    std::optional<Settings> Take(const std::string& settings_file, std::string_view bytes);

private:
    void Begin(std::string settings_file, std::optional<std::string> bytes);
    void Wait();

    std::string file_;
    std::string bytes_;
    std::optional<Settings> settings_;
    std::thread thread_;
};

}  // namespace vt
