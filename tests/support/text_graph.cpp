#include "text_graph.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <optional>
#include <stdexcept>
#include <utility>
#include <vector>

#include <boost/date_time/posix_time/posix_time.hpp>

#include <dependency/graph/graph_builder.h>
#include <fl/i18n/ustring.h>

namespace dependency::test {

namespace {

using Attributes = std::vector<graph::Property>;

class Line {
  public:
    explicit Line(std::string_view text) : text_(text), rest_(text) { skipSpace(); }

    [[nodiscard]] bool atEnd() const { return rest_.empty(); }
    [[nodiscard]] std::string_view rest() const { return rest_; }

    bool skip(std::string_view token) {
        if (!rest_.starts_with(token)) {
            return false;
        }
        rest_.remove_prefix(token.size());
        skipSpace();
        return true;
    }

    std::string word() {
        const bool quoted = rest_.starts_with('"');
        if (quoted) {
            rest_.remove_prefix(1);
        }
        const auto end =
            quoted ? rest_.find('"') : std::min(rest_.find_first_of(" =[]\"\t"), rest_.size());
        if (end == std::string_view::npos || (!quoted && end == 0)) {
            fail();
        }
        std::string word(rest_.substr(0, end));
        rest_.remove_prefix(end + (quoted ? 1 : 0));
        skipSpace();
        return word;
    }

    Attributes attributes() {
        Attributes attributes;
        if (skip("[")) {
            while (!skip("]")) {
                const std::string key = word();
                if (!skip("=")) {
                    fail();
                }
                attributes.emplace_back(utf16(key), utf16(word()));
            }
        }
        if (!atEnd()) {
            fail();
        }
        return attributes;
    }

    [[noreturn]] void fail() const {
        throw std::invalid_argument("not a line of a graph: " + std::string(text_));
    }

  private:
    void skipSpace() {
        rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t"), rest_.size()));
    }

    std::string_view text_;
    std::string_view rest_;
};

std::optional<std::u16string> taken(Attributes& attributes, std::u16string_view key) {
    const auto found = std::ranges::find(attributes, key, &graph::Property::first);
    if (found == attributes.end()) {
        return std::nullopt;
    }
    std::u16string value = std::move(found->second);
    attributes.erase(found);
    return value;
}

struct DependencyLine {
    std::u16string upstream;
    std::u16string downstream;
    Attributes attributes;
};

class TextGraph {
  public:
    explicit TextGraph(std::string_view text) {
        while (!text.empty()) {
            const auto end = std::min(text.find('\n'), text.size());
            read(text.substr(0, end));
            text.remove_prefix(std::min(end + 1, text.size()));
        }
    }

    std::shared_ptr<const graph::Graph> build() {
        std::map<std::u16string, std::shared_ptr<graph::Node>> nodes;
        for (auto& [id, attributes] : nodes_) {
            const auto type = typeOf(taken(attributes, u"type").value_or(u"file"));
            const auto name = taken(attributes, u"name").value_or(id);
            nodes[id] = builder_.addNode(id, name, type, attributes);
        }
        for (std::size_t i = 0; i < dependencies_.size(); ++i) {
            auto& [upstream, downstream, attributes] = dependencies_[i];
            const auto id = taken(attributes, u"id").value_or(utf16(std::to_string(i + 1)));
            const auto type = typeOf(taken(attributes, u"type").value_or(u"use"));
            const auto from = componentOf(attributes, u"from", u"fromType");
            const auto to = componentOf(attributes, u"to", u"toType");
            builder_.addDependency(id, nodes.at(upstream), nodes.at(downstream), type, from, to);
        }
        return builder_.finish();
    }

  private:
    void read(std::string_view text) {
        Line line(text);
        if (line.atEnd() || line.skip("#")) {
            return;
        }
        if (line.skip("@")) {
            builder_.setTimeStamp(boost::posix_time::time_from_string(std::string(line.rest())));
            return;
        }
        const bool quoted = line.rest().starts_with('"');
        const std::string first = line.word();
        if (first == "graph" && !quoted) {
            for (auto& [key, value] : line.attributes()) {
                builder_.setProperty(key, value);
            }
        } else if (line.skip("->")) {
            const std::u16string downstream = utf16(line.word());
            mention(utf16(first));
            mention(downstream);
            dependencies_.push_back({utf16(first), downstream, line.attributes()});
        } else {
            mention(utf16(first)) = line.attributes();
        }
    }

    Attributes& mention(const std::u16string& id) {
        const auto found =
            std::ranges::find(nodes_, id, &std::pair<std::u16string, Attributes>::first);
        return found != nodes_.end() ? found->second : nodes_.emplace_back(id, Attributes()).second;
    }

    std::shared_ptr<const graph::Type> typeOf(const std::u16string& text) {
        const auto colon = text.find(u':');
        return colon == text.npos ? builder_.type(text, text)
                                  : builder_.type(text.substr(0, colon), text.substr(colon + 1));
    }

    std::shared_ptr<const graph::Component> componentOf(Attributes& attributes,
                                                        std::u16string_view nameKey,
                                                        std::u16string_view typeKey) {
        const auto type = typeOf(taken(attributes, typeKey).value_or(u"part"));
        return builder_.component(taken(attributes, nameKey).value_or(u""), type);
    }

    graph::GraphBuilder builder_;
    std::vector<std::pair<std::u16string, Attributes>> nodes_;
    std::vector<DependencyLine> dependencies_;
};

}  // namespace

std::shared_ptr<const graph::Graph> graphOf(std::string_view text) {
    return TextGraph(text).build();
}

std::shared_ptr<graph::Node> nodeOf(const std::shared_ptr<const graph::Graph>& graph,
                                    std::string_view id) {
    for (const auto& node : graph->getNodes()) {
        if (node->getID() == utf16(id)) {
            return node;
        }
    }
    throw std::out_of_range("no node " + std::string(id));
}

comparisons::ParallelDependencies groupOf(const std::shared_ptr<const graph::Graph>& graph,
                                          std::string_view upstream, std::string_view downstream) {
    for (const auto& group : comparisons::ParallelDependencies::createParallelDependencies(
             graph, nodeOf(graph, upstream))) {
        if (group.downstream->getID() == utf16(downstream)) {
            return group;
        }
    }
    throw std::out_of_range("no group " + std::string(upstream) + " -> " + std::string(downstream));
}

std::shared_ptr<graph::Dependency> dependencyOf(std::string_view line) {
    const auto graph = graphOf(line);
    for (const auto& node : graph->getNodes()) {
        for (const auto& dependency : graph->getDownstreamDependencies(node)) {
            return dependency;
        }
    }
    throw std::out_of_range("no dependency in " + std::string(line));
}

std::u16string utf16(std::string_view text) {
    return fl::i18n::utf8_to_ustring(text);
}

std::string utf8(std::u16string_view text) {
    return fl::i18n::ustring_to_utf8(text);
}

}  // namespace dependency::test
