#include "extras/help_page.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "../accesslog/accesslog_fakes.h"
#include "scripted_dialogs.h"
#include "store/cp1252.h"
#include "temp_app_folder.h"

namespace vt {
namespace {

using ::testing::HasSubstr;

// Writes the help page that the browser check (tests/e2e/help_chromium.sh) opens in a real
// browser; on its own it checks that the page is framed, line by line, as a browser needs it.
TEST(HelpBrowserSample, WritesTheHelpPageTheBrowserCheckOpens) {
    const std::string page = HelpPageText("VendrakoTimer");
    ASSERT_TRUE(
        page.starts_with("<html><head><title>Ayuda_VendrakoTimer</title></head>\r\n"
                         "<body style='font-family: Arial'><div align='center'><center>\r\n"
                         "<table border='0' width='500' cellspacing='0' cellpadding='0'><tr><td width='100%'>\r\n"
                         "<u><b>Ayuda para el Vendrako Timer<br><br></b></u>\r\n"))
        << page.substr(0, 300);
    ASSERT_TRUE(page.ends_with("\r\n</td></tr></table></center></div></body></html>\r\n"));
    if (const char* target = std::getenv("VT_HELP_PAGE")) {
        std::ofstream(target, std::ios::binary) << Utf8ToCp1252(page);
    }
}

TEST(HelpPage, AParagraphIsOneLineInItsTags) {
    const auto written = [](const char* text, bool bold, bool underline) {
        std::string page = "x\r\n";
        EscribirParrafoAyuda(text, page, bold, underline);
        return page;
    };
    EXPECT_EQ(written("Texto", false, false), "x\r\nTexto<br><br>\r\n");
    EXPECT_EQ(written("  Título  ", true, true), "x\r\n<u><b>Título<br><br></b></u>\r\n");
    EXPECT_EQ(written("Curso <150925> & 'yo'", false, false), "x\r\nCurso &lt;150925&gt; &amp; 'yo'<br><br>\r\n");
}

// The headings in their order, and the quoted lines after the heading they belong to; each is a
// whole line of the page.
TEST(HelpPage, SectionsComeInOrderWithTheirLines) {
    const std::string page = HelpPageText("VendrakoTimer");
    const std::string backup_line =
        "- Cada vez que entres o salgas del programa, éste hará una copia de seguridad tanto del INI como de los "
        "archivos del LOG.<br><br>";
    size_t previous = 0;
    for (const std::string& wanted : std::vector<std::string>{
             "Este programa tiene varias funciones principales:<br><br>",
             "4.- Guarda un Log con los archivos que hayas utilizado cada día.<br><br>",
             "<b>Controlar las horas de trabajo<br><br></b>",
             "* Mas de 10 minutos: Icono fijo con 2 o 4 porciones (dependiendo del tipo de jornada).<br><br>",
             "* Después de la hora de salida: Icono verde fijo.<br><br>", "<b>Alarmas<br><br></b>",
             "<b>Calendario<br><br></b>", "<b>Accesos<br><br></b>", "<b>Tareas<br><br></b>", "<b>Trucos<br><br></b>",
             backup_line}) {
        const size_t at = page.find("\r\n" + wanted + "\r\n");
        ASSERT_NE(at, std::string::npos) << wanted;
        EXPECT_GT(at, previous) << wanted;
        previous = at;
    }
    // The tricks section starts with the backup line.
    EXPECT_THAT(page, HasSubstr("\r\n<b>Trucos<br><br></b>\r\n" + backup_line + "\r\n"));
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
    const std::string file = folder_.ReadFile("Ayuda_VendrakoTimer.htm");
    EXPECT_EQ(file, Utf8ToCp1252(HelpPageText("VendrakoTimer")));
    EXPECT_THAT(file, HasSubstr(std::string("d\xED") + "a.<br><br>"));  // "día" as one byte
    EXPECT_EQ(shell_.opened,
              std::vector<std::string>{folder_.Path("Ayuda_VendrakoTimer.htm") + " | " + folder_.Folder()});
}

TEST_F(GenerarAyudaTest, UnwritableFolderIsReportedAndNothingOpened) {
    AppPaths paths = folder_.Paths();
    paths.AppFolder = folder_.Path("no/such/folder/");
    EXPECT_FALSE(GenerarAyuda(paths, shell_, dialogs_));
    EXPECT_TRUE(shell_.opened.empty());
    EXPECT_THAT(dialogs_.Texts(), ::testing::ElementsAre(HasSubstr("Ayuda_VendrakoTimer.htm")));
}

}  // namespace
}  // namespace vt
