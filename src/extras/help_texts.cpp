#include "extras/help_texts.h"

#include <array>

namespace vt {

namespace {

constexpr std::array<std::string_view, 13> kAlarmHelp{
    "Una alarma es un aviso para una fecha y una hora, que puede repetirse cada cierto tiempo.",
    "La fecha se puede escribir con el formato ddmmyy (150324 es el 15/03/2024) y la hora solo con "
    "números (7 son las 07:00 y 745 son las 07:45); al salir de la casilla o al pulsar Aceptar se "
    "completan solas.",
    "En 'Repetir' eliges cada cuánto vuelve la alarma: Nunca, 1 Día, 1 Semana, 1 Mes, 3 Meses, 1 Año, "
    "2 Años, 4 Años o 6 Años. La de 1 Día solo suena de lunes a viernes; la de 1 Semana sí cae en fin "
    "de semana si la pusiste en sábado o domingo.",
    "Marcas que puedes poner en el texto:",
    "* Prioridad alta: \"!\" por delante (!Reunión). La alarma se guarda como prioritaria y se ve de "
    "otro color; al volver a abrirla verás otra vez el \"!\".",
    "* No mostrar en el calendario: \"-\" por delante. La alarma sigue avisando, pero no aparece en el "
    "calendario.",
    "* Aniversarios: el año entre paréntesis con cuatro cifras, (9999). Al mostrarse se cambia por los "
    "años que han pasado: Boda (1998) se ve como Boda (27) en 2025.",
    "* A partir de una fecha concreta: <ddmmyy> al final del texto. La alarma no existe hasta ese día "
    "(Curso <150925> empieza el 15/09/2025) y sus avisos salen sin esa marca.",
    "Las comas del texto se guardan como punto y coma.",
    "Con cuánta antelación se ve venir una alarma en el informe de proximidad: las mensuales 7 días, "
    "las anuales 14 días, las que no se repiten 14 días y las demás ninguno.",
    "Cuando llega el día de la alarma se convierte en una repetición, un aviso para su hora, y el "
    "registro anota una línea \"REP> \" con la alarma. Si la alarma no se repite, desaparece de la "
    "lista; si se repite, pasa a su siguiente fecha.",
    "No se puede guardar una alarma cuya hora ya ha pasado, aunque no la hayas cambiado.",
    "Para borrar una alarma ábrela desde 'Mostrar todas' o desde el calendario y pulsa Borrar.",
};

constexpr std::array<std::string_view, 9> kRepetitionHelp{
    "Una repetición es un aviso que sale una sola vez, en una fecha y a una hora exactas. Las alarmas "
    "se convierten en repeticiones el día que les toca, y también puedes crearlas tú desde el menú "
    "'Repeticiones'.",
    "La fecha se puede escribir con el formato ddmmyy (150324 es el 15/03/2024) y la hora solo con "
    "números (7 son las 07:00 y 745 son las 07:45).",
    "El texto puede quedar vacío: el aviso saldrá como \"(Sin mensaje)\".",
    "No se puede guardar una repetición cuya hora ya ha pasado; la hora en curso sí vale.",
    "Cuando llega su hora, el icono de la bandeja muestra una interrogación que parpadea y se abre la "
    "ventana 'Repetición' con el texto del aviso.",
    "Ahí eliges cuándo quieres que vuelva a avisarte: 5, 10, 15 o 30 minutos, 1, 2, 4 o 6 horas, 1 día o "
    "1 semana. Cada botón lo programa en el acto.",
    "Con \"Nunca\" el aviso se da por terminado y no vuelve.",
    "Enter y Esc lo vuelven a programar para dentro de 5 minutos, para que un aviso no se pierda por "
    "una tecla pulsada sin querer.",
    "Las repeticiones pendientes están en el menú 'Repeticiones'; desde ahí puedes cambiarlas o "
    "borrarlas.",
};

template <size_t N>
std::string JoinLines(const std::array<std::string_view, N>& lines) {
    std::string text;
    for (const std::string_view line : lines) {
        if (!text.empty()) {
            text += "\r\n";
        }
        text += line;
    }
    return text;
}

}  // namespace

std::string TextoAyuda(std::string_view topic, int mode) {
    if (mode != 1) {
        return {};
    }
    if (topic == "ALA") {
        return JoinLines(kAlarmHelp);
    }
    if (topic == "REP") {
        return JoinLines(kRepetitionHelp);
    }
    return {};
}

}  // namespace vt
