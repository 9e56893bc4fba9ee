#include "draft/edit_ids.h"

#include <algorithm>
#include <span>
#include <stdexcept>
#include <unordered_map>
#include <utility>

#include <fmt/format.h>
#include <re2/re2.h>

#include "draft/marked_id.h"
#include "draft/seeded_hash.h"
#include "input/input_error.h"

namespace depcompare {

namespace {

/// Takes as much of the text as is before the next separator without a backslash; one with a
/// backslash is part of it.
std::string takePart(std::string_view& text, char separator) {
    std::string part;
    while (!text.empty() && text.front() != separator) {
        if (text.front() == '\\' && text.size() > 1) {
            part += text[1] == separator ? "" : "\\";
            text.remove_prefix(1);
        }
        part += text.front();
        text.remove_prefix(1);
    }
    if (text.empty()) {
        throw std::invalid_argument("not s/PATTERN/TEXT/");
    }
    text.remove_prefix(1);
    return part;
}

struct PackageURL {
    std::string_view package;
    std::string_view version;     // with its @
    std::string_view qualifiers;  // with the question mark
    std::string_view subpath;     // with the number sign
};

PackageURL partsOf(std::string_view url) {
    const auto cutFrom = [&](char mark) {
        const std::size_t place = url.find(mark);
        const auto tail = place == std::string_view::npos ? std::string_view() : url.substr(place);
        url.remove_suffix(tail.size());
        return tail;
    };
    PackageURL parts;
    parts.subpath = cutFrom('#');
    parts.qualifiers = cutFrom('?');
    const std::size_t version = url.rfind('@');
    const std::size_t name = url.rfind('/');
    const bool hasVersion =
        version != std::string_view::npos && (name == std::string_view::npos || version > name + 1);
    parts.package = url.substr(0, hasVersion ? version : url.size());
    parts.version = url.substr(parts.package.size());
    return parts;
}

struct VersionedShape {
    re2::RE2 pattern;
    const char* rest;  // what is left of it
};

std::span<const VersionedShape> versionedShapes() {
    static const VersionedShape shapes[] = {
        // Cargo: "path+file:///folder#1.2", "name 1.2 (registry+url)"
        {R"(((?:path|git|registry|sparse)\+.*)#\d[^/@#]*)", R"(\1)"},
        {R"((\S+) \d\S* (\(\S*\)))", R"(\1 \2)"},
        // npm, Go and Cargo: "@scope/name@1.2", "host/module@v1.2", "registry+url#name@1.2"
        {R"((.+)@(?:v|go)?\d[^/@]*)", R"(\1)"},
        // Maven and Gradle: "group:name:1.2", "group:name:jar:tests:1.2:test"
        {R"(([^:/\s]+:[^:/\s]+(?::[^:/\s]+)*?):[vr]?\d[^:/\s]*)"
         R"((:(?:compile|provided|runtime|test|system|import))?)",
         R"(\1\2)"},
        // Conan: "name/1.2", "name/1.2@user/channel", "name/1.2#revision (host)"
        {R"(([a-z0-9_][a-z0-9_+.-]*)/\d+(?:\.\d+)+[a-z]?( \((?:host|build)\))?)", R"(\1\2)"},
        {R"(([a-z0-9_][a-z0-9_+.-]*)/(?:[a-z]+\.)?v?\d[^/@#\s]*(@[^/\s]+/[^/#\s]+))"
         R"(( \((?:host|build)\))?)",
         R"(\1\2\3)"},
        {R"(([a-z0-9_][a-z0-9_+.-]*)/(?:[a-z]+\.)?v?\d[^/@#\s]*(@[^/\s]+/[^/#\s]+)?#\S+)"
         R"(( \((?:host|build)\))?)",
         R"(\1\2\3)"},
    };
    return shapes;
}

std::string_view withoutPrefix(std::string_view id, const std::vector<std::string>& prefixes) {
    for (std::string_view prefix : prefixes) {
        while (prefix.ends_with('/') || prefix.ends_with('\\')) {
            prefix.remove_suffix(1);
        }
        const std::string_view rest = id.starts_with(prefix) ? id.substr(prefix.size()) : "";
        if (rest.size() > 1 && (rest.front() == '/' || rest.front() == '\\')) {
            return rest.substr(1);
        }
    }
    return id;
}

std::string edited(std::string_view id, const IdEdits& edits) {
    std::string text(withoutPrefix(id, edits.prefixes));
    if (edits.withoutVersion) {
        text = withoutVersion(text);
    }
    for (const IdReplacement& replacement : edits.replacements) {
        replacement.apply(text);
    }
    return text;
}

void editNodeIDs(GraphDraft& draft, const IdEdits& edits) {
    std::unordered_map<std::string_view, std::string_view, SeededHash>
        owners;  // IDs before, by those after
    owners.reserve(draft.nodes.size());
    for (NodeDraft& node : draft.nodes) {
        const std::string_view before = node.id;
        const std::string after = edited(before, edits);
        if (holdsMark(after)) {
            throw InputError(draft.source, 0, markProblem(after));
        }
        if (after != before) {
            node.id = draft.store.keep(after);
            node.name = node.name == before ? node.id : node.name;
        }
        const auto [owner, isNew] = owners.emplace(node.id, before);
        if (!isNew) {
            throw InputError(draft.source, 0,
                             fmt::format("nodes {} and {} would both have the ID {}",
                                         inQuotes(owner->second, mostRepeatedBytes / 3),
                                         inQuotes(before, mostRepeatedBytes / 3),
                                         inQuotes(after, mostRepeatedBytes / 3)));
        }
    }
}

}  // namespace

IdReplacement::IdReplacement(std::string_view text) {
    const bool begins = text.size() > 1 && text.front() == 's' && text[1] != '\\';
    const char separator = begins ? text[1] : '/';
    text.remove_prefix(begins ? 2 : text.size());
    const std::string pattern = takePart(text, separator);
    text_ = takePart(text, separator);
    if (text.find_first_not_of("gi") != std::string_view::npos) {
        throw std::invalid_argument("after s/PATTERN/TEXT/ there may be g and i only");
    }
    everyMatch_ = text.find('g') != std::string_view::npos;
    re2::RE2::Options options(re2::RE2::Quiet);
    options.set_case_sensitive(text.find('i') == std::string_view::npos);
    pattern_ = std::make_shared<const re2::RE2>(pattern, options);
    std::string problem = pattern_->error();
    if (!pattern_->ok() || !pattern_->CheckRewriteString(text_, &problem)) {
        throw std::invalid_argument(problem);
    }
}

void IdReplacement::apply(std::string& id) const {
    if (everyMatch_) {
        re2::RE2::GlobalReplace(&id, *pattern_, text_);
    } else {
        re2::RE2::Replace(&id, *pattern_, text_);
    }
}

void editNodeIDs(std::array<GraphDraft, 2>& drafts, const IdEdits& edits) {
    if (edits.prefixes.empty() && !edits.withoutVersion && edits.replacements.empty()) {
        return;
    }
    for (GraphDraft& draft : drafts) {
        editNodeIDs(draft, edits);
    }
}

std::string withoutVersion(std::string_view id) {
    if (id.starts_with("pkg:")) {
        const PackageURL url = partsOf(id);
        return std::string(url.package).append(url.qualifiers).append(url.subpath);
    }
    for (const auto& [pattern, rest] : versionedShapes()) {
        std::string text;
        re2::StringPiece groups[4];
        const re2::StringPiece whole(id.data(), id.size());
        if (pattern.Match(whole, 0, id.size(), re2::RE2::ANCHOR_BOTH, groups, 4) &&
            pattern.Rewrite(&text, rest, groups, pattern.NumberOfCapturingGroups() + 1)) {
            return text;
        }
    }
    return std::string(id);
}

std::string barePackageURL(std::string_view packageURL) {
    const PackageURL url = partsOf(packageURL);
    return std::string(url.package).append(url.subpath);
}

}  // namespace depcompare
