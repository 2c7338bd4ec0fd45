#include "ical/exportar_ics_command.h"

#include "ical/ics_common.h"
#include "ical/ics_export.h"
#include "platform/stream_dialogs.h"
#include "platform/system_clock.h"
#include "store/app_paths.h"
#include "store/error_text.h"
#include "store/settings_store.h"
#include "store/text_file.h"

namespace vt {

namespace {}  // namespace

int ExportarIcsCommand(const std::string& data_folder, const std::string& file, std::ostream& err) {
    AppPaths paths;
    paths.AppFolder = data_folder.empty() || data_folder.back() == '/' ? data_folder : data_folder + "/";
    paths.ExeBaseName = "VendrakoTimer";
    if (!IsRegularFile(paths.SettingsFile())) {
        err << "No hay agenda en " << paths.AppFolder << ": falta " << paths.SettingsFile() << ".\n";
        return 1;
    }
    // Read and parsed only: the loader proper would put a damaged file aside, and this command
    // never writes into the program's folder.
    const FileContents contents = ReadWholeFile(paths.SettingsFile());
    if (contents.outcome != ReadOutcome::Read) {
        err << "No se puede leer " << paths.SettingsFile() << " (" << ErrorText(contents.error) << ").\n";
        return 1;
    }
    StreamDialogs dialogs(&err);
    Settings settings;
    if (!LoadSettingsFromBytes(contents.bytes, settings, dialogs)) {
        return 1;
    }
    const SystemClock clock;
    const IcsExport out = ExportAgendaToIcs(settings, clock.Now(), SystemTimeZoneName());
    if (const std::error_code error = WriteFileAtomically(file, out.text)) {
        err << "No se ha podido guardar " << file << " (" << ErrorText(error) << ").\n";
        return 1;
    }
    if (out.unreadable > 0) {
        err << out.unreadable << " entradas no se pueden leer y no se han exportado.\n";
    }
    return 0;
}

}  // namespace vt
