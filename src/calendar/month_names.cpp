#include "calendar/month_names.h"

#include <array>

namespace vt {

namespace {

struct MonthNames {
    std::string_view spanish;
    std::string_view spanish_short;
    std::string_view basque;
    std::string_view basque_short;
};

// "MAR" is both the Spanish and the Basque short name of March; the table keeps both columns
// whole so that no lookup depends on that coincidence.
constexpr std::array<MonthNames, 12> kMonths{{
    {"ENERO", "ENE", "URTARRILA", "URT"},
    {"FEBRERO", "FEB", "OTSAILA", "OTS"},
    {"MARZO", "MAR", "MARTXOA", "MAR"},
    {"ABRIL", "ABR", "APIRILA", "API"},
    {"MAYO", "MAY", "MAIATZA", "MAI"},
    {"JUNIO", "JUN", "EKAINA", "EKA"},
    {"JULIO", "JUL", "UZTAILA", "UZT"},
    {"AGOSTO", "AGO", "ABUZTUA", "ABU"},
    {"SEPTIEMBRE", "SEP", "IRAILA", "IRA"},
    {"OCTUBRE", "OCT", "URRIA", "URR"},
    {"NOVIEMBRE", "NOV", "AZAROA", "AZA"},
    {"DICIEMBRE", "DIC", "ABENDUA", "ABE"},
}};

}  // namespace

std::string MonthName(int month, bool abbreviated, std::string_view language) {
    if (month < 1 || month > 12) {
        return {};
    }
    const MonthNames& names = kMonths[static_cast<std::size_t>(month - 1)];
    if (language == "E") {
        return std::string(abbreviated ? names.basque_short : names.basque);
    }
    return std::string(abbreviated ? names.spanish_short : names.spanish);
}

std::string MonthName(Date date, bool abbreviated, std::string_view language) {
    return MonthName(static_cast<int>(static_cast<unsigned>(date.month())), abbreviated, language);
}

}  // namespace vt
