#include "agenda/char_positions.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "store/cp1252.h"

namespace vt {

namespace {

// Byte offset reached after stepping over `chars` characters from byte `pos`.
std::size_t SkipChars(std::string_view text, std::size_t pos, std::size_t chars) {
    // Eight bytes at a time while none is above 0x7F: a thousand entries are read at every
    // start, each several times, and each read steps over up to 27 characters.
    while (chars >= 8 && text.size() - pos >= 8) {
        std::uint64_t eight = 0;
        std::memcpy(&eight, text.data() + pos, sizeof eight);
        if ((eight & 0x8080808080808080ULL) != 0) {
            break;
        }
        pos += 8;
        chars -= 8;
    }
    while (chars > 0 && pos < text.size()) {
        // Entries are nearly always plain ASCII up to the text, so the decoder is only asked
        // about the rare byte above 0x7F.
        const auto byte = static_cast<unsigned char>(text[pos]);
        pos += byte < 0x80 ? 1 : DecodeUtf8At(text, pos).length;
        --chars;
    }
    return pos < text.size() ? pos : text.size();
}

}  // namespace

std::string_view CharMid(std::string_view text, std::size_t first, std::size_t count) {
    if (first == 0) {
        first = 1;
    }
    const std::size_t begin = SkipChars(text, 0, first - 1);
    if (count == kToTheEnd) {
        return text.substr(begin);
    }
    const std::size_t end = SkipChars(text, begin, count);
    return text.substr(begin, end - begin);
}

void CharOffsets(std::string_view text, std::span<std::size_t> offsets) {
    // Plain ASCII, as nearly every entry is up to its text: each character is one byte.
    const std::size_t span = std::min(offsets.size(), text.size());
    if (std::all_of(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(span),
                    [](char c) { return static_cast<unsigned char>(c) < 0x80; })) {
        for (std::size_t k = 0; k < offsets.size(); ++k) {
            offsets[k] = std::min(k, text.size());
        }
        return;
    }
    std::size_t pos = 0;
    for (std::size_t& offset : offsets) {
        offset = pos;
        pos = SkipChars(text, pos, 1);
    }
}

std::string_view TrimBlanks(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

}  // namespace vt
