#include "accesslog/html_text.h"

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

}  // namespace vt
