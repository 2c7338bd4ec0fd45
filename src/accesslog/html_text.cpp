#include "accesslog/html_text.h"

#include <cstdint>
#include <string>

#include "store/cp1252.h"

namespace vt {

namespace {

std::string Escape(std::string_view text, bool in_attribute, char quote) {
    std::string out;
    out.reserve(text.size() + text.size() / 8);
    for (const char c : text) {
        switch (c) {
            case '&':
                out += "&amp;";
                break;
            case '<':
                out += "&lt;";
                break;
            case '>':
                out += "&gt;";
                break;
            default:
                if (in_attribute && c == quote) {
                    out += c == '\'' ? "&#39;" : "&quot;";
                } else {
                    out += c;
                }
        }
    }
    return out;
}

}  // namespace

std::string EscapeHtmlText(std::string_view text) {
    return Escape(text, false, '\0');
}

std::string EscapeHtmlAttribute(std::string_view text, char quote) {
    return Escape(text, true, quote);
}

std::string PathForPage(std::string_view path) {
    std::string out;
    out.reserve(path.size() + path.size() / 8);
    for (std::size_t pos = 0; pos < path.size();) {
        const Utf8Char c = DecodeUtf8At(path, pos);
        const std::string_view bytes = path.substr(pos, c.length);
        pos += c.length;
        char32_t reference = 0;
        if (!c.valid || (c.code >= 0x80 && c.code < 0xA0)) {
            // The C1 controls have no picture, and a browser would read "&#128;" as the euro sign.
            reference = 0xFFFD;
        } else if (c.code < 0x20) {
            reference = 0x2400 + c.code;
        } else if (c.code == 0x7F) {
            reference = 0x2421;
        } else if (c.code >= 0x80 && Utf8ToCp1252(bytes) == "?") {
            reference = c.code;
        }
        if (reference != 0) {
            out += "&#" + std::to_string(static_cast<std::uint32_t>(reference)) + ";";
        } else {
            out += EscapeHtmlText(bytes);
        }
    }
    return out;
}

}  // namespace vt
