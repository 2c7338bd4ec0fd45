#pragma once
// Text put into the access pages. A file name can hold any character, so it is escaped: "&",
// "<" and ">" everywhere, and inside an attribute also the quote that delimits the value. Every
// other byte, apostrophes in body text included, is written as it is.

#include <string>
#include <string_view>

namespace vt {

std::string EscapeHtmlText(std::string_view text);
// For a value between the given quotes ('\'' or '"').
std::string EscapeHtmlAttribute(std::string_view text, char quote);

// A file's path shown in a Windows-1252 page: escaped as EscapeHtmlText, a character the page
// cannot hold written as its number ("&#26085;"), a control character as its visible picture
// ("\n" as "&#9226;", the symbol for a line feed) so that the line stays one line, and a byte
// that is not UTF-8 as the replacement character.
std::string PathForPage(std::string_view path);

}  // namespace vt
