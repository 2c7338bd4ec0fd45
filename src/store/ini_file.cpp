#include "store/ini_file.h"

#include <algorithm>
#include <cstdint>

#include "store/cp1252.h"
#include "store/text_file.h"
#include "store/utf8.h"

namespace vt {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kUtf16LeMark = "\xFF\xFE";
constexpr std::string_view kUtf16BeMark = "\xFE\xFF";

bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}

std::string_view Trim(std::string_view text) {
    while (!text.empty() && IsBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && IsBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

char LowerAscii(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::string Lower(std::string_view text) {
    std::string out(text);
    std::transform(out.begin(), out.end(), out.begin(), LowerAscii);
    return out;
}

bool HasMatchingQuotes(std::string_view text) {
    return text.size() >= 2 && text.front() == text.back() && (text.front() == '"' || text.front() == '\'');
}

// A file saved as UTF-8 may still have been touched by a Windows-1252 editor; such bytes are
// read as Windows-1252 instead of being lost.
std::string DecodeUtf8File(std::string_view bytes) {
    std::string out;
    out.reserve(bytes.size());
    size_t pos = 0;
    while (pos < bytes.size()) {
        const Utf8Char ch = DecodeUtf8At(bytes, pos);
        if (ch.valid) {
            out.append(bytes.substr(pos, ch.length));
        } else {
            out += Cp1252ToUtf8(bytes.substr(pos, 1));
        }
        pos += ch.length;
    }
    return out;
}

// Windows' "Unicode" files: UTF-16 in either byte order. A lone surrogate or an odd last byte
// becomes U+FFFD, so nothing read from outside can break the text.
std::string DecodeUtf16File(std::string_view bytes, bool little_endian) {
    const auto unit_at = [&](size_t pos) {
        const auto first = static_cast<unsigned char>(bytes[pos]);
        const auto second = static_cast<unsigned char>(bytes[pos + 1]);
        return little_endian ? static_cast<char32_t>(first | second << 8) : static_cast<char32_t>(first << 8 | second);
    };
    std::string out;
    out.reserve(bytes.size());
    size_t pos = 0;
    for (; pos + 1 < bytes.size(); pos += 2) {
        char32_t unit = unit_at(pos);
        if (unit >= 0xD800 && unit <= 0xDBFF && pos + 3 < bytes.size()) {
            const char32_t low = unit_at(pos + 2);
            if (low >= 0xDC00 && low <= 0xDFFF) {
                unit = 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
                pos += 2;
            }
        }
        AppendUtf8(out, unit >= 0xD800 && unit <= 0xDFFF ? U'\uFFFD' : unit);
    }
    if (pos < bytes.size()) {
        AppendUtf8(out, U'\uFFFD');
    }
    return out;
}

// What a line is, by the rules in the header. name is the section name for a header line and
// the key for a key line.
enum class LineKind { Other, Header, Key };
struct ParsedLine {
    LineKind kind = LineKind::Other;
    std::string_view name;
    std::string_view value;
};

ParsedLine ParseLine(std::string_view line) {
    const std::string_view content = Trim(line);
    if (!content.empty() && content.front() == '[') {
        std::string_view name = content.substr(1);
        const size_t close = name.find(']');
        if (close != std::string_view::npos) {
            name = name.substr(0, close);
        }
        return {LineKind::Header, Trim(name), {}};
    }
    const size_t equals = line.find('=');
    if (equals == std::string_view::npos) {
        return {};
    }
    std::string_view value = line.substr(equals + 1);
    value = value.substr(0, value.find('\0'));
    value = Trim(value);
    if (HasMatchingQuotes(value)) {
        value = value.substr(1, value.size() - 2);
    }
    return {LineKind::Key, Trim(line.substr(0, equals)), value};
}

// Keys are compared ignoring ASCII case, so they hash so too (FNV-1a).
size_t KeyHash(std::string_view key) {
    std::uint64_t hash = 14695981039346656037ULL;
    for (const char c : key) {
        hash = (hash ^ static_cast<unsigned char>(LowerAscii(c))) * 1099511628211ULL;
    }
    return static_cast<size_t>(hash);
}

bool SameKey(std::string_view a, std::string_view b) {
    return a.size() == b.size() &&
           std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) { return LowerAscii(x) == LowerAscii(y); });
}

bool IsBlankLine(std::string_view text) {
    return Trim(text).empty();
}

}  // namespace

void AppendIniValue(std::string& out, std::string_view value) {
    // CR, LF and NUL are written as blanks, so they count as blanks at either end too.
    const auto blank = [](char c) { return IsBlank(c) || c == '\r' || c == '\n' || c == '\0'; };
    const bool quoted = !value.empty() && (blank(value.front()) || blank(value.back()) || HasMatchingQuotes(value));
    if (quoted) {
        out += '"';
    }
    const size_t start = out.size();
    out.append(value);
    for (size_t i = start; i < out.size(); ++i) {
        if (out[i] == '\r' || out[i] == '\n' || out[i] == '\0') {
            out[i] = ' ';
        }
    }
    if (quoted) {
        out += '"';
    }
}

IniDocument IniDocument::Parse(std::string_view bytes) {
    IniDocument doc;
    std::string text;
    if (bytes.starts_with(kUtf8Mark)) {
        doc.utf8_ = true;
        text = DecodeUtf8File(bytes.substr(kUtf8Mark.size()));
    } else if (bytes.starts_with(kUtf16LeMark) || bytes.starts_with(kUtf16BeMark)) {
        doc.utf8_ = true;
        text = DecodeUtf16File(bytes.substr(kUtf16LeMark.size()), bytes.starts_with(kUtf16LeMark));
    } else {
        text = Cp1252ToUtf8(bytes);
    }
    doc.read_ = std::make_shared<const std::string>(std::move(text));
    const std::string_view all = *doc.read_;
    size_t start = 0;
    while (start < all.size()) {
        // One pass over the bytes: find_first_of would look each one up in the set of two.
        size_t end = start;
        while (end < all.size() && all[end] != '\r' && all[end] != '\n') {
            ++end;
        }
        const std::string_view line = all.substr(start, end - start);
        const size_t line_begin = start;
        start = end;
        if (start < all.size()) {
            // CR LF is one line end; a lone CR or LF is one too.
            start += (all[start] == '\r' && start + 1 < all.size() && all[start + 1] == '\n') ? size_t{2} : size_t{1};
        }
        const ParsedLine parsed = ParseLine(line);
        if (parsed.kind == LineKind::Header) {
            Section section;
            section.name = std::string(parsed.name);
            section.header = std::string(line);
            if (!section.name.empty()) {
                doc.section_index_.try_emplace(Lower(section.name), doc.sections_.size());
            }
            doc.sections_.push_back(std::move(section));
        } else if (doc.sections_.empty()) {
            doc.preamble_.emplace_back(line);
        } else {
            Section& section = doc.sections_.back();
            Line read;
            read.begin = line_begin;
            read.size = line.size();
            if (parsed.kind == LineKind::Key && !parsed.name.empty()) {
                PlaceKeyAndValue(read, line, parsed.name, parsed.value);
                std::uint32_t& slot = doc.SlotFor(section, parsed.name);
                read.counts = slot == 0;
                if (read.counts) {
                    slot = static_cast<std::uint32_t>(section.lines.size() + 1);
                    ++section.indexed;
                }
            }
            section.lines.push_back(std::move(read));
        }
    }
    return doc;
}

std::string_view IniDocument::TextOf(const Line& line) const {
    if (line.is_written) {
        return line.written;
    }
    return std::string_view(*read_).substr(line.begin, line.size);
}

void IniDocument::PlaceKeyAndValue(Line& line, std::string_view text, std::string_view key, std::string_view value) {
    line.key_begin = static_cast<size_t>(key.data() - text.data());
    line.key_size = key.size();
    line.value_begin = static_cast<size_t>(value.data() - text.data());
    line.value_size = value.size();
}

std::uint32_t& IniDocument::SlotFor(Section& section, std::string_view key) const {
    // Kept at most half full, so a probe ends soon at the key or at a free slot.
    if ((section.indexed + 1) * 2 > section.index.size()) {
        std::vector<std::uint32_t> grown(std::max<size_t>(16, section.index.size() * 2), 0);
        const size_t mask = grown.size() - 1;
        for (const std::uint32_t number : section.index) {
            if (number != 0) {
                size_t at = KeyHash(KeyOf(section.lines[number - 1])) & mask;
                while (grown[at] != 0) {
                    at = (at + 1) & mask;
                }
                grown[at] = number;
            }
        }
        section.index = std::move(grown);
    }
    return section.index[Probe(section, key)];
}

size_t IniDocument::Probe(const Section& section, std::string_view key) const {
    const size_t mask = section.index.size() - 1;
    size_t at = KeyHash(key) & mask;
    while (section.index[at] != 0 && !SameKey(KeyOf(section.lines[section.index[at] - 1]), key)) {
        at = (at + 1) & mask;
    }
    return at;
}

const IniDocument::Line* IniDocument::FindLine(const Section& section, std::string_view key) const {
    if (section.index.empty() || key.empty()) {
        return nullptr;
    }
    const std::uint32_t number = section.index[Probe(section, key)];
    return number == 0 ? nullptr : &section.lines[number - 1];
}

const IniDocument::Section* IniDocument::FindSection(std::string_view name) const {
    if (name.empty()) {
        return nullptr;
    }
    const auto it = section_index_.find(Lower(name));
    return it == section_index_.end() ? nullptr : &sections_[it->second];
}

std::optional<std::string_view> IniDocument::Find(std::string_view section, std::string_view key) const {
    const Section* found = FindSection(section);
    if (found == nullptr || key.empty()) {
        return std::nullopt;
    }
    const Line* line = FindLine(*found, key);
    if (line == nullptr) {
        return std::nullopt;
    }
    return ValueOf(*line);
}

void IniDocument::ForEachKey(std::string_view section,
                             const std::function<void(std::string_view key, std::string_view value)>& visit) const {
    const Section* found = FindSection(section);
    if (found == nullptr) {
        return;
    }
    for (const Line& line : found->lines) {
        if (line.counts) {
            visit(KeyOf(line), ValueOf(line));
        }
    }
}

bool IniDocument::Read(std::string_view section, std::string_view key, std::string& value) const {
    value.clear();
    const auto found = Find(section, key);
    if (!found || found->empty()) {
        return false;
    }
    value.assign(found->data(), found->size());
    return true;
}

IniDocument::Section& IniDocument::SectionForWrite(std::string_view name) {
    if (const auto it = section_index_.find(Lower(name)); it != section_index_.end()) {
        return sections_[it->second];
    }
    // One empty line between sections, as the file is laid out when the program writes it.
    if (!sections_.empty()) {
        Section& last = sections_.back();
        const bool ends_blank = !last.lines.empty() && IsBlankLine(TextOf(last.lines.back()));
        if (!ends_blank) {
            Line blank;
            blank.is_written = true;
            last.lines.push_back(std::move(blank));
        }
    } else if (!preamble_.empty() && !IsBlankLine(preamble_.back())) {
        preamble_.emplace_back();
    }
    Section section;
    section.name = std::string(name);
    section.header = "[" + section.name + "]";
    section_index_.emplace(Lower(name), sections_.size());
    sections_.push_back(std::move(section));
    return sections_.back();
}

void IniDocument::AddSection(std::string_view section) {
    if (!section.empty()) {
        SectionForWrite(section);
    }
}

void IniDocument::Write(std::string_view section, std::string_view key, std::string_view value) {
    if (section.empty() || key.empty()) {
        return;  // such a name could never be found again
    }
    Section& target = SectionForWrite(section);
    Line line;
    line.is_written = true;
    line.written = std::string(key) + "=";
    AppendIniValue(line.written, value);
    if (const ParsedLine parsed = ParseLine(line.written); parsed.kind == LineKind::Key && !parsed.name.empty()) {
        PlaceKeyAndValue(line, line.written, parsed.name, parsed.value);
    }
    line.counts = line.key_size != 0;
    std::uint32_t* slot = line.counts ? &SlotFor(target, KeyOf(line)) : nullptr;
    if (slot != nullptr && *slot != 0) {
        target.lines[*slot - 1] = std::move(line);
        return;
    }
    // After the last line that is not blank, so the empty line before the next section stays
    // where it is. Only blank lines move, and they are never in the index.
    size_t at = target.lines.size();
    while (at > 0 && IsBlankLine(TextOf(target.lines[at - 1]))) {
        --at;
    }
    if (slot != nullptr) {
        *slot = static_cast<std::uint32_t>(at + 1);
        ++target.indexed;
    }
    target.lines.insert(target.lines.begin() + static_cast<std::ptrdiff_t>(at), std::move(line));
}

std::string IniDocument::Text() const {
    size_t size = 0;
    for (const auto& line : preamble_) {
        size += line.size() + 2;
    }
    for (const auto& section : sections_) {
        size += section.header.size() + 2;
        for (const auto& line : section.lines) {
            size += TextOf(line).size() + 2;
        }
    }
    std::string out;
    out.reserve(size);
    for (const auto& line : preamble_) {
        out += line;
        out += "\r\n";
    }
    for (const auto& section : sections_) {
        out += section.header;
        out += "\r\n";
        for (const auto& line : section.lines) {
            out += TextOf(line);
            out += "\r\n";
        }
    }
    return out;
}

std::string IniDocument::Serialize() const {
    if (utf8_) {
        return std::string(kUtf8Mark) + Text();
    }
    return Utf8ToCp1252(Text());
}

bool ReadIniValue(const std::string& file, std::string_view section, std::string_view key, std::string& value) {
    value.clear();
    const FileContents contents = ReadWholeFile(file);
    if (contents.outcome != ReadOutcome::Read) {
        return false;
    }
    return IniDocument::Parse(contents.bytes).Read(section, key, value);
}

void WriteIniValue(const std::string& file, std::string_view section, std::string_view key, std::string_view value) {
    const FileContents contents = ReadWholeFile(file);
    if (contents.outcome == ReadOutcome::Unreadable) {
        return;
    }
    IniDocument doc = contents.outcome == ReadOutcome::Read ? IniDocument::Parse(contents.bytes) : IniDocument{};
    doc.Write(section, key, value);
    (void)WriteFileAtomically(file, doc.Serialize());
}

}  // namespace vt
