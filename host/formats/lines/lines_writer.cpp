#include "formats/lines/lines_writer.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

#include <fl/i18n/ustring.h>

#include "draft/marked_id.h"
#include "output/visible_text.h"

namespace depcompare {

namespace {

using dependency::graph::Component;
using dependency::graph::Dependency;
using dependency::graph::Graph;
using dependency::graph::Node;

std::string quotedText(std::u16string_view text) {
    std::u16string escaped;
    for (const char16_t unit : text) {
        if (unit == u'"' || unit == u'\\') {
            escaped += u'\\';
        }
        escaped += unit;
    }
    return '"' + fl::i18n::ustring_to_utf8(visible(escaped)) + '"';
}

/// Returns: the text as one word, which no other text has.
std::string word(std::u16string_view text) {
    constexpr std::u16string_view special = u" \"\\=[]\u00A0\u3000";
    const bool isPlain = !text.empty() && text != u"->" &&
                         text.find_first_of(special) == text.npos &&
                         withoutCommand(visible(text)) == text;
    return isPlain ? fl::i18n::ustring_to_utf8(text) : quotedText(text);
}

std::string idOf(const Node& node) {
    return word(idAsRead(node.getID()));
}

void writeNode(const Node& node, Output& output) {
    output.write(idOf(node));
    if (node.getName() != idAsRead(node.getID())) {
        output.print(" {}", quotedText(node.getName()));
    }
    output.print(" [{}]", word(node.getType()->getID()));
    for (const auto& key : node.getPropertyKeys()) {
        output.print(" {}={}", word(key), word(node.getProperty(key)));
    }
    output.write("\n");
}

void writeDependency(const Dependency& dependency, Output& output) {
    output.print("{} -> {} [{}]", idOf(*dependency.getUpstreamNode()),
                 idOf(*dependency.getDownstreamNode()), word(dependency.getType()->getID()));
    const std::pair<std::string_view, const Component&> ends[] = {
        {"from", *dependency.getUpstreamComponent()}, {"to", *dependency.getDownstreamComponent()}};
    for (const auto& [end, component] : ends) {
        if (!component.getName().empty()) {
            output.print(" {}={}", end, word(component.getName()));
        }
        if (!component.getType()->getID().empty()) {
            output.print(" {}-type={}", end, word(component.getType()->getID()));
        }
    }
    output.write("\n");
}

}  // namespace

void writeLines(const Graph& graph, Output& output) {
    for (const auto& key : graph.getPropertyKeys()) {
        output.print("graph {}={}\n", word(key), word(graph.getProperty(key)));
    }
    for (const auto& node : graph.getNodes()) {
        writeNode(*node, output);
        for (const auto& dependency : graph.getDownstreamDependencies(node)) {
            writeDependency(*dependency, output);
        }
    }
}

}  // namespace depcompare
