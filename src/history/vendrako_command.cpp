#include "history/vendrako_command.h"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <optional>
#include <string_view>

#include "history/day_status.h"
#include "ical/exportar_ics_command.h"
#include "platform/clock.h"
#include "platform/stream_dialogs.h"
#include "store/error_text.h"
#include "store/settings_store.h"
#include "store/text_file.h"

namespace vt {

namespace {

// The settings file of the VendrakoTimer whose folder is read.
constexpr const char* kSettingsFileName = "VendrakoTimer.ini";
constexpr const char* kUsage =
    "Uso: vendrako [--carpeta CARPETA] estado [--json]\n"
    "     vendrako [--carpeta CARPETA] exportar-ics FICHERO\n"
    "  estado                 la salida de hoy, el tiempo que queda, el saldo de la semana y el próximo aviso\n"
    "  estado --json          lo mismo como objeto JSON (waybar, polybar, i3status)\n"
    "  exportar-ics FICHERO   las alarmas y los recordatorios pendientes en formato iCalendar\n";

// A data file as stored; a missing one is empty, one that cannot be read says so and stops.
std::optional<std::string> ReadDataFile(const CommandContext& ctx, const char* name) {
    const FileContents file = ReadWholeFile(ctx.folder + name);
    if (file.outcome == ReadOutcome::Unreadable) {
        ctx.err << "No se puede leer " << ctx.folder << name << " (" << ErrorText(file.error) << ").\n";
        return std::nullopt;
    }
    return file.bytes;
}

int Estado(const CommandContext& ctx, const std::vector<std::string>& args) {
    const bool json = args.size() == 1 && args[0] == "--json";
    if (!args.empty() && !json) {
        ctx.err << kUsage;
        return 2;
    }
    const std::optional<std::string> settings_bytes = ReadDataFile(ctx, kSettingsFileName);
    const std::optional<std::string> history_bytes = ReadDataFile(ctx, kHistoryFileName);
    if (!settings_bytes || !history_bytes) {
        return 1;
    }
    Settings settings;
    StreamDialogs dialogs(&ctx.err);
    if (!LoadSettingsFromBytes(*settings_bytes, settings, dialogs)) {
        return 1;
    }
    const DayStatus status = ComputeDayStatus(settings, ParseHistory(*history_bytes), ctx.clock.Now());
    ctx.out << (json ? DayStatusJson(status) : status.text) << "\n";
    return 0;
}

int ExportarIcs(const CommandContext& ctx, const std::vector<std::string>& args) {
    if (args.size() != 1) {
        ctx.err << kUsage;
        return 2;
    }
    return ExportarIcsCommand(ctx.folder, args[0], ctx.err);
}

struct Command {
    std::string_view name;
    int (*run)(const CommandContext&, const std::vector<std::string>&);
};
constexpr std::array<Command, 2> kCommands{{{"estado", &Estado}, {"exportar-ics", &ExportarIcs}}};

}  // namespace

int RunVendrakoCommand(const std::vector<std::string>& args, const std::string& default_folder, const Clock& clock,
                       std::ostream& out, std::ostream& err) {
    CommandContext ctx{default_folder, clock, out, err};
    std::vector<std::string> rest;
    for (size_t i = 0; i < args.size(); ++i) {
        if (args[i] == "--carpeta") {
            if (i + 1 == args.size()) {
                err << kUsage;
                return 2;
            }
            ctx.folder = args[++i];
        } else {
            rest.push_back(args[i]);
        }
    }
    if (ctx.folder.empty() || ctx.folder.back() != '/') {
        ctx.folder += '/';
    }
    const Command* command = nullptr;
    for (const Command& c : kCommands) {
        if (!rest.empty() && rest.front() == c.name) {
            command = &c;
        }
    }
    if (command == nullptr) {
        err << kUsage;
        return 2;
    }
    // The folder itself must be there and readable: an empty answer would look like a day
    // with nothing clocked in.
    if (access(ctx.folder.c_str(), R_OK | X_OK) != 0) {
        err << "No se puede leer la carpeta de datos " << ctx.folder << " (" << ErrorText(errno) << ").\n";
        return 1;
    }
    return command->run(ctx, std::vector<std::string>(rest.begin() + 1, rest.end()));
}

}  // namespace vt
