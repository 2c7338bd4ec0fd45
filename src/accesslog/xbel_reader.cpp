#include "accesslog/xbel_reader.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <utility>

#include "accesslog/local_time.h"
#include "store/cp1252.h"
#include "store/error_text.h"
#include "store/text_file.h"
#include "store/utf8.h"

namespace vt {

namespace {

using std::string_view;

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

bool AllBlank(string_view text) {
    return std::all_of(text.begin(), text.end(), IsBlank);
}

bool IsUtf8(string_view bytes) {
    for (std::size_t pos = 0; pos < bytes.size();) {
        const Utf8Char c = DecodeUtf8At(bytes, pos);
        if (!c.valid) {
            return false;
        }
        pos += c.length;
    }
    return true;
}

// An attribute value with its references replaced; nothing when a reference is not XML.
std::optional<std::string> DecodeReferences(string_view raw) {
    std::string out;
    out.reserve(raw.size());
    for (std::size_t pos = 0; pos < raw.size();) {
        if (raw[pos] != '&') {
            out += raw[pos++];
            continue;
        }
        const std::size_t semicolon = raw.find(';', pos);
        if (semicolon == string_view::npos) {
            return std::nullopt;
        }
        const string_view name = raw.substr(pos + 1, semicolon - pos - 1);
        pos = semicolon + 1;
        static constexpr std::pair<string_view, char> kNamed[] = {
            {"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}};
        const auto named =
            std::find_if(std::begin(kNamed), std::end(kNamed), [&](const auto& entry) { return entry.first == name; });
        if (named != std::end(kNamed)) {
            out += named->second;
            continue;
        }
        if (name.size() < 2 || name[0] != '#') {
            return std::nullopt;
        }
        const bool hex = name[1] == 'x';
        const string_view digits = name.substr(hex ? 2 : 1);
        std::uint32_t code = 0;
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), code, hex ? 16 : 10);
        if (digits.empty() || error != std::errc{} || end != digits.data() + digits.size() || code == 0 ||
            code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) {
            return std::nullopt;
        }
        AppendUtf8(out, static_cast<char32_t>(code));
    }
    return out;
}

int HexValue(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    if (c >= 'A' && c <= 'F') {
        return c - 'A' + 10;
    }
    return -1;
}

// "%20" → " "; a "%" not followed by two hex digits stays as it is.
std::string PercentDecode(string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t pos = 0; pos < text.size(); ++pos) {
        if (text[pos] == '%' && pos + 2 < text.size() && HexValue(text[pos + 1]) >= 0 && HexValue(text[pos + 2]) >= 0) {
            out += static_cast<char>(HexValue(text[pos + 1]) * 16 + HexValue(text[pos + 2]));
            pos += 2;
        } else {
            out += text[pos];
        }
    }
    return out;
}

std::optional<int> Digits(string_view text, std::size_t at, std::size_t count) {
    if (at + count > text.size()) {
        return std::nullopt;
    }
    int value = 0;
    for (std::size_t i = at; i < at + count; ++i) {
        if (text[i] < '0' || text[i] > '9') {
            return std::nullopt;
        }
        value = value * 10 + (text[i] - '0');
    }
    return value;
}

// "2024-03-15T10:20:30.123456Z" (fraction optional; "+01:00" instead of "Z" also read) → seconds
// since the epoch.
std::optional<std::int64_t> ParseUtcTime(string_view text) {
    const auto year = Digits(text, 0, 4);
    const auto month = Digits(text, 5, 2);
    const auto day = Digits(text, 8, 2);
    const auto hour = Digits(text, 11, 2);
    const auto minute = Digits(text, 14, 2);
    const auto second = Digits(text, 17, 2);
    if (!year || !month || !day || !hour || !minute || !second || text[4] != '-' || text[7] != '-' ||
        (text[10] != 'T' && text[10] != 't') || text[13] != ':' || text[16] != ':' || *hour > 23 || *minute > 59 ||
        *second > 60 || *year < 1) {
        return std::nullopt;
    }
    const Date date = MakeDate(*day, *month, *year);
    if (!date.ok()) {
        return std::nullopt;
    }
    std::size_t at = 19;
    if (at < text.size() && text[at] == '.') {
        ++at;
        const std::size_t first = at;
        while (at < text.size() && text[at] >= '0' && text[at] <= '9') {
            ++at;
        }
        if (at == first) {
            return std::nullopt;
        }
    }
    int offset_minutes = 0;
    const string_view zone = text.substr(std::min(at, text.size()));
    if (zone == "Z" || zone == "z") {
        offset_minutes = 0;
    } else if (zone.size() == 6 && (zone[0] == '+' || zone[0] == '-') && zone[3] == ':') {
        const auto zh = Digits(zone, 1, 2);
        const auto zm = Digits(zone, 4, 2);
        if (!zh || !zm || *zh > 23 || *zm > 59) {
            return std::nullopt;
        }
        offset_minutes = (zone[0] == '+' ? 1 : -1) * (*zh * 60 + *zm);
    } else {
        return std::nullopt;
    }
    const std::chrono::sys_seconds moment = std::chrono::sys_days{date} + std::chrono::hours{*hour} +
                                            std::chrono::minutes{*minute - offset_minutes} +
                                            std::chrono::seconds{*second};
    return moment.time_since_epoch().count();
}

// The local path of a "file:" address; nothing for any other address or host.
std::optional<std::string> LocalPathOf(string_view href) {
    constexpr string_view kScheme = "file://";
    if (href.substr(0, kScheme.size()) != kScheme) {
        return std::nullopt;
    }
    string_view rest = href.substr(kScheme.size());
    if (rest.substr(0, 10) == "localhost/") {
        rest.remove_prefix(9);
    }
    if (rest.empty() || rest.front() != '/') {
        return std::nullopt;
    }
    std::string path = PercentDecode(rest);
    if (path.find('\0') != std::string::npos) {
        return std::nullopt;
    }
    return path;
}

struct Attribute {
    string_view name;
    std::string value;
};

void TakeBookmark(const std::vector<Attribute>& attributes, std::vector<XbelBookmark>& bookmarks) {
    auto value_of = [&](string_view name) -> const std::string* {
        for (const auto& attribute : attributes) {
            if (attribute.name == name) {
                return &attribute.value;
            }
        }
        return nullptr;
    };
    auto time_of = [&](string_view name) -> std::optional<std::int64_t> {
        const std::string* value = value_of(name);
        return value ? ParseUtcTime(*value) : std::nullopt;
    };
    const std::string* href = value_of("href");
    if (href == nullptr) {
        return;
    }
    auto path = LocalPathOf(*href);
    if (!path) {
        return;
    }
    std::optional<std::int64_t> used = time_of("modified");
    if (const auto visited = time_of("visited"); visited && (!used || *visited > *used)) {
        used = visited;
    }
    if (!used) {
        used = time_of("added");
    }
    if (!used) {
        return;
    }
    bookmarks.push_back({std::move(*path), *href, LocalFromEpochSeconds(*used)});
}

// A single pass over the document that checks it is well-formed enough to trust (tags closed in
// order, attributes quoted, references known) and collects the bookmarks on the way.
class Scanner {
public:
    explicit Scanner(string_view text) : text_(text) {}

    XbelProblem Run(std::vector<XbelBookmark>& bookmarks) {
        for (;;) {
            const std::size_t lt = text_.find('<', pos_);
            const string_view between = text_.substr(pos_, lt == string_view::npos ? string_view::npos : lt - pos_);
            if (open_.empty() && !AllBlank(between)) {
                return XbelProblem::Malformed;  // text outside the root element
            }
            if (lt == string_view::npos) {
                break;
            }
            pos_ = lt;
            if (const XbelProblem problem = Markup(bookmarks); problem != XbelProblem::None) {
                return problem;
            }
        }
        if (!root_seen_ || !open_.empty()) {
            return XbelProblem::Truncated;
        }
        return root_ == "xbel" ? XbelProblem::None : XbelProblem::NotXbel;
    }

private:
    bool StartsWith(string_view prefix) const { return text_.substr(pos_, prefix.size()) == prefix; }

    // Skips past the next terminator; Truncated when the document ends first.
    XbelProblem SkipPast(string_view terminator) {
        const std::size_t end = text_.find(terminator, pos_);
        if (end == string_view::npos) {
            return XbelProblem::Truncated;
        }
        pos_ = end + terminator.size();
        return XbelProblem::None;
    }

    void SkipBlanks() {
        while (pos_ < text_.size() && IsBlank(text_[pos_])) {
            ++pos_;
        }
    }

    string_view Name() {
        const std::size_t first = pos_;
        while (pos_ < text_.size()) {
            const char c = text_[pos_];
            if (IsBlank(c) || c == '/' || c == '>' || c == '<' || c == '=' || c == '"' || c == '\'') {
                break;
            }
            ++pos_;
        }
        return text_.substr(first, pos_ - first);
    }

    XbelProblem Markup(std::vector<XbelBookmark>& bookmarks) {
        // A file cut inside "<!--" or "<![CDATA[" must not pass for some other "<!" markup.
        const string_view rest = text_.substr(pos_);
        for (const string_view opener : {string_view("<!--"), string_view("<![CDATA[")}) {
            if (rest.size() < opener.size() && opener.starts_with(rest)) {
                return XbelProblem::Truncated;
            }
        }
        if (StartsWith("<?")) {
            return SkipPast("?>");
        }
        if (StartsWith("<!--")) {
            pos_ += 4;
            return SkipPast("-->");
        }
        if (StartsWith("<![CDATA[")) {
            if (open_.empty()) {
                return XbelProblem::Malformed;
            }
            return SkipPast("]]>");
        }
        if (StartsWith("<!")) {
            return Declaration();
        }
        if (StartsWith("</")) {
            return EndTag();
        }
        return StartTag(bookmarks);
    }

    // <!DOCTYPE …>, with an internal subset in brackets that may hold ">" of its own.
    XbelProblem Declaration() {
        if (root_seen_) {
            return XbelProblem::Malformed;
        }
        int depth = 0;
        for (++pos_; pos_ < text_.size(); ++pos_) {
            const char c = text_[pos_];
            if (c == '[') {
                ++depth;
            } else if (c == ']') {
                --depth;
            } else if (c == '>' && depth <= 0) {
                ++pos_;
                return XbelProblem::None;
            }
        }
        return XbelProblem::Truncated;
    }

    XbelProblem EndTag() {
        pos_ += 2;
        const string_view name = Name();
        SkipBlanks();
        if (pos_ >= text_.size()) {
            return XbelProblem::Truncated;
        }
        if (text_[pos_] != '>' || open_.empty() || open_.back() != name) {
            return XbelProblem::Malformed;
        }
        ++pos_;
        open_.pop_back();
        return XbelProblem::None;
    }

    XbelProblem StartTag(std::vector<XbelBookmark>& bookmarks) {
        if (root_seen_ && open_.empty()) {
            return XbelProblem::Malformed;  // a second root element
        }
        ++pos_;
        const string_view name = Name();
        if (pos_ >= text_.size()) {
            return XbelProblem::Truncated;
        }
        if (name.empty()) {
            return XbelProblem::Malformed;
        }
        attributes_.clear();
        bool self_closing = false;
        for (;;) {
            const std::size_t before_blanks = pos_;
            SkipBlanks();
            if (pos_ >= text_.size()) {
                return XbelProblem::Truncated;
            }
            if (text_[pos_] == '>') {
                ++pos_;
                break;
            }
            if (text_[pos_] == '/') {
                if (++pos_ >= text_.size()) {
                    return XbelProblem::Truncated;
                }
                if (text_[pos_] != '>') {
                    return XbelProblem::Malformed;
                }
                ++pos_;
                self_closing = true;
                break;
            }
            if (pos_ == before_blanks) {
                return XbelProblem::Malformed;  // attributes must be set apart by blanks
            }
            if (const XbelProblem problem = TakeAttribute(); problem != XbelProblem::None) {
                return problem;
            }
        }
        if (open_.empty()) {
            root_seen_ = true;
            root_ = name;
        }
        if (name == "bookmark") {
            TakeBookmark(attributes_, bookmarks);
        }
        if (!self_closing) {
            open_.push_back(name);
        }
        return XbelProblem::None;
    }

    XbelProblem TakeAttribute() {
        const string_view name = Name();
        if (name.empty()) {
            return pos_ >= text_.size() ? XbelProblem::Truncated : XbelProblem::Malformed;
        }
        SkipBlanks();
        if (pos_ >= text_.size()) {
            return XbelProblem::Truncated;
        }
        if (text_[pos_] != '=') {
            return XbelProblem::Malformed;
        }
        ++pos_;
        SkipBlanks();
        if (pos_ >= text_.size()) {
            return XbelProblem::Truncated;
        }
        const char quote = text_[pos_];
        if (quote != '"' && quote != '\'') {
            return XbelProblem::Malformed;
        }
        const std::size_t end = text_.find(quote, pos_ + 1);
        if (end == string_view::npos) {
            return XbelProblem::Truncated;
        }
        const string_view raw = text_.substr(pos_ + 1, end - pos_ - 1);
        pos_ = end + 1;
        if (raw.find('<') != string_view::npos) {
            return XbelProblem::Malformed;
        }
        auto value = DecodeReferences(raw);
        if (!value) {
            return XbelProblem::Malformed;
        }
        for (const auto& attribute : attributes_) {
            if (attribute.name == name) {
                return XbelProblem::Malformed;  // the same attribute twice
            }
        }
        attributes_.push_back({name, std::move(*value)});
        return XbelProblem::None;
    }

    string_view text_;
    std::size_t pos_ = 0;
    std::vector<string_view> open_;
    std::vector<Attribute> attributes_;
    string_view root_;
    bool root_seen_ = false;
};

std::string BaseName(string_view path) {
    const std::size_t slash = path.find_last_of('/');
    return std::string(slash == string_view::npos ? path : path.substr(slash + 1));
}

std::string ListMessage(const std::string& list_path, const std::string& reason) {
    return "No se puede leer la lista de archivos recientes:\r\n\r\n" + list_path + "\r\n\r\n" + reason +
           "\r\n\r\nNo se ha registrado ningún acceso; se volverá a intentar en la próxima revisión.";
}

std::string Reason(XbelProblem problem) {
    switch (problem) {
        case XbelProblem::Truncated:
            return "El fichero está vacío o incompleto.";
        case XbelProblem::NotUtf8:
            return "El fichero no está codificado en UTF-8.";
        case XbelProblem::NotXbel:
            return "El fichero no es una lista de marcadores XBEL.";
        default:
            return "El fichero no es un documento XML válido.";
    }
}

}  // namespace

XbelList ParseRecentlyUsedXbel(std::string_view bytes) {
    XbelList list;
    if (bytes.substr(0, 3) == "\xEF\xBB\xBF") {
        bytes.remove_prefix(3);
    }
    if (!IsUtf8(bytes)) {
        list.problem = XbelProblem::NotUtf8;
        return list;
    }
    list.problem = Scanner(bytes).Run(list.bookmarks);
    if (list.problem != XbelProblem::None) {
        list.bookmarks.clear();
    }
    return list;
}

RecentListing XbelRecentFiles::List() {
    RecentListing listing;
    if (list_path_.empty()) {
        listing.outcome = RecentListingOutcome::NoSource;
        return listing;
    }
    const FileContents contents = ReadWholeFile(list_path_);
    if (contents.outcome == ReadOutcome::Missing) {
        listing.outcome = RecentListingOutcome::NoSource;
        return listing;
    }
    if (contents.outcome == ReadOutcome::Unreadable) {
        listing.outcome = RecentListingOutcome::Failed;
        listing.error = ListMessage(list_path_, "No se puede abrir el fichero (" + ErrorText(contents.error) + ").");
        return listing;
    }
    XbelList list = ParseRecentlyUsedXbel(contents.bytes);
    if (list.problem != XbelProblem::None) {
        listing.outcome = RecentListingOutcome::Failed;
        listing.error = ListMessage(list_path_, Reason(list.problem));
        return listing;
    }
    listing.files.reserve(list.bookmarks.size());
    for (XbelBookmark& bookmark : list.bookmarks) {
        RecentFile file;
        file.name = BaseName(bookmark.path);
        file.target = std::move(bookmark.path);
        file.link_path = std::move(bookmark.href);
        file.modified = bookmark.used;
        listing.files.push_back(std::move(file));
    }
    return listing;
}

}  // namespace vt
