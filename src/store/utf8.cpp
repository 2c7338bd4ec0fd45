#include "store/utf8.h"

namespace vt {

std::u32string Utf8ToUtf32(std::string_view text) {
    std::u32string out;
    out.reserve(text.size());
    size_t i = 0;
    while (i < text.size()) {
        const auto lead = static_cast<unsigned char>(text[i]);
        int extra = 0;
        char32_t c = 0;
        if (lead < 0x80) {
            c = lead;
        } else if ((lead & 0xE0) == 0xC0) {
            extra = 1;
            c = lead & 0x1Fu;
        } else if ((lead & 0xF0) == 0xE0) {
            extra = 2;
            c = lead & 0x0Fu;
        } else if ((lead & 0xF8) == 0xF0) {
            extra = 3;
            c = lead & 0x07u;
        } else {
            out.push_back(U'\uFFFD');
            ++i;
            continue;
        }
        int good = 0;  // continuation bytes that really are ones
        while (good < extra && i + static_cast<size_t>(good) + 1 < text.size()) {
            const auto next = static_cast<unsigned char>(text[i + static_cast<size_t>(good) + 1]);
            if ((next & 0xC0) != 0x80) {
                break;
            }
            c = (c << 6) | (next & 0x3Fu);
            ++good;
        }
        if (good < extra) {  // one replacement for the whole broken sequence
            out.push_back(U'\uFFFD');
            i += static_cast<size_t>(good) + 1;
            continue;
        }
        // An overlong form (a character written in more bytes than it needs, the old trick to
        // slip a "/" past a check), a surrogate or a code beyond Unicode is no character either.
        constexpr char32_t kLowest[] = {0, 0x80, 0x800, 0x10000};
        if (c < kLowest[extra] || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) {
            c = U'\uFFFD';
        }
        out.push_back(c);
        i += static_cast<size_t>(extra) + 1;
    }
    return out;
}

void AppendUtf8(std::string& out, char32_t c) {
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        out += static_cast<char>(0xE0 | (c >> 12));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (c >> 18));
        out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    }
}

std::string Utf32ToUtf8(std::u32string_view text) {
    std::string out;
    out.reserve(text.size());
    for (char32_t c : text) {
        AppendUtf8(out, c);
    }
    return out;
}

}  // namespace vt
