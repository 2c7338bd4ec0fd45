#pragma once
// Builds Windows shortcut files byte by byte, after the published layout of the shell link
// format: a 76-byte header, an optional item ID list, the link information with its volume and
// local base path, and the terminal block.
#include <cstdint>
#include <string>

namespace vt::test {

struct LnkParts {
    bool id_list = true;                                // a LinkTargetIDList before the link information
    std::string base = "C:\\Users\\Ana\\informe.docx";  // ANSI (Windows-1252 bytes)
    std::u16string unicode_base;                        // when not empty, the Unicode strings too
};

// A little-endian number of that many bytes.
inline std::string Le(std::uint64_t v, int bytes = 4) {
    std::string out;
    for (int i = 0; i < bytes; ++i) {
        out += static_cast<char>((v >> (8 * i)) & 0xFF);
    }
    return out;
}

inline std::string BuildLnk(const LnkParts& parts) {
    // The header: its size, the class ID, the flags (HasLinkInfo, IsUnicode), "archive", three
    // file times, the file size, the icon index, "show normal", the hot key and reserved bytes.
    std::string lnk = Le(0x4C) + std::string("\x01\x14\x02\x00\x00\x00\x00\x00\xC0\x00\x00\x00\x00\x00\x00\x46", 16) +
                      Le((parts.id_list ? 0x1u : 0u) | 0x2u | 0x80u) + Le(0x20) + std::string(24, '\0') + Le(1234) +
                      Le(0) + Le(1) + std::string(12, '\0');
    if (parts.id_list) {
        // One item (a "My Computer" root item of 20 bytes) and the terminating empty item.
        lnk += Le(22, 2) + Le(20, 2) +
               std::string("\x1F\x50\xE0\x4F\xD0\x20\xEA\x3A\x69\x10\xA2\xD8\x08\x00\x2B\x30\x30\x9D", 18) + Le(0, 2);
    }
    // The link information: its header of offsets, then the volume ID (a fixed drive, a serial
    // number, an empty label), the base path, an empty common path suffix and, when asked
    // for, the same two strings in UTF-16.
    const bool unicode = !parts.unicode_base.empty();
    const std::size_t header = unicode ? 0x24 : 0x1C;
    std::string body = Le(0x11) + Le(3) + Le(0x1234ABCD) + Le(0x10) + '\0';
    // The header size, VolumeIDAndLocalBasePath, the offsets of the volume ID and the base path,
    // no network link, and the offset of the suffix; the Unicode offsets follow when asked for.
    std::string offsets = Le(header) + Le(1) + Le(header) + Le(header + body.size()) + Le(0) +
                          Le(header + body.size() + parts.base.size() + 1);
    body += parts.base + '\0' + '\0';
    if (unicode) {
        offsets += Le(header + body.size()) + Le(header + body.size() + 2 * parts.unicode_base.size() + 2);
        for (const char16_t c : parts.unicode_base) {
            body += Le(c, 2);
        }
        body += Le(0, 4);
    }
    return lnk + Le(4 + offsets.size() + body.size()) + offsets + body + Le(0);  // and the terminal block
}

}  // namespace vt::test
