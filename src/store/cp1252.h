#pragma once
// Every file the program reads or writes is Windows-1252, so that its data files move unchanged
// between this program and an existing Windows installation; strings in memory are UTF-8.
//
// The five bytes that Windows-1252 leaves undefined (0x81, 0x8D, 0x8F, 0x90, 0x9D) are taken as
// the control characters U+0081, U+008D, U+008F, U+0090, U+009D and written back as the same
// bytes, so any file read and written again comes out byte for byte as it went in.
//
// Text that is not valid UTF-8 never stops the program: each byte that does not start a valid
// sequence counts as one character of its own, and is written to a file as "?". A character
// that Windows-1252 cannot hold is written as "?" too.

#include <cstddef>
#include <string>
#include <string_view>

namespace vt {

std::string Cp1252ToUtf8(std::string_view bytes);
std::string Utf8ToCp1252(std::string_view text);

// The UTF-8 decoding the two functions below count with. Decodes the character that starts at
// text[pos]; on a byte that does not start a valid sequence, returns length 1 and valid false.
struct Utf8Char {
    char32_t code = 0;
    std::size_t length = 1;
    bool valid = false;
};
Utf8Char DecodeUtf8At(std::string_view text, std::size_t pos);

// The characters of a UTF-8 text that Windows-1252 cannot hold, each once, in the order they
// first appear; "" when the whole text fits. A byte that is no valid UTF-8 counts as U+FFFD.
std::string CharactersOutsideCp1252(std::string_view text);

// Characters, not bytes: tooltips and fixed-width fields are cut by characters.
std::size_t Utf8Length(std::string_view text);
// The first n characters (all of it when shorter).
std::string Utf8Left(std::string_view text, std::size_t n);

}  // namespace vt
