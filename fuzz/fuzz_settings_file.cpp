// Feeds arbitrary bytes to the INI reader and to the settings loader, as a hand-edited or
// damaged settings file would reach them. Nothing may crash, a document written back must read
// back to the same document, and whatever loads must save to a file that loads again with the
// same entries.
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

#include "platform/dialogs.h"
#include "store/cp1252.h"
#include "store/ini_file.h"
#include "store/settings_store.h"

namespace {

class SilentDialogs : public vt::Dialogs {
public:
    vt::MsgAnswer ShowBox(const vt::MessageBox&) override { return vt::MsgAnswer::Ok; }
    std::optional<std::string> AskText(const vt::InputBox&) override { return std::nullopt; }
};

void Check(bool condition) {
    if (!condition) {
        std::abort();
    }
}

// Returns whether the bytes were read as UTF-8, which the settings check below needs.
bool FuzzDocument(std::string_view bytes) {
    vt::IniDocument doc = vt::IniDocument::Parse(bytes);
    const bool saved_as_utf8 = doc.SavedAsUtf8();
    const std::string once = doc.Serialize();
    Check(vt::IniDocument::Parse(once).Serialize() == once);

    std::string value;
    doc.Read("GENERAL", "FECHA", value);
    doc.Read("ALARMAS", "ALA_001", value);

    // A write lands where a read finds it, also after the document is written and read again.
    doc.Write("GENERAL", "FECHA", " 15-03-24 ");
    doc.Write("NUEVA", "CLAVE", "'x'");
    const vt::IniDocument reread = vt::IniDocument::Parse(doc.Serialize());
    const vt::IniDocument* both[] = {&doc, &reread};
    for (const vt::IniDocument* d : both) {
        Check(d->Read("GENERAL", "FECHA", value) && value == " 15-03-24 ");
        Check(d->Read("nueva", "clave", value) && value == "'x'");
    }
    return saved_as_utf8;
}

void FuzzSettings(std::string_view bytes, bool saved_as_utf8) {
    SilentDialogs dialogs;
    vt::Settings loaded;
    if (!vt::LoadSettingsFromBytes(bytes, loaded, dialogs)) {
        return;
    }
    const std::string saved = vt::Utf8ToCp1252(vt::SettingsFileText(loaded));
    vt::Settings reloaded;
    Check(vt::LoadSettingsFromBytes(saved, reloaded, dialogs));
    Check(reloaded.Alarms.Count() == loaded.Alarms.Count());
    Check(reloaded.Repetitions.Count() == loaded.Repetitions.Count());
    Check(reloaded.UltimoAcceso == loaded.UltimoAcceso);
    if (!saved_as_utf8) {
        // Everything read from a Windows-1252 file fits back into one, so nothing may change.
        Check(reloaded.Alarms == loaded.Alarms);
        Check(reloaded.Repetitions == loaded.Repetitions);
        Check(reloaded.WorkDate == loaded.WorkDate && reloaded.Entrada1 == loaded.Entrada1 &&
              reloaded.Salida1 == loaded.Salida1 && reloaded.Entrada2 == loaded.Entrada2);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    FuzzSettings(bytes, FuzzDocument(bytes));
    Check(vt::Utf8ToCp1252(vt::Cp1252ToUtf8(bytes)) == bytes);
    return 0;
}
