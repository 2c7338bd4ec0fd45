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

TEST(HelpPage, ParagraphIsOneLineInItsTags) {
    // clang-format off
    const std::vector<std::tuple<const char*, bool, bool, const char*>> cases{
        {"Texto", false, false, "Texto<br><br>"},
        {"  Texto con blancos  ", false, false, "Texto con blancos<br><br>"},
        {"Título", true, false, "<b>Título<br><br></b>"},
        {"Título", true, true, "<u><b>Título<br><br></b></u>"},
        {"Sólo subrayado", false, true, "<u>Sólo subrayado<br><br></u>"},
        {"", false, false, "<br><br>"},
        {"Curso <150925> & 'yo'", false, false, "Curso &lt;150925&gt; &amp; 'yo'<br><br>"}};
    // clang-format on
    for (const auto& [text, bold, underline, line] : cases) {
        std::string page = "x\r\n";
        EscribirParrafoAyuda(text, page, bold, underline);
        EXPECT_EQ(page, std::string("x\r\n") + line + "\r\n");
    }
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

TEST(HelpPage, TitleFollowsTheExecutableName) {
    EXPECT_EQ(Lines(HelpPageText("Reloj"))[0], "<html><head><title>Ayuda_Reloj</title></head>");
}

// The headings in their order, and the quoted lines right after the heading they belong to.
TEST(HelpPage, SectionsComeInOrderWithTheirLines) {
    const std::vector<std::string> lines = Lines(HelpPageText("VendrakoTimer"));
    // clang-format off
    const std::vector<std::string> in_order{
        "Este programa tiene varias funciones principales:<br><br>",
        "1.- Controla tus horas de trabajo (para que no te pases).<br><br>", "2.- Permite establecer alarmas.<br><br>",
        "3.- Muestra un calendario en el que se pueden ver dichas alarmas/repeticiones.<br><br>",
        "4.- Guarda un Log con los archivos que hayas utilizado cada día.<br><br>",
        "<b>Controlar las horas de trabajo<br><br></b>",
        "* Mas de 10 minutos: Icono fijo con 2 o 4 porciones (dependiendo del tipo de jornada).<br><br>",
        "* 10 minutos: Icono rojo intermitente.<br><br>", "* 9 a 6 minutos: Icono rojo fijo.<br><br>",
        "* 5 minutos: Icono amarillo intermitente.<br><br>", "* 4 a 2 minutos: Icono amarillo fijo.<br><br>",
        "* 1 minuto: Icono verde intermitente.<br><br>", "* Después de la hora de salida: Icono verde fijo.<br><br>",
        "<b>Alarmas<br><br></b>", "<b>Calendario<br><br></b>", "<b>Accesos<br><br></b>", "<b>Tareas<br><br></b>",
        "<b>Trucos<br><br></b>",
        "- Cada vez que entres o salgas del programa, éste hará una copia de seguridad tanto del INI como de los "
        "archivos del LOG.<br><br>"};
    // clang-format on
    size_t previous = 0;
    for (const std::string& wanted : in_order) {
        const size_t at = LineIndex(lines, wanted);
        ASSERT_NE(at, std::string::npos) << wanted;
        EXPECT_GT(at, previous) << wanted;
        previous = at;
    }
    // The list lines follow one another, and the fifth one starts as it must.
    const size_t first = LineIndex(lines, in_order[1]);
    EXPECT_EQ(
        lines[first + 4].rfind("5.- Permite ir marcando las tareas con las que estás trabajando en cada momento", 0),
        0u);
    // The tricks section starts with the backup line.
    EXPECT_EQ(LineIndex(lines, "<b>Trucos<br><br></b>") + 1, LineIndex(lines, in_order.back()));
}

// Each section holds the number of paragraphs it is meant to, before the next heading.
TEST(HelpPage, SectionsHaveTheirParagraphCounts) {
    const std::vector<std::string> lines = Lines(HelpPageText("VendrakoTimer"));
    const std::tuple<const char*, const char*, size_t> sections[] = {
        {"Calendario", "Accesos", 3}, {"Accesos", "Tareas", 3}, {"Tareas", "Trucos", 4}};  // heading, next, paragraphs
    for (const auto& [heading, following, paragraphs] : sections) {
        const size_t at = LineIndex(lines, std::string("<b>") + heading + "<br><br></b>");
        const size_t next = LineIndex(lines, std::string("<b>") + following + "<br><br></b>");
        ASSERT_NE(at, std::string::npos) << heading;
        ASSERT_NE(next, std::string::npos) << following;
        EXPECT_EQ(next - at - 1, paragraphs) << heading;
    }
    const size_t tricks = LineIndex(lines, "<b>Trucos<br><br></b>");
    EXPECT_EQ(lines.size() - 1 - tricks - 1, 4u);
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

TEST(HelpPage, NoRawMarkupLeaksFromTheTexts) {
    for (const std::string& line : Lines(HelpPageText("VendrakoTimer"))) {
        EXPECT_EQ(line.find("<ddmmyy>"), std::string::npos) << line;
    }
}

class GenerarAyudaTest : public ::testing::Test {
protected:
    test::TempAppFolder folder_;
    test::RecordingShellOpen shell_;
    test::ScriptedDialogs dialogs_;
};

TEST_F(GenerarAyudaTest, WritesTheFileInWindows1252AndOpensIt) {
    EXPECT_TRUE(GenerarAyuda(folder_.Paths(), shell_, dialogs_));
    const std::string bytes = folder_.ReadFile("Ayuda_VendrakoTimer.htm");
    EXPECT_EQ(bytes, Utf8ToCp1252(HelpPageText("VendrakoTimer")));
    EXPECT_NE(bytes.find(std::string("d\xED") + "a.<br><br>"), std::string::npos);  // "día" as one byte
    EXPECT_EQ(shell_.opened,
              std::vector<std::string>{folder_.Path("Ayuda_VendrakoTimer.htm") + " | " + folder_.Folder()});
    EXPECT_TRUE(dialogs_.Shown().empty());
}

TEST_F(GenerarAyudaTest, ReplacesAReadOnlyFileFromAnEarlierRun) {
    folder_.WriteFile("Ayuda_VendrakoTimer.htm", "old help, much longer than nothing at all");
    ASSERT_EQ(::chmod(folder_.Path("Ayuda_VendrakoTimer.htm").c_str(), 0444), 0);
    EXPECT_TRUE(GenerarAyuda(folder_.Paths(), shell_, dialogs_));
    EXPECT_EQ(folder_.ReadFile("Ayuda_VendrakoTimer.htm"), Utf8ToCp1252(HelpPageText("VendrakoTimer")));
    EXPECT_EQ(shell_.opened.size(), 1u);
}

TEST_F(GenerarAyudaTest, UnwritableFolderIsReportedAndNothingOpened) {
    AppPaths paths = folder_.Paths();
    paths.AppFolder = folder_.Path("no/such/folder/");
    EXPECT_FALSE(GenerarAyuda(paths, shell_, dialogs_));
    EXPECT_TRUE(shell_.opened.empty());
    ASSERT_EQ(dialogs_.Shown().size(), 1u);
    EXPECT_NE(dialogs_.Shown()[0].text.find("Ayuda_VendrakoTimer.htm"), std::string::npos);
}

}  // namespace
}  // namespace vt
