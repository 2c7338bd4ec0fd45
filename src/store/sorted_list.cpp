#include "store/sorted_list.h"
#include "store/utf8.h"

#include <algorithm>

#include "store/cp1252.h"
#include "store/utf8.h"

namespace vt {

namespace {

char32_t UpperChar(char32_t c) {
    if (c >= U'a' && c <= U'z') {
        return c - 0x20;
    }
    if (c >= 0xE0 && c <= 0xFE && c != 0xF7) {  // à..þ without ÷
        return c - 0x20;
    }
    switch (c) {
        case 0xFF:  // ÿ
            return 0x178;
        case 0x161:  // š
            return 0x160;
        case 0x17E:  // ž
            return 0x17D;
        case 0x153:  // œ
            return 0x152;
        default:
            return c;
    }
}

}  // namespace

std::string UpperCaseForList(std::string_view text) {
    std::string upper;
    upper.reserve(text.size());
    for (std::size_t pos = 0; pos < text.size();) {
        const Utf8Char ch = DecodeUtf8At(text, pos);
        const char32_t capital = ch.valid ? UpperChar(ch.code) : ch.code;
        if (!ch.valid || capital == ch.code) {
            upper.append(text.substr(pos, ch.length));  // kept byte for byte, malformed bytes too
        } else {
            AppendUtf8(upper, capital);
        }
        pos += ch.length;
    }
    return upper;
}

void AgregarALista(std::vector<std::string>& list, std::string_view item, bool sorted, bool duplicates_allowed,
                   bool ignore_case) {
    if (list.empty()) {
        list.emplace_back();  // slot 0
    }
    const auto first = list.begin() + 1;
    if (!duplicates_allowed) {
        const std::string wanted = UpperCaseForList(item);
        if (std::any_of(first, list.end(), [&](const std::string& e) { return UpperCaseForList(e) == wanted; })) {
            return;
        }
    }
    if (!sorted) {
        list.emplace_back(item);
        return;
    }
    std::vector<std::string>::iterator place;
    if (ignore_case) {
        const std::string key = UpperCaseForList(item);
        place = std::upper_bound(first, list.end(), key, [](const std::string& k, const std::string& element) {
            return k < UpperCaseForList(element);
        });
    } else {
        place = std::upper_bound(first, list.end(), item,
                                 [](std::string_view k, const std::string& element) { return k < element; });
    }
    list.emplace(place, item);
}

}  // namespace vt
