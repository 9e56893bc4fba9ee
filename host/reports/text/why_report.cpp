#include "reports/text/why_report.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <stdexcept>
#include <string_view>
#include <utility>

#include <dependency/insight/paths.h>
#include <fl/i18n/ustring.h>
#include <fmt/format.h>
#include <fmt/ranges.h>

#include "output/visible_text.h"

namespace depcompare {

namespace {

using insight::LinkGraph;
using insight::Number;
using insight::Side;

std::string shownID(const LinkGraph& graph, Number node) {
    return fl::i18n::ustring_to_utf8(visible(graph.id(node)));
}

/// Returns: text of a graph with which a line begins.
std::string lineOf(std::u16string_view text) {
    return fl::i18n::ustring_to_utf8(withoutCommand(visible(text)));
}

Number findEnd(const LinkGraph& graph, const std::string& text, std::u16string_view separator) {
    constexpr std::size_t mostListed = 10;
    const auto found = insight::findNodes(graph, fl::i18n::utf8_to_ustring(text), separator);
    if (found.size() == 1) {
        return found.front();
    }
    if (found.empty()) {
        throw std::runtime_error(fmt::format("--why: no node has an ID that ends in {}", text));
    }
    std::vector<std::string> ids;
    for (const Number node : std::span(found).first(std::min(found.size(), mostListed))) {
        ids.push_back(shownID(graph, node));
    }
    throw std::runtime_error(fmt::format("--why: {} nodes have IDs that end in {}: {}{}",
                                         found.size(), text, fmt::join(ids, ", "),
                                         found.size() > mostListed ? ", ..." : ""));
}

bool isOn(const LinkGraph& graph, Side side, insight::Link link) {
    const auto* const state = graph.find(link);
    return state != nullptr && state->on(side);
}

bool lacksLink(const LinkGraph& graph, Side side, std::span<const Number> path) {
    for (std::size_t i = 1; i < path.size(); ++i) {
        if (!isOn(graph, side, {path[i - 1], path[i]})) {
            return true;
        }
    }
    return false;
}

void writePath(const LinkGraph& graph, Side side, std::span<const Number> path,
               const TextStyle& style, Output& output) {
    output.print("  {}\n", lineOf(graph.id(path.front())));
    for (std::size_t i = 1; i < path.size(); ++i) {
        const std::string step = "-> " + shownID(graph, path[i]);
        if (isOn(graph, insight::otherSide(side), {path[i - 1], path[i]})) {
            output.print("  {}\n", step);
        } else {
            const bool isLeft = side == Side::left;
            output.print("{}{} {}{}\n",
                         !style.colours ? ""
                         : isLeft       ? "\x1b[31m"
                                        : "\x1b[32m",
                         isLeft ? '-' : '+', step, style.colours ? "\x1b[0m" : "");
        }
    }
}

}  // namespace

Why findWhy(const LoadedPair& inputs, const InsightOptions& options,
            const std::array<std::string, 2>& ends) {
    Why why{.graph = linkGraph(inputs, options), .paths = {}};
    const std::u16string_view separator = options.areas.separator;
    const Number from = findEnd(why.graph, ends[0], separator);
    const Number to = findEnd(why.graph, ends[1], separator);
    for (const Side side : insight::sides) {
        auto& path = why.paths[side];
        path = insight::findPath(why.graph, side, from, to);
        why.differs = why.differs || lacksLink(why.graph, insight::otherSide(side), path);
    }
    return why;
}

void writeWhy(const Why& why, const std::array<std::string, 2>& names, const TextStyle& style,
              Output& output) {
    for (const Side side : insight::sides) {
        const auto& path = why.paths[side];
        const std::string name =
            lineOf(fl::i18n::utf8_to_ustring(names[side == Side::left ? 0 : 1]));
        if (path.empty()) {
            output.print("{}: no path\n", name);
        } else {
            output.print("{}: {} {}\n", name, path.size() - 1, path.size() == 2 ? "link" : "links");
            writePath(why.graph, side, path, style, output);
        }
    }
}

}  // namespace depcompare
