#include "extras/help_page.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <string>
#include <tuple>
#include <vector>

#include "../accesslog/accesslog_fakes.h"
#include "extras/help_texts.h"
#include "scripted_dialogs.h"
#include "store/cp1252.h"
#include "temp_app_folder.h"

namespace vt {
namespace {

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    for (size_t start = 0, end = 0; start < text.size(); start = end + 2) {
        end = std::min(text.find("\r\n", start), text.size());
        lines.push_back(text.substr(start, end - start));
    }
    return lines;
}

size_t LineIndex(const std::vector<std::string>& lines, const std::string& wanted) {
    const auto it = std::find(lines.begin(), lines.end(), wanted);
    return it == lines.end() ? std::string::npos : static_cast<size_t>(it - lines.begin());
}

TEST(HelpPage, FrameLinesAreExact) {
    const std::vector<std::string> lines = Lines(HelpPageText("VendrakoTimer"));
    ASSERT_GT(lines.size(), 4u);
    EXPECT_EQ(
        std::vector<std::string>(lines.begin(), lines.begin() + 4),
        (std::vector<std::string>{"<html><head><title>Ayuda_VendrakoTimer</title></head>",
                                  "<body style='font-family: Arial'><div align='center'><center>",
                                  "<table border='0' width='500' cellspacing='0' cellpadding='0'><tr><td width='100%'>",
                                  "<u><b>Ayuda para el Vendrako Timer<br><br></b></u>"}));
    EXPECT_EQ(lines.back(), "</td></tr></table></center></div></body></html>");
}

// The calendar's month buttons sit below it, "Accesos Hoy" opens this month's page only, and the
// listing shows daily and weekly alarms once; the sentences say so, each in its own section.
TEST(HelpPage, SentencesSayWhatTheProgramDoes) {
    const std::vector<std::string> lines = Lines(HelpPageText("VendrakoTimer"));
    // clang-format off
    const std::vector<std::tuple<const char*, const char*, const char*>> cases{
        {"Calendario", "Accesos", "Con los botones de debajo del calendario cambias de año y de mes, hacia delante o "
                                  "hacia atrás, para ver lo que tienes previsto más adelante o lo que pasó."},
        {"Accesos", "Tareas", "En el menú 'Accesos', 'Accesos Hoy' abre la página del mes en curso; las de otros "
                              "meses están en la 'Carpeta Logs de Accesos'. 'Carpeta Archivos Recientes' abre la "
                              "carpeta de archivos recientes del sistema."},
        {"Trucos", nullptr, "- Puedes sacar un listado de tus avisos entre dos fechas, para tenerlo a mano o "
                            "imprimirlo. Las alarmas diarias y semanales salen una sola vez, en su próxima fecha."}};
    // clang-format on
    for (const auto& [heading, following, sentence] : cases) {
        const size_t at = LineIndex(lines, std::string(sentence) + "<br><br>");
        ASSERT_NE(at, std::string::npos) << sentence;
        EXPECT_LT(LineIndex(lines, std::string("<b>") + heading + "<br><br></b>"), at) << sentence;
        if (following != nullptr) {
            EXPECT_GT(LineIndex(lines, std::string("<b>") + following + "<br><br></b>"), at) << sentence;
        }
    }
    for (const std::string& line : lines) {
        for (const char* wrong : {"botones de arriba", "del mes que quieras", "todos tus avisos"}) {
            EXPECT_EQ(line.find(wrong), std::string::npos) << line;
        }
    }
}

// The agenda section is the editors' help, line by line, escaped: "<ddmmyy>" must show.
TEST(HelpPage, AgendaSectionIsTheEditorsHelp) {
    const std::vector<std::string> lines = Lines(HelpPageText("VendrakoTimer"));
    const std::vector<std::string> alarm = Lines(TextoAyuda("ALA"));
    const std::vector<std::string> repetition = Lines(TextoAyuda("REP"));
    const size_t heading = LineIndex(lines, "<b>Alarmas<br><br></b>");
    ASSERT_NE(heading, std::string::npos);
    EXPECT_EQ(LineIndex(lines, "<b>Calendario<br><br></b>"), heading + 1 + alarm.size() + repetition.size());
    EXPECT_NE(lines[heading + 1 + 7].find("&lt;ddmmyy&gt;"), std::string::npos) << lines[heading + 8];
    EXPECT_EQ(lines[heading + 1 + alarm.size()], repetition.front() + "<br><br>");
}

}  // namespace
}  // namespace vt
