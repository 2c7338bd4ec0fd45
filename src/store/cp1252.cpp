#include "store/cp1252.h"

#include <array>

namespace vt {

namespace {

// Bytes 0x80..0x9F; the rest of Windows-1252 is Latin-1 and maps to the same code point.
// The undefined bytes map to the control character of the same number so that they round-trip.
constexpr std::array<char32_t, 32> kHighControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,  // 80..87
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,  // 88..8F
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,  // 90..97
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,  // 98..9F
};

void AppendUtf8(std::string& out, char32_t code) {
    if (code < 0x80) {
        out.push_back(static_cast<char>(code));
    } else if (code < 0x800) {
        out.push_back(static_cast<char>(0xC0 | (code >> 6)));
        out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
    } else if (code < 0x10000) {
        out.push_back(static_cast<char>(0xE0 | (code >> 12)));
        out.push_back(static_cast<char>(0x80 | ((code >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
    } else {
        out.push_back(static_cast<char>(0xF0 | (code >> 18)));
        out.push_back(static_cast<char>(0x80 | ((code >> 12) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | ((code >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
    }
}

// The Windows-1252 byte of a code point, or '?' when there is none.
char ByteFor(char32_t code) {
    if (code < 0x80 || (code >= 0xA0 && code <= 0xFF)) {
        return static_cast<char>(code);
    }
    for (size_t i = 0; i < kHighControls.size(); ++i) {
        if (kHighControls[i] == code) {
            return static_cast<char>(0x80 + i);
        }
    }
    return '?';
}

unsigned char ByteAt(std::string_view text, size_t pos) {
    return static_cast<unsigned char>(text[pos]);
}

// Where the first byte at or after pos that is not ASCII stands (size when none). Text is
// mostly ASCII, and a run of it is copied whole rather than a byte at a time.
size_t AsciiRunEnd(std::string_view text, size_t pos) {
    while (pos < text.size() && static_cast<unsigned char>(text[pos]) < 0x80) {
        ++pos;
    }
    return pos;
}

}  // namespace

Utf8Char DecodeUtf8At(std::string_view text, size_t pos) {
    const unsigned char lead = ByteAt(text, pos);
    if (lead < 0x80) {
        return {lead, 1, true};
    }
    size_t length = 0;
    char32_t code = 0;
    char32_t lowest = 0;  // below this the sequence is an overlong form
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
        code = lead & 0x1F;
        lowest = 0x80;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        code = lead & 0x0F;
        lowest = 0x800;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        code = lead & 0x07;
        lowest = 0x10000;
    } else {
        return {lead, 1, false};
    }
    if (pos + length > text.size()) {
        return {lead, 1, false};
    }
    for (size_t i = 1; i < length; ++i) {
        const unsigned char next = ByteAt(text, pos + i);
        if ((next & 0xC0) != 0x80) {
            return {lead, 1, false};
        }
        code = (code << 6) | (next & 0x3F);
    }
    if (code < lowest || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) {
        return {lead, 1, false};
    }
    return {code, length, true};
}

std::string Cp1252ToUtf8(std::string_view bytes) {
    std::string out;
    out.reserve(bytes.size() + bytes.size() / 8);
    size_t pos = 0;
    while (pos < bytes.size()) {
        const size_t run_end = AsciiRunEnd(bytes, pos);
        out.append(bytes, pos, run_end - pos);
        if (run_end == bytes.size()) {
            break;
        }
        const auto byte = static_cast<unsigned char>(bytes[run_end]);
        pos = run_end + 1;
        if (byte < 0xA0) {
            AppendUtf8(out, kHighControls[byte - 0x80u]);
        } else {
            AppendUtf8(out, byte);
        }
    }
    return out;
}

std::string Utf8ToCp1252(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    size_t pos = 0;
    while (pos < text.size()) {
        const size_t run_end = AsciiRunEnd(text, pos);
        out.append(text, pos, run_end - pos);
        pos = run_end;
        if (pos == text.size()) {
            break;
        }
        const Utf8Char ch = DecodeUtf8At(text, pos);
        out.push_back(ch.valid ? ByteFor(ch.code) : '?');
        pos += ch.length;
    }
    return out;
}

std::string CharactersOutsideCp1252(std::string_view text) {
    std::string outside;
    size_t pos = 0;
    while (pos < text.size()) {
        const Utf8Char ch = DecodeUtf8At(text, pos);
        pos += ch.length;
        if (ch.valid && (ch.code == U'?' || ByteFor(ch.code) != '?')) {
            continue;
        }
        std::string one;
        AppendUtf8(one, ch.valid ? ch.code : U'\uFFFD');
        if (outside.find(one) == std::string::npos) {
            outside += one;
        }
    }
    return outside;
}

size_t Utf8Length(std::string_view text) {
    size_t count = 0;
    for (size_t pos = 0; pos < text.size(); pos += DecodeUtf8At(text, pos).length) {
        ++count;
    }
    return count;
}

std::string Utf8Left(std::string_view text, size_t n) {
    size_t pos = 0;
    for (size_t taken = 0; taken < n && pos < text.size(); ++taken) {
        pos += DecodeUtf8At(text, pos).length;
    }
    return std::string(text.substr(0, pos));
}

}  // namespace vt
