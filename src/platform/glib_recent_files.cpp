#include "platform/glib_recent_files.h"

#include <glib.h>

#include <cstring>
#include <memory>
#include <utility>

#include "accesslog/local_time.h"
#include "store/cp1252.h"
#include "store/error_text.h"

namespace vt {

namespace {

using std::string_view;

struct FreeBookmarkFile {
    void operator()(GBookmarkFile* file) const { g_bookmark_file_free(file); }
};
struct FreeDateTime {
    void operator()(GDateTime* time) const { g_date_time_unref(time); }
};
struct FreeString {
    void operator()(gchar* text) const { g_free(text); }
};
struct FreeStrings {
    void operator()(gchar** texts) const { g_strfreev(texts); }
};
using DateTimePtr = std::unique_ptr<GDateTime, FreeDateTime>;
using StringPtr = std::unique_ptr<gchar, FreeString>;

constexpr const char* kIncomplete = "El fichero está vacío o incompleto.";
constexpr const char* kNotUtf8 = "El fichero no está codificado en UTF-8.";
constexpr const char* kNotXml = "El fichero no es un documento XML válido.";
constexpr const char* kNotXbel = "El fichero no es una lista de marcadores XBEL válida.";

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

// A list cut short by its writer no longer ends with its root's closing tag. GLib calls that and
// a misspelt tag alike a parse error, and takes a list cut right after its XML declaration for
// an empty one, which would let the scan go past files it never saw.
string_view WithoutTrailingBlanks(string_view bytes) {
    const std::size_t last = bytes.find_last_not_of(" \t\r\n");
    return bytes.substr(0, last == string_view::npos ? 0 : last + 1);
}

std::string ReasonFor(const GError& error, string_view bytes) {
    if (error.domain == G_MARKUP_ERROR) {
        switch (error.code) {
            case G_MARKUP_ERROR_EMPTY:
                return kIncomplete;
            case G_MARKUP_ERROR_BAD_UTF8:
                return kNotUtf8;
            case G_MARKUP_ERROR_PARSE:
                return WithoutTrailingBlanks(bytes).ends_with("</xbel>") ? kNotXml : kIncomplete;
            default:
                break;
        }
    }
    return kNotXbel;  // the wrong root, a bookmark without address, a time that is no time...
}

// GLib gives a bookmark that lacks a time the moment of reading instead. A time inside the
// reading is taken for such a stand-in: the list was written before it was read, so no time of
// its own can fall there.
std::optional<std::int64_t> OwnTime(GDateTime* time, GDateTime* reading_start, GDateTime* reading_end) {
    if (time == nullptr ||
        (g_date_time_compare(time, reading_start) >= 0 && g_date_time_compare(time, reading_end) <= 0)) {
        return std::nullopt;
    }
    return g_date_time_to_unix(time);
}

// The local path of a "file:" address on this machine; nothing for any other address or host.
std::optional<std::string> LocalPathOf(const char* uri) {
    gchar* host = nullptr;
    const StringPtr path(g_filename_from_uri(uri, &host, nullptr));
    const StringPtr host_owner(host);
    if (path == nullptr || (host != nullptr && std::strcmp(host, "localhost") != 0)) {
        return std::nullopt;
    }
    return std::string(path.get());
}

std::string BaseName(string_view path) {
    const std::size_t slash = path.find_last_of('/');
    return std::string(slash == string_view::npos ? path : path.substr(slash + 1));
}

std::string ListMessage(const std::string& list_path, const std::string& reason) {
    return "No se puede leer la lista de archivos recientes:\r\n\r\n" + list_path + "\r\n\r\n" + reason +
           "\r\n\r\nNo se ha registrado ningún acceso; se volverá a intentar en la próxima revisión.";
}

}  // namespace

RecentlyUsedList ReadRecentlyUsedList(string_view bytes) {
    RecentlyUsedList list;
    // GLib refuses a byte-order mark, which some writers put in front of UTF-8 anyway.
    if (bytes.starts_with("\xEF\xBB\xBF")) {
        bytes.remove_prefix(3);
    }
    // Checked here as well, so that a list in another encoding is named as such whatever its
    // first bytes make of the XML.
    if (!IsUtf8(bytes)) {
        list.problem = kNotUtf8;
        return list;
    }
    const std::unique_ptr<GBookmarkFile, FreeBookmarkFile> file(g_bookmark_file_new());
    const DateTimePtr reading_start(g_date_time_new_now_utc());
    GError* error = nullptr;
    const bool loaded =
        g_bookmark_file_load_from_data(file.get(), bytes.empty() ? "" : bytes.data(), bytes.size(), &error);
    const DateTimePtr reading_end(g_date_time_new_now_utc());
    if (!loaded) {
        list.problem = error != nullptr ? ReasonFor(*error, bytes) : kNotXbel;
        g_clear_error(&error);
        return list;
    }
    if (const string_view text = WithoutTrailingBlanks(bytes); !text.ends_with("</xbel>") && !text.ends_with("/>")) {
        list.problem = kIncomplete;
        return list;
    }

    gsize count = 0;
    const std::unique_ptr<gchar*, FreeStrings> uris(g_bookmark_file_get_uris(file.get(), &count));
    for (gsize i = 0; i < count; ++i) {
        const char* uri = uris.get()[i];
        auto path = LocalPathOf(uri);
        if (!path) {
            continue;
        }
        auto time_of = [&](GDateTime* (*get)(GBookmarkFile*, const char*, GError**)) {
            return OwnTime(get(file.get(), uri, nullptr), reading_start.get(), reading_end.get());
        };
        std::optional<std::int64_t> used = time_of(g_bookmark_file_get_modified_date_time);
        if (const auto visited = time_of(g_bookmark_file_get_visited_date_time);
            visited && (!used || *visited > *used)) {
            used = visited;
        }
        if (!used) {
            used = time_of(g_bookmark_file_get_added_date_time);
        }
        if (!used) {
            continue;
        }
        RecentFile recent;
        recent.name = BaseName(*path);
        recent.target = std::move(*path);
        recent.link_path = uri;
        recent.modified = LocalFromEpochSeconds(*used);
        list.files.push_back(std::move(recent));
    }
    return list;
}

RecentListing GlibRecentFiles::List() {
    RecentListing listing;
    const FileContents contents =
        list_path_.empty() ? FileContents{ReadOutcome::Missing, {}, {}, {}} : ReadWholeFile(list_path_);
    if (contents.outcome == ReadOutcome::Missing) {
        told_.reset();  // a list that comes back damaged is news again
        listing.outcome = RecentListingOutcome::NoSource;
        return listing;
    }
    if (contents.outcome == ReadOutcome::Unreadable) {
        return Fail({FileModifiedTime(list_path_), 0},
                    "No se puede abrir el fichero (" + ErrorText(contents.error) + ").");
    }
    RecentlyUsedList list = ReadRecentlyUsedList(contents.bytes);
    if (!list.problem.empty()) {
        return Fail({contents.modified, contents.bytes.size()}, list.problem);
    }
    told_.reset();
    listing.files = std::move(list.files);
    return listing;
}

RecentListing GlibRecentFiles::Fail(const Stamp& stamp, const std::string& reason) {
    RecentListing listing;
    listing.outcome = RecentListingOutcome::Failed;
    listing.error = ListMessage(list_path_, reason);
    listing.told_before = told_ == stamp;
    told_ = stamp;
    return listing;
}

}  // namespace vt
