#include "accesslog/shell_link.h"

#include <array>
#include <cstdint>
#include <optional>

#include "store/cp1252.h"
#include "store/utf8.h"

namespace vt {

namespace {

constexpr std::uint32_t kHeaderSize = 0x4C;
constexpr std::array<unsigned char, 16> kLinkClsid{0x01, 0x14, 0x02, 0x00, 0x00, 0x00, 0x00, 0x00,
                                                   0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46};
constexpr std::uint32_t kHasLinkTargetIdList = 0x1;
constexpr std::uint32_t kHasLinkInfo = 0x2;
constexpr std::uint32_t kVolumeIdAndLocalBasePath = 0x1;
// A LinkInfo header this long or longer carries the offsets of the Unicode strings.
constexpr std::uint32_t kLinkInfoHeaderWithUnicode = 0x24;
constexpr std::uint32_t kLinkInfoHeaderMinimum = 0x1C;

// Little-endian reads that say when the bytes end first.
class Bytes {
public:
    explicit Bytes(std::string_view bytes) : bytes_(bytes) {}
    std::size_t size() const { return bytes_.size(); }
    std::optional<std::uint32_t> U16(std::size_t at) const { return Unsigned(at, 2); }
    std::optional<std::uint32_t> U32(std::size_t at) const { return Unsigned(at, 4); }
    unsigned char At(std::size_t at) const { return static_cast<unsigned char>(bytes_[at]); }
    Bytes Sub(std::size_t at, std::size_t length) const { return Bytes(bytes_.substr(at, length)); }
    std::string_view View() const { return bytes_; }

private:
    std::optional<std::uint32_t> Unsigned(std::size_t at, std::size_t width) const {
        if (at > bytes_.size() || bytes_.size() - at < width) {
            return std::nullopt;
        }
        std::uint32_t value = 0;
        for (std::size_t i = width; i-- > 0;) {
            value = (value << 8) | At(at + i);
        }
        return value;
    }
    std::string_view bytes_;
};

// A NUL-terminated ANSI string starting at offset; nothing when no NUL ends it inside bytes.
std::optional<std::string> AnsiString(const Bytes& bytes, std::size_t offset) {
    if (offset >= bytes.size()) {
        return std::nullopt;
    }
    const std::string_view rest = bytes.View().substr(offset);
    const std::size_t end = rest.find('\0');
    if (end == std::string_view::npos) {
        return std::nullopt;
    }
    return Cp1252ToUtf8(rest.substr(0, end));
}

// A NUL-terminated UTF-16LE string; an unpaired surrogate becomes U+FFFD.
std::optional<std::string> UnicodeString(const Bytes& bytes, std::size_t offset) {
    std::u32string text;
    for (std::size_t at = offset;; at += 2) {
        const auto unit = bytes.U16(at);
        if (!unit) {
            return std::nullopt;
        }
        if (*unit == 0) {
            return Utf32ToUtf8(text);
        }
        if (*unit >= 0xD800 && *unit <= 0xDBFF) {
            const auto low = bytes.U16(at + 2);
            if (low && *low >= 0xDC00 && *low <= 0xDFFF) {
                text += static_cast<char32_t>(0x10000 + ((*unit - 0xD800) << 10) + (*low - 0xDC00));
                at += 2;
                continue;
            }
            text += U'\uFFFD';
        } else if (*unit >= 0xDC00 && *unit <= 0xDFFF) {
            text += U'\uFFFD';
        } else {
            text += static_cast<char32_t>(*unit);
        }
    }
}

// The local base path and suffix of a LinkInfo structure (its own bytes, offsets from its start).
std::string LocalPathOfLinkInfo(const Bytes& info) {
    const auto header_size = info.U32(4);
    const auto flags = info.U32(8);
    const auto base_offset = info.U32(16);
    const auto suffix_offset = info.U32(24);
    if (!header_size || !flags || !base_offset || !suffix_offset || *header_size < kLinkInfoHeaderMinimum ||
        (*flags & kVolumeIdAndLocalBasePath) == 0) {
        return {};
    }
    if (*header_size >= kLinkInfoHeaderWithUnicode) {
        const auto base_unicode = info.U32(28);
        const auto suffix_unicode = info.U32(32);
        if (base_unicode && *base_unicode != 0) {
            const auto base = UnicodeString(info, *base_unicode);
            if (!base) {
                return {};
            }
            const auto suffix = suffix_unicode && *suffix_unicode != 0 ? UnicodeString(info, *suffix_unicode)
                                                                       : std::optional<std::string>{""};
            return *base + suffix.value_or("");
        }
    }
    const auto base = AnsiString(info, *base_offset);
    if (!base) {
        return {};
    }
    const auto suffix = *suffix_offset != 0 ? AnsiString(info, *suffix_offset) : std::optional<std::string>{""};
    return *base + suffix.value_or("");
}

}  // namespace

std::string ReadShellLinkTarget(std::string_view raw) {
    const Bytes bytes(raw);
    if (bytes.U32(0) != kHeaderSize || bytes.size() < kHeaderSize) {
        return {};
    }
    for (std::size_t i = 0; i < kLinkClsid.size(); ++i) {
        if (bytes.At(4 + i) != kLinkClsid[i]) {
            return {};
        }
    }
    const std::uint32_t flags = *bytes.U32(20);
    std::size_t at = kHeaderSize;
    if (flags & kHasLinkTargetIdList) {
        const auto id_list_size = bytes.U16(at);
        if (!id_list_size) {
            return {};
        }
        at += 2 + *id_list_size;
    }
    if ((flags & kHasLinkInfo) == 0) {
        return {};
    }
    const auto info_size = bytes.U32(at);
    if (!info_size || *info_size > bytes.size() - at) {
        return {};
    }
    // Every offset inside the link information counts from its start and must stay inside it.
    return LocalPathOfLinkInfo(bytes.Sub(at, *info_size));
}

}  // namespace vt
