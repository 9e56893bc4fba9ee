#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "formats/formats.h"
#include "formats/json_records.h"
#include "formats/line_reader.h"
#include "formats/tree_lines.h"
#include "input/input_error.h"

namespace depcompare {

namespace {

using nlohmann::json;

struct Artifact {
    std::string group = {};
    std::string name = {};
    std::string type = {};
    std::string classifier = {};
    std::string version = {};
    std::string scope = {};
};

/// Returns: the ID of the artifact, which is a node of the graph from now on.
std::string addArtifact(const Artifact& artifact, GraphSink& sink) {
    const auto& [group, name, type, classifier, version, scope] = artifact;
    const std::string bare = fmt::format("{}:{}", group, name);
    std::string kind = fmt::format("{}:{}", bare, type);
    if (!classifier.empty()) {
        kind += ":" + classifier;
    }
    std::string id = fmt::format("{}:{}", kind, version);
    if (const auto node = sink.addNewNode(id)) {
        sink.setName(*node, bare);
        sink.addIdCandidate(*node, bare);
        sink.addIdCandidate(*node, kind);
        sink.setProperty(*node, "version", version);
        sink.setProperty(*node, "type", type);
        if (!classifier.empty()) {
            sink.setProperty(*node, "classifier", classifier);
        }
    }
    return id;
}

std::vector<std::string> partsOf(std::string_view coordinates) {
    std::vector<std::string> parts(1);
    for (const char letter : coordinates) {
        if (letter == ':') {
            parts.emplace_back();
        } else {
            parts.back() += letter;
        }
    }
    return parts;
}

/// Reads the tree that is printed, or the build's log around several of them.
class MavenTextReader final : LineGraphReader {
  public:
    explicit MavenTextReader(Input& input) : LineGraphReader(input) {
        sink_.foldEqualEdges();  // modules repeat what others have
    }

    GraphDraft read() {
        return readLines([this](std::string_view line) { readLine(line); }, [] {});
    }

  private:
    static constexpr std::string_view information = "[INFO] ";

    void readLine(std::string_view line) {
        if (line.starts_with("[ERROR]")) {
            lines_.fail(fmt::format("the build failed: {}", inQuotes(line)));
        }
        const bool isLog = line.starts_with('[') || line.starts_with("Download");
        if (line.starts_with(information)) {
            line.remove_prefix(information.size());
        }
        const auto [depth, text] = treeLine(line, 3);
        const bool isRoot = depth == 0 && line.find(' ') == line.npos &&
                            (partsOf(line).size() == 4 || partsOf(line).size() == 5);
        if (depth != 0 || isRoot) {
            addLine(depth, text);
        } else if (!isLog && line.find_first_not_of(' ') != line.npos) {
            lines_.fail(fmt::format("not a line of mvn dependency:tree: {}", inQuotes(line)));
        }
    }

    void addLine(std::size_t depth, std::string_view text) {
        if (depth > path_.size()) {
            lines_.fail("branch without a parent");
        }
        path_.resize(depth);
        const Artifact artifact = artifactOf(text, depth == 0);
        path_.push_back(addArtifact(artifact, sink_));
        if (depth != 0) {
            std::string type = artifact.scope;
            if (text.find("(optional") != text.npos) {
                type += " optional";
            }
            sink_.set(sink_.addEdge(path_[depth - 1], path_[depth]), EdgeColumn::type, type);
        }
    }

    /// `-Dverbose` puts what it leaves out in parentheses: `(g:a:jar:1:compile - omitted ...)`.
    [[nodiscard]] Artifact artifactOf(std::string_view text, bool isRoot) const {
        const std::string_view whole = text;
        if (text.starts_with('(')) {
            text = text.substr(1, text.find_last_not_of(") "));
        }
        auto parts = partsOf(text.substr(0, text.find(' ')));
        const std::size_t least = isRoot ? 4 : 5;
        if (parts.size() != least && parts.size() != least + 1) {
            lines_.fail(fmt::format("not the coordinates of an artifact: {}", inQuotes(whole)));
        }
        Artifact artifact{.group = parts[0], .name = parts[1], .type = parts[2]};
        if (parts.size() == least + 1) {
            artifact.classifier = parts[3];
            parts.erase(parts.begin() + 3);
        }
        artifact.version = parts[3];
        artifact.scope = isRoot ? "" : parts[4];
        constexpr std::string_view conflict = "omitted for conflict with ";
        if (const std::size_t begin = text.find(conflict); begin != text.npos) {
            const std::string_view chosen = text.substr(begin + conflict.size());
            artifact.version = chosen.substr(0, chosen.find_first_of(" ;)"));
        }
        return artifact;
    }

    std::vector<std::string> path_;  // the artifacts from the root to the last line
};

class MavenJsonReader final : public JsonGraphReader {
  public:
    explicit MavenJsonReader(Input& input) : JsonGraphReader(input) {
        sink_.foldEqualEdges();  // verbose trees repeat parts
    }

    GraphDraft read() {
        parse({.records = {objectsAt({})},
               .required = {"artifactId"},
               .known = {"groupId", "version", "type", "scope", "classifier", "optional",
                         "children"}});
        return sink_.finish();
    }

    void take(const JsonPath& /*path*/, const json& value) override { addTree(value); }

  private:
    std::string addTree(const json& value) {
        const Artifact artifact{.group = memberText(value, "groupId"),
                                .name = memberText(value, "artifactId"),
                                .type = memberText(value, "type"),
                                .classifier = memberText(value, "classifier"),
                                .version = memberText(value, "version"),
                                .scope = {}};
        if (artifact.group.empty() || artifact.name.empty()) {
            bytes_.fail("artifact without \"groupId\" or \"artifactId\"");
        }
        std::string id = addArtifact(artifact, sink_);
        for (const json& child : elementsOf(value, "children", sink_)) {
            std::string type = memberText(child, "scope");
            if (memberText(child, "optional") == "true") {
                type += " optional";
            }
            const std::size_t edge = sink_.addEdge(id, addTree(child));
            sink_.set(edge, EdgeColumn::type, type);
        }
        return id;
    }
};

}  // namespace

bool looksLikeMavenTree(std::string_view firstBytes) {
    bool hasBranch = false;
    bool hasRoot = false;
    for (std::string_view line : wholeLines(firstBytes)) {
        if (line.starts_with("[INFO] ")) {
            line.remove_prefix(std::string_view("[INFO] ").size());
        }
        const auto [depth, text] = treeLine(line, 3);
        const bool isArtifact = std::ranges::count(text, ':') >= 3;
        hasRoot |= depth == 0 && isArtifact && line.find(' ') == line.npos;
        hasBranch |= depth != 0 && isArtifact && hasRoot;
    }
    return hasBranch;
}

GraphDraft readMavenTree(Input& input) {
    return MavenTextReader(input).read();
}

bool looksLikeMavenJson(const JsonShape& shape) {
    return shape.has({"groupId"}) && shape.has({"artifactId"});
}

GraphDraft readMavenJson(Input& input) {
    return MavenJsonReader(input).read();
}

}  // namespace depcompare
