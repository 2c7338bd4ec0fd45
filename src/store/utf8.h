#pragma once
#include <string>
#include <string_view>

namespace vt {

// Decodes UTF-8; a malformed byte becomes U+FFFD, so nothing read from outside can break it.
std::u32string Utf8ToUtf32(std::string_view text);
std::string Utf32ToUtf8(std::u32string_view text);
// Appends one character's UTF-8 bytes.
void AppendUtf8(std::string& out, char32_t c);

}  // namespace vt
