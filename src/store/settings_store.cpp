#include "store/settings_store.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <thread>

#include "platform/dialogs.h"
#include "store/backups.h"
#include "store/busy.h"
#include "store/cp1252.h"
#include "store/dates.h"
#include "store/error_text.h"
#include "store/ini_file.h"
#include "store/settings_read_ahead.h"
#include "store/text_file.h"

namespace vt {

namespace {

constexpr std::array<std::string_view, 8> kWeekdayKeys = {"",       "LUNES",   "MARTES", "MIERCOLES",
                                                          "JUEVES", "VIERNES", "SABADO", "DOMINGO"};

constexpr const char* kFatalTitle = "ATENCIÓN!";

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

// The sections the program writes. A file that holds something but none of them is not a
// settings file any more (binary garbage, a UTF-16 file without its mark): it would load as the
// defaults, and the first save would write over whatever it was.
bool IsDamaged(std::string_view bytes, const IniDocument& doc) {
    if (bytes.find_first_not_of(" \t\r\n") == std::string_view::npos) {
        return false;
    }
    for (const std::string_view section : {"GENERAL", "CONFIG", "REPETICIONES", "ALARMAS", "ACCESOS"}) {
        if (doc.HasSection(section)) {
            return false;
        }
    }
    return true;
}

// Copies a damaged settings file beside itself, under a name that says so and when, before
// anything can write over it. An earlier copy of the same second is never replaced.
bool PutAsideDamaged(const std::string& file, const FileContents& contents, DateTime now, Dialogs& dialogs) {
    const Date day = DateOf(now);
    const int seconds = SecondsOfDay(now);
    char stamp[32];
    std::snprintf(stamp, sizeof stamp, "%04d%02u%02u-%02d%02d%02d", static_cast<int>(day.year()),
                  static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()), seconds / 3600,
                  seconds / 60 % 60, seconds % 60);
    const std::string base = file + ".da\u00F1ado-" + stamp;
    std::string copy = base;
    for (int n = 2; PathExists(copy); ++n) {
        copy = base + "-" + std::to_string(n);
    }
    if (const std::error_code error = WriteFileAtomically(copy, contents.bytes, contents.modified)) {
        dialogs.Fatal(
            "El archivo de configuraci\u00F3n est\u00E1 da\u00F1ado y no se ha podido apartar una copia en:\r\n" +
                copy + " (" + ErrorText(error) + ").\r\n\r\nEl programa se cerrar\u00E1 sin tocar ning\u00FAn archivo.",
            kFatalTitle);
        return false;
    }
    dialogs.Warn("El archivo de configuraci\u00F3n no se puede leer (est\u00E1 da\u00F1ado o no es de texto):\r\n" +
                 file + "\r\n\r\nSe ha apartado una copia en:\r\n" + copy +
                 "\r\n\r\nEl programa empieza con una configuraci\u00F3n nueva.");
    return true;
}

// The settings a document holds, or nothing when its alarm count does not match its alarms.
std::optional<Settings> SettingsFromDocument(const IniDocument& doc) {
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
        return std::nullopt;
    }

    if (doc.Read("ACCESOS", "ULTIMO", value)) {
        loaded.UltimoAcceso = ParseDateTime(value).value_or(NeverScanned());
    }
    return loaded;
}

bool LoadFromDocument(const IniDocument& doc, Settings& settings, Dialogs& dialogs) {
    std::optional<Settings> loaded = SettingsFromDocument(doc);
    if (!loaded) {
        dialogs.Fatal(
            "Se han detectado discrepancias en el INI.\r\n\r\n"
            "El número de alarmas no es el correcto.",
            kFatalTitle);
        return false;
    }
    settings = std::move(*loaded);
    return true;
}

}  // namespace

std::string EntryKey(std::string_view prefix, int number) {
    char digits[16];
    const auto written = std::to_chars(digits, digits + sizeof digits, number).ptr - digits;
    std::string key(prefix);
    key.append(static_cast<size_t>(std::max<std::ptrdiff_t>(3 - written, 0)), '0');
    key.append(digits, static_cast<size_t>(written));
    return key;
}

SettingsReadAhead::SettingsReadAhead(std::string settings_file) {
    Begin(std::move(settings_file), std::nullopt);
}

SettingsReadAhead::~SettingsReadAhead() {
    Wait();
}

void SettingsReadAhead::ParseAhead(std::string settings_file, std::string bytes) {
    Begin(std::move(settings_file), std::move(bytes));
}

void SettingsReadAhead::Begin(std::string settings_file, std::optional<std::string> bytes) {
    Wait();
    file_ = std::move(settings_file);
    bytes_.clear();
    settings_.reset();
    thread_ = std::thread([this, bytes = std::move(bytes)]() mutable {
        // Anything unusual (no file, a damaged one, a wrong count) is left to LoadSettings, which
        // reads the file again and tells the user.
        try {
            if (bytes) {
                bytes_ = std::move(*bytes);
            } else {
                FileContents contents = ReadWholeFile(file_);
                if (contents.outcome != ReadOutcome::Read) {
                    return;
                }
                bytes_ = std::move(contents.bytes);
            }
            const IniDocument doc = IniDocument::Parse(bytes_);
            if (!IsDamaged(bytes_, doc)) {
                settings_ = SettingsFromDocument(doc);
            }
        } catch (...) {
            settings_.reset();
        }
    });
}

void SettingsReadAhead::Wait() {
    if (thread_.joinable()) {
        thread_.join();
    }
}

std::optional<Settings> SettingsReadAhead::Take(const std::string& settings_file, std::string_view bytes) {
    Wait();
    std::optional<Settings> taken;
    if (settings_file == file_ && bytes == bytes_) {
        taken.swap(settings_);
    }
    // Nothing of it is needed any more; the bytes go back to the allocator, not just emptied.
    settings_.reset();
    std::string().swap(bytes_);
    return taken;
}

bool LoadSettingsFromBytes(std::string_view bytes, Settings& settings, Dialogs& dialogs) {
    return LoadFromDocument(IniDocument::Parse(bytes), settings, dialogs);
}

bool LoadSettings(const std::string& settings_file, Settings& settings, Dialogs& dialogs, DateTime now,
                  SettingsReadAhead* read_ahead) {
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
    if (read_ahead != nullptr) {
        if (std::optional<Settings> ready = read_ahead->Take(settings_file, contents.bytes)) {
            settings = std::move(*ready);
            return true;
        }
    }
    const IniDocument doc = IniDocument::Parse(contents.bytes);
    if (IsDamaged(contents.bytes, doc)) {
        if (!PutAsideDamaged(settings_file, contents, now, dialogs)) {
            return false;
        }
        settings = Settings{};
        return true;
    }
    return LoadFromDocument(doc, settings, dialogs);
}

std::string SettingsFileText(const Settings& settings) {
    // Written out line by line: the file is always laid out the same way, and a document built
    // key by key spent most of a full agenda's save looking up keys that cannot be there yet.
    std::string text;
    text.reserve(512 + 80 * static_cast<size_t>(settings.Repetitions.Count() + settings.Alarms.Count()));
    const auto section = [&](std::string_view name) {
        // One empty line between sections.
        if (!text.empty()) {
            text += "\r\n";
        }
        text.append("[").append(name).append("]\r\n");
    };
    const auto key = [&](std::string_view name, std::string_view value) {
        text.append(name).append("=");
        AppendIniValue(text, value);
        text += "\r\n";
    };
    section("GENERAL");
    key("FECHA", settings.WorkDate);
    key("ENTRADA1", settings.Entrada1);
    key("SALIDA1", settings.Salida1);
    key("ENTRADA2", settings.Entrada2);
    key("NUM_ALARMAS", std::to_string(settings.Alarms.Count()));

    section("CONFIG");
    for (size_t day = 1; day <= 7; ++day) {
        key(kWeekdayKeys[day], settings.DayHours[day] + "|" + settings.DayMode[day]);
    }

    // Renumbered from 1 without gaps; a section without entries is still written.
    section("REPETICIONES");
    int number = 0;
    for (const auto& entry : settings.Repetitions) {
        key(EntryKey("REP_", ++number), entry);
    }
    section("ALARMAS");
    number = 0;
    for (const auto& entry : settings.Alarms) {
        key(EntryKey("ALA_", ++number), entry);
    }

    section("ACCESOS");
    key("ULTIMO", FormatDateTime(settings.UltimoAcceso));
    return text;
}

bool SaveSettings(const AppPaths& paths, const Settings& settings, Busy& busy, Dialogs& dialogs, StoreStatus& status,
                  SettingsReadAhead* read_back) {
    BusyScope scope(busy);
    const std::string file = paths.SettingsFile();
    const std::string bytes = Utf8ToCp1252(SettingsFileText(settings));
    const auto refuse = [&] {
        // Told when the saves start failing; the retries after it stay quiet until one gets through.
        if (!status.SavePending) {
            dialogs.Warn("No se ha podido guardar la configuraci\u00F3n en:\r\n" + file +
                         "\r\n\r\nEl archivo anterior se conserva sin cambios.");
        }
        status.SavePending = true;
        return false;
    };
    // A file that is there but cannot be read cannot be copied either, and replacing it would
    // lose that version for good.
    const FileContents previous = ReadWholeFile(file);
    if (previous.outcome == ReadOutcome::Unreadable) {
        return refuse();
    }
    // A backup that cannot be made does not stop the save: the user's change reaching the file
    // matters more than one more copy of the version before it. The copy is written while the
    // new file is, as both wait for the disk and waiting for both at once takes about half as
    // long; the new file takes the name only once the copy is whole.
    const bool copied_already = status.SavePending && previous.bytes == status.CopiedWhilePending;
    std::error_code backup_error;
    std::thread backup;
    if (previous.outcome == ReadOutcome::Read && !copied_already) {
        backup = std::thread([&] {
            try {
                backup_error = BackUpSettingsFile(paths, previous);
            } catch (const std::bad_alloc&) {
                backup_error = std::make_error_code(std::errc::not_enough_memory);
            }
        });
    }
    // Run by the write on every path, failed or not, so the copy is always finished after it.
    const auto backup_done = [&] {
        if (backup.joinable()) {
            backup.join();
        }
    };
    // The reading back's parse starts once the bytes are written: started sooner, it would take
    // processor time from the writing rather than from the wait for the disk.
    const auto parse_while_flushing = [&] {
        if (read_back != nullptr) {
            read_back->ParseAhead(file, bytes);
        }
    };
    // The rename inside replaces the old file even when it is read-only, as the forced delete
    // of the old file did.
    const std::error_code write_error = WriteFileAtomically(
        file, bytes, std::nullopt, {.before_flush = parse_while_flushing, .before_rename = backup_done});
    if (backup_error && !status.BackupFailureTold) {
        status.BackupFailureTold = true;
        dialogs.Warn("No se pueden hacer copias de seguridad en " + paths.BackupFolder() + " (" +
                     ErrorText(backup_error) + ").\r\n\r\nLos cambios se siguen guardando.");
    }
    if (write_error) {
        status.CopiedWhilePending = previous.bytes;
        return refuse();
    }
    status.SavePending = false;
    status.CopiedWhilePending.clear();
    return true;
}

bool SaveSettings(const AppPaths& paths, const Settings& settings, Busy& busy, Dialogs& dialogs) {
    StoreStatus status;
    return SaveSettings(paths, settings, busy, dialogs, status);
}

}  // namespace vt
