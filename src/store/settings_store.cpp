#include "store/settings_store.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <optional>

#include "platform/dialogs.h"
#include "store/backups.h"
#include "store/busy.h"
#include "store/cp1252.h"
#include "store/dates.h"
#include "store/ini_file.h"
#include "store/text_file.h"

namespace vt {

namespace {

constexpr std::array<std::string_view, 8> kWeekdayKeys = {"",       "LUNES",   "MARTES", "MIERCOLES",
                                                          "JUEVES", "VIERNES", "SABADO", "DOMINGO"};

constexpr const char* kFatalTitle = "ATENCIÓN!";

std::string EntryKey(std::string_view prefix, int number) {
    char digits[16];
    std::snprintf(digits, sizeof digits, "%03d", number);
    return std::string(prefix) + digits;
}

// The entry number of a key such as "ALA_007" (prefix, then three digits), or 0 when the key is
// no entry key or lies outside 001..kMaxEntries.
int EntryNumber(std::string_view key, std::string_view prefix) {
    if (key.size() != prefix.size() + 3) {
        return 0;
    }
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    for (size_t i = 0; i < prefix.size(); ++i) {
        if (lower(key[i]) != lower(prefix[i])) {  // key names ignore ASCII case
            return 0;
        }
    }
    int number = 0;
    for (const char digit : key.substr(prefix.size())) {
        if (digit < '0' || digit > '9') {
            return 0;
        }
        number = number * 10 + (digit - '0');
    }
    return number <= kMaxEntries ? number : 0;
}

// Every key from 001 to 998 counts, in number order, so a gap left by hand editing closes up
// instead of ending the list. One pass over the section finds them all.
void ReadEntries(const IniDocument& doc, std::string_view section, std::string_view prefix, EntryList& list) {
    std::array<std::string_view, kMaxEntries + 1> by_number{};
    doc.ForEachKey(section, [&](std::string_view key, std::string_view value) {
        if (const int number = EntryNumber(key, prefix); number > 0) {
            by_number[static_cast<size_t>(number)] = value;
        }
    });
    for (const std::string_view value : by_number) {
        if (!value.empty()) {
            list.Append(std::string(value));
        }
    }
}

// The stored alarm count read as a 16-bit integer; nothing when it is no such number, which
// the check then treats like a wrong count.
std::optional<std::int16_t> ParseAlarmCount(std::string_view text) {
    if (text.size() > 1 && text.front() == '+' && text[1] >= '0' && text[1] <= '9') {
        text.remove_prefix(1);
    }
    std::int16_t count = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
    if (error != std::errc{} || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return count;
}

std::string LastCharacter(std::string_view text) {
    const size_t length = Utf8Length(text);
    return std::string(text.substr(Utf8Left(text, length - 1).size()));
}

}  // namespace

bool LoadSettingsFromBytes(std::string_view bytes, Settings& settings, Dialogs& dialogs) {
    const IniDocument doc = IniDocument::Parse(bytes);
    Settings loaded;
    std::string value;

    // Positional on purpose: a malformed value yields whatever stands at those places, so
    // "7:30|P" gives the hours "7:30|".
    for (size_t day = 1; day <= 7; ++day) {
        // An empty or missing value keeps the default, "08:00" and "C".
        if (doc.Read("CONFIG", kWeekdayKeys[day], value)) {
            loaded.DayHours[day] = Utf8Left(value, 5);
            loaded.DayMode[day] = LastCharacter(value);
        }
    }

    doc.Read("GENERAL", "FECHA", loaded.WorkDate);
    doc.Read("GENERAL", "ENTRADA1", loaded.Entrada1);
    doc.Read("GENERAL", "SALIDA1", loaded.Salida1);
    doc.Read("GENERAL", "ENTRADA2", loaded.Entrada2);
    const auto count_text = doc.Find("GENERAL", "NUM_ALARMAS");
    const std::string_view stored_count = count_text && !count_text->empty() ? *count_text : std::string_view("0");

    ReadEntries(doc, "REPETICIONES", "REP_", loaded.Repetitions);
    ReadEntries(doc, "ALARMAS", "ALA_", loaded.Alarms);

    // Only the alarms carry a count. A mismatch means the file was cut or mis-edited, and the
    // next save would silently make the loss permanent, so the program stops instead.
    const auto count = ParseAlarmCount(stored_count);
    if (!count || *count != loaded.Alarms.Count()) {
        dialogs.Fatal(
            "Se han detectado discrepancias en el INI.\r\n\r\n"
            "El número de alarmas no es el correcto.",
            kFatalTitle);
        return false;
    }

    if (doc.Read("ACCESOS", "ULTIMO", value)) {
        loaded.UltimoAcceso = ParseDateTime(value).value_or(NeverScanned());
    }

    settings = std::move(loaded);
    return true;
}

bool LoadSettings(const std::string& settings_file, Settings& settings, Dialogs& dialogs) {
    const FileContents contents = ReadWholeFile(settings_file);
    switch (contents.outcome) {
        case ReadOutcome::Missing:
            settings = Settings{};
            return true;
        case ReadOutcome::Unreadable:
            // Going on with defaults would overwrite the user's agenda at the first save.
            dialogs.Fatal("No se ha podido leer el archivo de configuración:\r\n" + settings_file +
                              "\r\n\r\nEl programa se cerrará sin tocar ningún archivo.",
                          kFatalTitle);
            return false;
        case ReadOutcome::Read:
            break;
    }
    return LoadSettingsFromBytes(contents.bytes, settings, dialogs);
}

std::string SettingsFileText(const Settings& settings) {
    IniDocument doc;
    doc.Write("GENERAL", "FECHA", settings.WorkDate);
    doc.Write("GENERAL", "ENTRADA1", settings.Entrada1);
    doc.Write("GENERAL", "SALIDA1", settings.Salida1);
    doc.Write("GENERAL", "ENTRADA2", settings.Entrada2);
    doc.Write("GENERAL", "NUM_ALARMAS", std::to_string(settings.Alarms.Count()));

    for (size_t day = 1; day <= 7; ++day) {
        doc.Write("CONFIG", kWeekdayKeys[day], settings.DayHours[day] + "|" + settings.DayMode[day]);
    }

    // Renumbered from 1 without gaps; a section without entries is still written.
    doc.AddSection("REPETICIONES");
    int number = 0;
    for (const auto& entry : settings.Repetitions) {
        doc.Write("REPETICIONES", EntryKey("REP_", ++number), entry);
    }
    doc.AddSection("ALARMAS");
    number = 0;
    for (const auto& entry : settings.Alarms) {
        doc.Write("ALARMAS", EntryKey("ALA_", ++number), entry);
    }

    doc.Write("ACCESOS", "ULTIMO", FormatDateTime(settings.UltimoAcceso));
    return doc.Text();
}

bool SaveSettings(const AppPaths& paths, const Settings& settings, Busy& busy, Dialogs& dialogs) {
    BusyScope scope(busy);
    const std::string file = paths.SettingsFile();
    const auto refuse = [&] {
        dialogs.Warn("No se ha podido guardar la configuración en:\r\n" + file +
                     "\r\n\r\nEl archivo anterior se conserva sin cambios.");
        return false;
    };
    // Without its backup copy the old file is not replaced: a save must never lose a version
    // that cannot be restored.
    if (PathExists(file) && !BackUpSettingsFile(paths)) {
        return refuse();
    }
    // The rename inside replaces the old file even when it is read-only, as the forced delete
    // of the old file did.
    if (WriteFileAtomically(file, Utf8ToCp1252(SettingsFileText(settings)))) {
        return refuse();
    }
    return true;
}

}  // namespace vt
