#include <algorithm>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "draft/graph_sink.h"
#include "formats/formats.h"
#include "formats/line_reader.h"
#include "formats/tree_lines.h"
#include "input/input_error.h"

namespace depcompare {

namespace {

constexpr std::size_t columns = 5;

// Older versions write the path of a project without quotation marks.
bool startsProject(std::string_view line) {
    return line.starts_with("Root project") || line.starts_with("Project '") ||
           line.starts_with("Project :");
}

bool takeEnd(std::string_view& text, std::string_view end) {
    if (!text.ends_with(end)) {
        return false;
    }
    text.remove_suffix(end.size());
    return true;
}

class GradleReader final : LineGraphReader {
  public:
    explicit GradleReader(Input& input) : LineGraphReader(input) {
        sink_.foldEqualEdges();  // modules repeat what others have
    }

    GraphDraft read() {
        return readLines([this](std::string_view line) { readLine(line); },
                         [this] {
                             if (project_.empty()) {
                                 lines_.fail("no project, as gradle dependencies writes it");
                             }
                         });
    }

  private:
    void readLine(std::string_view line) {
        const auto [depth, text] = treeLine(line, columns);
        if (depth != 0) {
            addLine(depth, text);
        } else if (line.starts_with("FAILURE: ")) {
            lines_.fail(fmt::format("the build failed: {}", inQuotes(line)));
        } else if (startsProject(line)) {
            startProject(line);
        } else if (!line.empty()) {
            // "compileClasspath - Compile classpath for source set 'main'."
            configuration_ = line.substr(0, line.find(' '));
            path_.clear();
        }
    }

    void startProject(std::string_view line) {
        // A dependency on a project is written with the project's path, the root's being ":".
        const bool isRoot = line.starts_with("Root");
        line.remove_prefix(
            std::min(line.size(), std::string_view(isRoot ? "Root project " : "Project ").size()));
        const bool isQuoted = line.starts_with('\'');
        line.remove_prefix(isQuoted ? 1 : 0);
        const std::string name(
            isRoot && !isQuoted ? "" : line.substr(0, line.find(isQuoted ? '\'' : ' ')));
        project_ = "project " + (isRoot ? ":" : name);
        const NodeNumber node = sink_.addNodeOnce(project_);
        if (!name.empty()) {
            sink_.setName(node, name);
        }
    }

    void addLine(std::size_t depth, std::string_view text) {
        if (project_.empty() || configuration_.empty() || depth > path_.size() + 1) {
            lines_.fail("branch without a project, a configuration or a parent");
        }
        path_.resize(depth - 1);
        takeEnd(text, " (*)");
        // A constraint is not a dependency; a configuration that is not resolved repeats others.
        if (text.ends_with(" (c)") || text.ends_with(" (n)")) {
            path_.emplace_back();
            return;
        }
        path_.push_back(addNode(text));
        const std::string& upstream = depth == 1 ? project_ : path_[depth - 2];
        if (!upstream.empty()) {
            sink_.set(sink_.addEdge(upstream, path_.back()), EdgeColumn::type, configuration_);
        }
    }

    std::string addNode(std::string_view text) {
        const bool failed = takeEnd(text, " FAILED");
        constexpr std::string_view arrow = " -> ";
        const std::size_t replaced = text.find(arrow);
        std::string_view chosen =
            replaced == text.npos ? text : text.substr(replaced + arrow.size());
        const std::string_view asked = text.substr(0, replaced);
        if (asked.starts_with("project ") && replaced == text.npos) {
            std::string id(asked);
            sink_.addNodeOnce(id);
            return id;
        }
        if (chosen.starts_with("project ")) {
            sink_.addNodeOnce(chosen);
            return std::string(chosen);
        }
        // "g:a:1.0", "g:a:1.0 -> 1.1", "g:a -> 1.1", "g:a:1.0 -> h:b:2.0"
        const std::string_view module = chosen.find(':') == chosen.npos ? asked : chosen;
        const std::size_t group = module.find(':');
        if (group == module.npos) {
            lines_.fail(fmt::format("not a dependency that gradle writes: {}", inQuotes(text)));
        }
        const std::size_t name = module.find(':', group + 1);
        const std::string bare(module.substr(0, name));
        const std::string version(chosen.find(':') == chosen.npos ? chosen
                                  : name == module.npos           ? std::string_view()
                                                                  : module.substr(name + 1));
        std::string id = version.empty() ? bare : fmt::format("{}:{}", bare, version);
        if (const auto node = sink_.addNewNode(id)) {
            sink_.setName(*node, bare);
            sink_.addIdCandidate(*node, bare);
            if (!version.empty()) {
                sink_.setProperty(*node, "version", version);
            }
        }
        if (failed) {
            sink_.setType(sink_.addNodeOnce(id), "unresolved");
        }
        return id;
    }

    std::string project_;
    std::string configuration_;
    std::vector<std::string> path_;  // the dependencies to the last line; empty: left out
};

}  // namespace

bool looksLikeGradle(std::string_view firstBytes) {
    bool hasProject = false;
    for (const std::string_view line : wholeLines(firstBytes)) {
        hasProject |= startsProject(line);
        if (hasProject && treeLine(line, columns).depth == 1) {
            return true;
        }
    }
    return false;
}

GraphDraft readGradle(Input& input) {
    return GradleReader(input).read();
}

}  // namespace depcompare
