#pragma once
// The profile-style INI file of the settings: "[SECTION]" headers and "key=value" lines.
//
// The file may have been edited by hand, so reading follows these rules:
// - Lines end with CR LF, LF or a lone CR; the last line needs no line end.
// - A UTF-8 byte-order mark at the start means the file was saved as UTF-8 and is decoded so
//   (a byte that is not valid UTF-8 there is taken as Windows-1252, so nothing is lost);
//   without it the file is Windows-1252. A UTF-16 byte-order mark (little or big endian: the
//   "Unicode" of Windows' Notepad) is decoded the same way and the document then counts as
//   read from a UTF-8 file.
// - A line whose first non-blank character is "[" is a section header; the name is what stands
//   between "[" and the first "]", trimmed of blanks and tabs. A header without "]" takes the
//   rest of the line as the name. Whatever follows the "]" is ignored.
// - A line with "=" is a key line: the key is what stands before the first "=", the value what
//   follows; both are trimmed of blanks and tabs, and one pair of matching quotes ("..." or
//   '...') around the value is dropped. A value ends at its first NUL byte. Any length is read.
// - Any other line (no "=") is not a key and is kept as it stands. There is no comment syntax:
//   ";ALA_001=x" is simply a key nobody asks for, which hides the line just as well.
// - Lines before the first header belong to no section and are never found.
// - Section and key names are compared ignoring ASCII case. When a key appears twice in a
//   section the first one counts, and when a section appears twice the first one counts (the
//   keys of the second are never found, and writes go to the first).
// - An empty section name or key name never matches anything, and a write with one is dropped.
//
// Writing keeps every other line as it was and writes all line ends as CR LF. A value that
// would not read back as itself (blanks at either end, or a pair of matching quotes around it)
// is written inside double quotes; CR, LF and NUL inside a value would break the line and are
// written as blanks. Section and key names are the program's own and are written as given. A
// document read from a UTF-8 file is written back as UTF-8 with its mark, any other as
// Windows-1252 (characters it cannot hold become "?").

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vt {

class IniDocument {
public:
    // bytes: the file as stored on disk.
    static IniDocument Parse(std::string_view bytes);

    // Sets value to "" first; false when the key is missing or its value is empty (the two are
    // indistinguishable, as with the platform's profile functions).
    bool Read(std::string_view section, std::string_view key, std::string& value) const;
    // The value of the first matching key (valid until the document changes), or nothing.
    std::optional<std::string_view> Find(std::string_view section, std::string_view key) const;

    // Visits the keys of a section in file order, each key once (the occurrence that counts),
    // with its value. Faster than asking for many possible keys one by one.
    void ForEachKey(std::string_view section,
                    const std::function<void(std::string_view key, std::string_view value)>& visit) const;

    // Replaces the first occurrence of the key; else adds it after the last line of the section
    // that is not blank; else adds the section at the end, after one empty line.
    void Write(std::string_view section, std::string_view key, std::string_view value);
    // Adds an empty section at the end unless it is already there.
    void AddSection(std::string_view section);

    // The document as UTF-8 text with CR LF line ends (no byte-order mark).
    std::string Text() const;
    // The document as bytes for the disk (see the encoding rule above).
    std::string Serialize() const;

    bool SavedAsUtf8() const { return utf8_; }
    // Whether a header of that name is there, keys or not.
    bool HasSection(std::string_view name) const { return FindSection(name) != nullptr; }

private:
    // A line read from the file stays in the text it was read from (read_); a line the program
    // wrote has a string of its own. A large settings file has two thousand lines, which are so
    // read without an allocation each.
    struct Line {
        std::string written;
        bool is_written = false;
        std::size_t begin = 0;  // where a read line stands in read_
        std::size_t size = 0;
        // Where the key and the value (trimmed and unquoted) stand in the line.
        std::size_t key_begin = 0;
        std::size_t key_size = 0;  // 0 when this is not a key line
        std::size_t value_begin = 0;
        std::size_t value_size = 0;
        bool counts = false;  // the first occurrence of its key in the section
    };
    struct Section {
        std::string name;
        std::string header;  // the header line as written
        std::vector<Line> lines;
        // The lines that count, found by their key in any letter case: an open-addressing table
        // of line numbers from 1 (0 is a free slot), so the keys are not copied.
        std::vector<std::uint32_t> index;
        std::size_t indexed = 0;
    };

    std::string_view TextOf(const Line& line) const;
    std::string_view KeyOf(const Line& line) const { return TextOf(line).substr(line.key_begin, line.key_size); }
    std::string_view ValueOf(const Line& line) const { return TextOf(line).substr(line.value_begin, line.value_size); }
    const Section* FindSection(std::string_view name) const;
    Section& SectionForWrite(std::string_view name);
    // Notes where key and value, views into the line's text, stand in it.
    static void PlaceKeyAndValue(Line& line, std::string_view text, std::string_view key, std::string_view value);
    // The slot of key in the section's table: the one holding its line, or the free one where
    // it goes. May grow the table, so it is good until the next call.
    std::uint32_t& SlotFor(Section& section, std::string_view key) const;
    // Where the probe for key ends in a table that is not empty: at its slot, or at a free one.
    size_t Probe(const Section& section, std::string_view key) const;
    const Line* FindLine(const Section& section, std::string_view key) const;

    std::shared_ptr<const std::string> read_;  // the text as read; shared by copies of the document
    std::vector<std::string> preamble_;        // lines before the first header
    std::vector<Section> sections_;
    // Lower-case name -> index in sections_ of its first occurrence.
    std::unordered_map<std::string, std::size_t> section_index_;
    bool utf8_ = false;
};

// Appends what stands after "key=" in a line that holds value, so that reading gives value
// back (see the writing rule above).
void AppendIniValue(std::string& out, std::string_view value);

// The two primitives through which the program reads and writes single keys of a file.
// ReadIniValue: value is set to "" first; false when the file or key is missing or the value
// empty. WriteIniValue: rewrites the file atomically with the key replaced or added, creating
// the file and the section on the first write. A failure is ignored, as the platform's
// function's was; a file that exists but cannot be read is left alone rather than replaced.
bool ReadIniValue(const std::string& file, std::string_view section, std::string_view key, std::string& value);
void WriteIniValue(const std::string& file, std::string_view section, std::string_view key, std::string_view value);

}  // namespace vt
