#include <algorithm>
#include <cctype>
#include <set>

#include <fmt/format.h>

#include "draft/graph_sink.h"
#include "formats/formats.h"
#include "formats/line_reader.h"

namespace depcompare {

namespace {

/// Returns: where the version of a Go module begins, at its `@`; the size for any other word.
std::size_t versionOfModule(std::string_view word) {
    const std::size_t at = word.rfind('@');
    if (at == std::string_view::npos || at == 0) {
        return word.size();
    }
    const std::string_view module = word.substr(0, at);
    std::string_view version = word.substr(at + 1);
    if (module != "go" && module != "toolchain") {
        if (!version.starts_with('v')) {
            return word.size();
        }
        version.remove_prefix(1);
    } else if (version.starts_with("go")) {
        version.remove_prefix(2);
    }
    const bool hasNumber =
        !version.empty() && std::isdigit(static_cast<unsigned char>(version.front())) != 0;
    return hasNumber ? at : word.size();
}

class EdgeListReader {
  public:
    explicit EdgeListReader(Input& input)
        : lines_(input), sink_(input.name(), input.limits(), [this] { return lines_.line(); }) {}

    GraphDraft read() {
        while (const auto line = lines_.next()) {
            const auto words = wordsOf(*line);
            if (words.empty()) {
                continue;
            }
            if (words.size() != 2 && words.size() != 3) {
                lines_.fail(fmt::format("{} words on a line of an edge list, expected 2 or 3",
                                        words.size()));
            }
            addNode(words[0]);
            addNode(words[1]);
            // To tsort, a pair of equal words is an item without a neighbour.
            if (words.size() == 3 || words[0] != words[1]) {
                const std::size_t edge = sink_.addEdge(words[0], words[1]);
                if (words.size() == 3) {
                    sink_.set(edge, EdgeColumn::type, words[2]);
                }
            }
        }
        return sink_.finish();
    }

  private:
    void addNode(std::string_view word) {
        const NodeNumber node = sink_.addNodeOnce(word);
        const std::size_t at = versionOfModule(word);
        if (at < word.size() && versioned_.insert(node).second) {
            sink_.setName(node, word.substr(0, at));
            sink_.setProperty(node, "version", word.substr(at + 1));
            sink_.addIdCandidate(node, word.substr(0, at));
        }
    }

    LineReader lines_;
    GraphSink sink_;
    std::set<NodeNumber> versioned_;
};

}  // namespace

bool looksLikeEdgeList(std::string_view firstBytes) {
    std::size_t pairs = 0;
    bool areModules = true;
    for (const std::string_view line : wholeLines(firstBytes)) {
        const auto words = wordsOf(line);
        if (!words.empty() && words.size() != 2) {
            return false;
        }
        if (words.size() == 2) {
            ++pairs;
            areModules = areModules && versionOfModule(words[1]) != words[1].size();
        }
    }
    // Any two words are a pair, so that one line alone says too little.
    return pairs > 1 || (pairs == 1 && areModules);
}

GraphDraft readEdgeList(Input& input) {
    return EdgeListReader(input).read();
}

}  // namespace depcompare
