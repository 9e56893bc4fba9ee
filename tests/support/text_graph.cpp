#include "text_graph.h"

#include <algorithm>
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
using Tokens = std::vector<std::string>;

// The words of a line, quoted ones with their quotes, and the signs between them.
Tokens tokensOf(std::string_view line) {
    Tokens tokens;
    for (;;) {
        line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
        if (line.empty()) {
            return tokens;
        }
        std::size_t length = 1;
        if (line[0] == '"') {
            length = line.find('"', 1) + 1;
        } else if (std::string_view("[]=").find(line[0]) == std::string_view::npos) {
            length = std::min(line.find_first_of(" \t[]=\""), line.size());
        }
        tokens.emplace_back(line.substr(0, length));
        line.remove_prefix(length);
    }
}

std::u16string wordOf(const std::string& token) {
    return utf16(token[0] == '"' ? token.substr(1, token.size() - 2) : token);
}

// Requires: the tokens from there on are none or "[", "key", "=", "value", ..., "]".
Attributes attributesOf(const Tokens& tokens, std::size_t at) {
    Attributes attributes;
    if (at < tokens.size() && (tokens[at] != "[" || (tokens.size() - at) % 3 != 2)) {
        throw std::invalid_argument("not the attributes of a line of a graph: " + tokens[at]);
    }
    for (++at; at + 1 < tokens.size(); at += 3) {
        attributes.emplace_back(wordOf(tokens[at]), wordOf(tokens[at + 2]));
    }
    return attributes;
}

std::optional<std::u16string> taken(Attributes& attributes, std::u16string_view key) {
    const auto found = std::ranges::find(attributes, key, &graph::Property::first);
    if (found == attributes.end()) {
        return std::nullopt;
    }
    std::u16string value = std::move(found->second);
    attributes.erase(found);
    return value;
}

using NodeLine = std::pair<std::u16string, Attributes>;

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
    void read(std::string_view line) {
        const Tokens tokens = tokensOf(line);
        if (tokens.empty() || tokens[0][0] == '#') {
            return;
        }
        if (tokens[0] == "@") {
            builder_.setTimeStamp(
                boost::posix_time::time_from_string(tokens.at(1) + ' ' + tokens.at(2)));
        } else if (tokens[0] == "graph") {
            for (auto& [key, value] : attributesOf(tokens, 1)) {
                builder_.setProperty(key, value);
            }
        } else if (tokens.size() > 2 && tokens[1] == "->") {
            dependencies_.push_back(
                {wordOf(tokens[0]), wordOf(tokens[2]), attributesOf(tokens, 3)});
            mention(wordOf(tokens[0]));
            mention(wordOf(tokens[2]));
        } else {
            mention(wordOf(tokens[0])) = attributesOf(tokens, 1);
        }
    }

    Attributes& mention(const std::u16string& id) {
        const auto found = std::ranges::find(nodes_, id, &NodeLine::first);
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
    std::vector<NodeLine> nodes_;
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
