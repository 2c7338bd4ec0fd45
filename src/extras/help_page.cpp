#include "extras/help_page.h"

#include <array>

#include "accesslog/html_text.h"
#include "extras/help_texts.h"
#include "platform/dialogs.h"
#include "platform/shell_open.h"
#include "store/cp1252.h"
#include "store/error_text.h"
#include "store/text_file.h"

namespace vt {

namespace {

constexpr std::string_view kEndOfLine = "\r\n";

enum class Kind { Title, Heading, Plain };

struct Paragraph {
    Kind kind;
    std::string_view text;
};

// The page up to the agenda section, and from the calendar on. The agenda section itself is the
// editors' help, so that the page and the editors' help buttons never say different things.
constexpr Paragraph kBeforeAgenda[] = {
    {Kind::Title, "Ayuda para el Vendrako Timer"},
    {Kind::Plain, "Este programa tiene varias funciones principales:"},
    {Kind::Plain, "1.- Controla tus horas de trabajo (para que no te pases)."},
    {Kind::Plain, "2.- Permite establecer alarmas."},
    {Kind::Plain, "3.- Muestra un calendario en el que se pueden ver dichas alarmas/repeticiones."},
    {Kind::Plain, "4.- Guarda un Log con los archivos que hayas utilizado cada día."},
    {Kind::Plain,
     "5.- Permite ir marcando las tareas con las que estás trabajando en cada momento, y luego te dice cuánto "
     "tiempo le has dedicado a cada una."},
    {Kind::Heading, "Controlar las horas de trabajo"},
    {Kind::Plain,
     "Lo primero es configurar tu semana en el menú 'Configuración': para cada día, las horas que trabajas y si "
     "la jornada es partida (mañana y tarde) o continua (de un tirón). Los días en que no trabajas se quedan "
     "sin horas."},
    {Kind::Plain,
     "Cada día, al llegar, apunta tu hora de entrada en 'Entrada 1'. En las jornadas partidas apunta también "
     "cuándo sales a comer en 'Salida 1' y cuándo vuelves en 'Entrada 2'; en las continuas esas casillas "
     "quedan bloqueadas. Con esas horas el programa calcula a qué hora puedes irte."},
    {Kind::Plain,
     "El icono de la bandeja es una bola partida en porciones: cuatro en las jornadas partidas y dos en las "
     "continuas. Cada fichaje que haces colorea una porción, así que de un vistazo sabes en qué punto del día "
     "estás."},
    {Kind::Plain, "Cuando se acerca la hora de salida, el icono te avisa así:"},
    {Kind::Plain, "* Mas de 10 minutos: Icono fijo con 2 o 4 porciones (dependiendo del tipo de jornada)."},
    {Kind::Plain, "* 10 minutos: Icono rojo intermitente."},
    {Kind::Plain, "* 9 a 6 minutos: Icono rojo fijo."},
    {Kind::Plain, "* 5 minutos: Icono amarillo intermitente."},
    {Kind::Plain, "* 4 a 2 minutos: Icono amarillo fijo."},
    {Kind::Plain, "* 1 minuto: Icono verde intermitente."},
    {Kind::Plain, "* Después de la hora de salida: Icono verde fijo."},
    {Kind::Heading, "Alarmas"},
};

constexpr Paragraph kAfterAgenda[] = {
    {Kind::Heading, "Calendario"},
    {Kind::Plain,
     "La ventana principal muestra un calendario del mes con tus avisos: los días con alarmas salen en negrita "
     "y los días con repeticiones, subrayados. El día de hoy y las alarmas prioritarias tienen su propio "
     "color."},
    {Kind::Plain,
     "Si pasas el ratón por encima de un día verás sus avisos, y si pulsas sobre él puedes ver, crear o "
     "cambiar las alarmas y repeticiones de ese día."},
    {Kind::Plain,
     "Con los botones de debajo del calendario cambias de año y de mes, hacia delante o hacia atrás, para ver "
     "lo que tienes previsto más adelante o lo que pasó."},
    {Kind::Heading, "Accesos"},
    {Kind::Plain,
     "Mientras el programa está en marcha, cada pocos minutos mira qué archivos has abierto y los apunta en el "
     "registro del día, sin que tengas que hacer nada."},
    {Kind::Plain,
     "Así puedes saber con qué documentos trabajaste cualquier día: los accesos se guardan en una página por "
     "mes, con los archivos agrupados por días."},
    {Kind::Plain,
     "En el menú 'Accesos', 'Accesos Hoy' abre la página del mes en curso; las de otros meses están en la "
     "'Carpeta Logs de Accesos'. 'Carpeta Archivos Recientes' abre la carpeta de archivos recientes del "
     "sistema."},
    {Kind::Heading, "Tareas"},
    {Kind::Plain,
     "Desde el menú del icono de la bandeja puedes marcar en cada momento la tarea con la que estás trabajando. "
     "Basta con escribirla o elegir una de las últimas que usaste."},
    {Kind::Plain,
     "Cada tarea marcada queda apuntada con su hora en el registro de tareas, y el icono de la bandeja te "
     "recuerda cuál fue la última."},
    {Kind::Plain,
     "El 'Resumen de tareas' te dice cuánto tiempo has dedicado hoy a cada tarea, contando solo el tiempo "
     "entre tus fichajes de entrada y salida."},
    {Kind::Plain,
     "Si se te olvidó marcar una tarea o te equivocaste, puedes abrir el registro de tareas y corregirlo a "
     "mano."},
    {Kind::Heading, "Trucos"},
    {Kind::Plain,
     "- Cada vez que entres o salgas del programa, éste hará una copia de seguridad tanto del INI como de los "
     "archivos del LOG."},
    {Kind::Plain,
     "- En el menú 'Opciones' puedes hacer que el programa se arranque solo al iniciar el sistema, para no "
     "olvidarte nunca de ponerlo en marcha."},
    {Kind::Plain,
     "- Puedes sacar un listado de tus avisos entre dos fechas, para tenerlo a mano o imprimirlo. Las alarmas "
     "diarias y semanales salen una sola vez, en su próxima fecha."},
    {Kind::Plain,
     "- También puedes crear calendarios en HTML de los meses que quieras, listos para imprimir y colgar en la "
     "pared."},
};

void WriteParagraph(const Paragraph& paragraph, std::string& page) {
    EscribirParrafoAyuda(paragraph.text, page, paragraph.kind != Kind::Plain, paragraph.kind == Kind::Title);
}

// A help text holds one paragraph a line; an empty text still gives its (empty) paragraph.
void WriteHelpText(std::string_view text, std::string& page) {
    for (;;) {
        const size_t end = text.find(kEndOfLine);
        EscribirParrafoAyuda(text.substr(0, end), page, false, false);
        if (end == std::string_view::npos) {
            return;
        }
        text.remove_prefix(end + kEndOfLine.size());
    }
}

std::string_view TrimBlanks(std::string_view text) {
    const size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

void WriteLine(std::string_view line, std::string& page) {
    page += line;
    page += kEndOfLine;
}

}  // namespace

std::string HelpFilePath(const AppPaths& paths) {
    return paths.AppFolder + "Ayuda_" + paths.ExeBaseName + ".htm";
}

void EscribirParrafoAyuda(std::string_view text, std::string& page, bool bold, bool underline) {
    std::string line = EscapeHtmlText(TrimBlanks(text)) + "<br><br>";
    if (bold) {
        line = "<b>" + line + "</b>";
    }
    if (underline) {
        line = "<u>" + line + "</u>";
    }
    WriteLine(line, page);
}

std::string HelpPageText(std::string_view exe_base_name) {
    std::string page;
    WriteLine("<html><head><title>Ayuda_" + EscapeHtmlText(exe_base_name) + "</title></head>", page);
    WriteLine("<body style='font-family: Arial'><div align='center'><center>", page);
    WriteLine("<table border='0' width='500' cellspacing='0' cellpadding='0'><tr><td width='100%'>", page);
    for (const Paragraph& paragraph : kBeforeAgenda) {
        WriteParagraph(paragraph, page);
    }
    WriteHelpText(TextoAyuda("ALA", 1), page);
    WriteHelpText(TextoAyuda("REP", 1), page);
    for (const Paragraph& paragraph : kAfterAgenda) {
        WriteParagraph(paragraph, page);
    }
    WriteLine("</td></tr></table></center></div></body></html>", page);
    return page;
}

bool GenerarAyuda(const AppPaths& paths, ShellOpen& shell, Dialogs& dialogs) {
    const std::string file = HelpFilePath(paths);
    // The rename of the atomic write replaces a read-only file left by an earlier run as well.
    if (const std::error_code error = WriteFileAtomically(file, Utf8ToCp1252(HelpPageText(paths.ExeBaseName)))) {
        dialogs.Warn("No se ha podido escribir la ayuda en " + file + " (" + ErrorText(error) + ").");
        return false;
    }
    shell.Open(file, paths.AppFolder);
    return true;
}

}  // namespace vt
