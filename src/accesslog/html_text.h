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

}  // namespace vt
