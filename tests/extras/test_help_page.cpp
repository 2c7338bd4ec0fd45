#include "extras/help_page.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>
#include <vector>

#include "../accesslog/accesslog_fakes.h"
#include "scripted_dialogs.h"
#include "store/cp1252.h"
#include "temp_app_folder.h"

namespace vt {
namespace {

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    for (size_t start = 0; start < text.size();) {
        const size_t end = text.find("\r\n", start);
        if (end == std::string::npos) {
            lines.push_back(text.substr(start));
            break;
        }
        lines.push_back(text.substr(start, end - start));
        start = end + 2;
    }
    return lines;
}

size_t LineIndex(const std::vector<std::string>& lines, const std::string& wanted) {
    for (size_t i = 0; i < lines.size(); ++i) {
        if (lines[i] == wanted) {
            return i;
        }
    }
    return std::string::npos;
}

struct ParagraphCase {
    const char* text;
    bool bold;
    bool underline;
    const char* line;
};

class ParagraphForm : public ::testing::TestWithParam<ParagraphCase> {};

TEST_P(ParagraphForm, IsOneLineInItsTags) {
    std::string page = "x\r\n";
    EscribirParrafoAyuda(GetParam().text, page, GetParam().bold, GetParam().underline);
    EXPECT_EQ(page, std::string("x\r\n") + GetParam().line + "\r\n");
}

INSTANTIATE_TEST_SUITE_P(Forms, ParagraphForm,
                         ::testing::Values(ParagraphCase{"Texto", false, false, "Texto<br><br>"},
                                           ParagraphCase{"  Título  ", true, true, "<u><b>Título<br><br></b></u>"},
                                           ParagraphCase{"Curso <150925> & 'yo'", false, false,
                                                         "Curso &lt;150925&gt; &amp; 'yo'<br><br>"}));

TEST(HelpPage, FrameLinesAreExact) {
    const std::vector<std::string> lines = Lines(HelpPageText("VendrakoTimer"));
    ASSERT_GT(lines.size(), 4u);
    EXPECT_EQ(lines[0], "<html><head><title>Ayuda_VendrakoTimer</title></head>");
    EXPECT_EQ(lines[1], "<body style='font-family: Arial'><div align='center'><center>");
    EXPECT_EQ(lines[2], "<table border='0' width='500' cellspacing='0' cellpadding='0'><tr><td width='100%'>");
    EXPECT_EQ(lines[3], "<u><b>Ayuda para el Vendrako Timer<br><br></b></u>");
    EXPECT_EQ(lines.back(), "</td></tr></table></center></div></body></html>");
}

// The headings in their order, and the quoted lines right after the heading they belong to.
TEST(HelpPage, SectionsComeInOrderWithTheirLines) {
    const std::vector<std::string> lines = Lines(HelpPageText("VendrakoTimer"));
    const std::vector<std::string> in_order{
        "Este programa tiene varias funciones principales:<br><br>",
        "4.- Guarda un Log con los archivos que hayas utilizado cada día.<br><br>",
        "<b>Controlar las horas de trabajo<br><br></b>",
        "* Mas de 10 minutos: Icono fijo con 2 o 4 porciones (dependiendo del tipo de jornada).<br><br>",
        "* Después de la hora de salida: Icono verde fijo.<br><br>",
        "<b>Alarmas<br><br></b>",
        "<b>Calendario<br><br></b>",
        "<b>Accesos<br><br></b>",
        "<b>Tareas<br><br></b>",
        "<b>Trucos<br><br></b>",
        "- Cada vez que entres o salgas del programa, éste hará una copia de seguridad tanto del INI como de los "
        "archivos del LOG.<br><br>",
    };
    size_t previous = 0;
    for (const std::string& wanted : in_order) {
        const size_t at = LineIndex(lines, wanted);
        ASSERT_NE(at, std::string::npos) << wanted;
        EXPECT_GT(at, previous) << wanted;
        previous = at;
    }
    // The tricks section starts with the backup line.
    EXPECT_EQ(LineIndex(lines, "<b>Trucos<br><br></b>") + 1, LineIndex(lines, in_order.back()));
}

class GenerarAyudaTest : public ::testing::Test {
protected:
    test::TempAppFolder folder_;
    test::RecordingShellOpen shell_;
    test::ScriptedDialogs dialogs_;
};

TEST_F(GenerarAyudaTest, ReplacesAReadOnlyFileFromAnEarlierRun) {
    folder_.WriteFile("Ayuda_VendrakoTimer.htm", "old help, much longer than nothing at all");
    ASSERT_EQ(::chmod(folder_.Path("Ayuda_VendrakoTimer.htm").c_str(), 0444), 0);
    EXPECT_TRUE(GenerarAyuda(folder_.Paths(), shell_, dialogs_));
    EXPECT_EQ(folder_.ReadFile("Ayuda_VendrakoTimer.htm"), Utf8ToCp1252(HelpPageText("VendrakoTimer")));
    EXPECT_NE(folder_.ReadFile("Ayuda_VendrakoTimer.htm")
                  .find("d\xED"
                        "a.<br><br>"),
              std::string::npos);  // "día" as one byte
    ASSERT_EQ(shell_.opened.size(), 1u);
    EXPECT_EQ(shell_.opened[0], folder_.Path("Ayuda_VendrakoTimer.htm") + " | " + folder_.Folder());
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
