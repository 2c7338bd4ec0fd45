#pragma once
// Builds Windows shortcut files byte by byte, after the published layout of the shell link
// format: a 76-byte header, an optional item ID list, the link information with its volume and
// local base path, and the terminal block.
#include <cstdint>
#include <string>

namespace vt::test {

struct LnkParts {
    bool id_list = true;                                // a LinkTargetIDList before the link information
    bool link_info = true;                              // the HasLinkInfo flag and its structure
    bool local_path = true;                             // the VolumeIDAndLocalBasePath flag
    std::string base = "C:\\Users\\Ana\\informe.docx";  // ANSI (Windows-1252 bytes)
    std::string suffix;                                 // ANSI common path suffix
    std::u16string unicode_base;                        // when not empty, the Unicode strings too
};

inline void PutU16(std::string& out, std::uint32_t v) {
    out += static_cast<char>(v & 0xFF);
    out += static_cast<char>((v >> 8) & 0xFF);
}
inline void PutU32(std::string& out, std::uint32_t v) {
    PutU16(out, v & 0xFFFF);
    PutU16(out, v >> 16);
}
inline void SetU32(std::string& out, std::size_t at, std::uint32_t v) {
    std::string bytes;
    PutU32(bytes, v);
    out.replace(at, 4, bytes);
}

inline std::string BuildLnk(const LnkParts& parts) {
    std::string lnk;
    PutU32(lnk, 0x4C);
    lnk += std::string("\x01\x14\x02\x00\x00\x00\x00\x00\xC0\x00\x00\x00\x00\x00\x00\x46", 16);
    PutU32(lnk, (parts.id_list ? 0x1u : 0u) | (parts.link_info ? 0x2u : 0u) | 0x80u);  // IsUnicode
    PutU32(lnk, 0x20);                                                                 // archive
    lnk += std::string(24, '\0');                                                      // three file times
    PutU32(lnk, 1234);                                                                 // file size
    PutU32(lnk, 0);                                                                    // icon index
    PutU32(lnk, 1);                                                                    // show normal
    lnk += std::string(12, '\0');                                                      // hot key, reserved
    if (parts.id_list) {
        // One item (a "My Computer" root item of 20 bytes) and the terminating empty item.
        std::string item("\x1F\x50\xE0\x4F\xD0\x20\xEA\x3A\x69\x10\xA2\xD8\x08\x00\x2B\x30\x30\x9D", 18);
        PutU16(lnk, static_cast<std::uint32_t>(2 + item.size() + 2));
        PutU16(lnk, static_cast<std::uint32_t>(2 + item.size()));
        lnk += item;
        PutU16(lnk, 0);
    }
    if (parts.link_info) {
        const bool unicode = !parts.unicode_base.empty();
        const std::uint32_t header = unicode ? 0x24 : 0x1C;
        std::string info(header, '\0');
        const auto volume = static_cast<std::uint32_t>(info.size());
        PutU32(info, 0x11);  // VolumeIDSize
        PutU32(info, 3);     // fixed drive
        PutU32(info, 0x1234ABCD);
        PutU32(info, 0x10);  // label offset
        info += '\0';
        const auto base = static_cast<std::uint32_t>(info.size());
        info += parts.base + '\0';
        const auto suffix = static_cast<std::uint32_t>(info.size());
        info += parts.suffix + '\0';
        std::uint32_t base_unicode = 0;
        std::uint32_t suffix_unicode = 0;
        if (unicode) {
            base_unicode = static_cast<std::uint32_t>(info.size());
            for (const char16_t c : parts.unicode_base) {
                PutU16(info, c);
            }
            PutU16(info, 0);
            suffix_unicode = static_cast<std::uint32_t>(info.size());
            PutU16(info, 0);
        }
        // The header: size, header size, flags, then the offsets of the volume, the base path, the
        // network part (none), the suffix and, with Unicode strings, their base path and suffix.
        // clang-format off
        const std::uint32_t fields[] = {static_cast<std::uint32_t>(info.size()), header, parts.local_path ? 1u : 0u,
                                        volume, base, 0, suffix, base_unicode, suffix_unicode};
        // clang-format on
        for (std::size_t i = 0; i < header / 4; ++i) {
            SetU32(info, 4 * i, fields[i]);
        }
        lnk += info;
    }
    PutU32(lnk, 0);  // terminal block
    return lnk;
}

}  // namespace vt::test
