#include <dependency/insight/areas.h>

#include <algorithm>
#include <array>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

#include "id_components.h"

namespace dependency::insight {

namespace {

constexpr std::size_t manyAreas = 60;
constexpr std::size_t mostExamples = 3;
constexpr std::u16string_view top = u".";

// The same keys in another order are a difference, as in a comparison.
bool propertiesEqual(const graph::Node& a, const graph::Node& b) {
    const auto keys = a.getPropertyKeys();
    return keys == b.getPropertyKeys() && std::ranges::all_of(keys, [&](const auto& key) {
               return a.getProperty(key) == b.getProperty(key);
           });
}

class AreaFinder {
  public:
    AreaFinder(const LinkGraph& graph, const AreaOptions& options)
        : graph_(graph), options_(options) {
        if (options.separator.empty() || options.depth == 0) {
            throw std::invalid_argument("areas need a separator and a depth");
        }
    }

    Areas find() {
        if (options_.property) {
            placeNodes([&](Number node, Side side) { return propertyArea(node, side); });
        } else if (options_.depth) {
            placeByDepth(*options_.depth);
        } else {
            for (result_.depth = 4; result_.depth > 1;) {
                placeByDepth(result_.depth - 1);
                if (names_.size() <= manyAreas) {
                    break;
                }
            }
        }
        sortAreas();
        countFiles();
        countLinks();
        return std::move(result_);
    }

  private:
    struct CrossLink {
        Number from = 0;
        Number to = 0;
        Edit edit = Edit::common;
        Link link;
    };

    // Returns: nothing for a node without area.
    [[nodiscard]] std::optional<std::u16string> propertyArea(Number node, Side side) const {
        const auto& content = *graph_.node(node, side);
        const auto keys = content.getPropertyKeys();
        if (std::ranges::find(keys, *options_.property) != keys.end()) {
            return content.getProperty(*options_.property);
        }
        return graph_.isFile(node, side) ? std::optional(std::u16string(top)) : std::nullopt;
    }

    void placeByDepth(std::size_t depth) {
        result_.depth = depth;
        placeNodes([&](Number node, Side side) -> std::optional<std::u16string_view> {
            if (!graph_.isFile(node, side)) {
                return std::nullopt;
            }
            const auto path = folder(graph_.id(node), options_.separator);
            const auto area = leadingComponents(path, options_.separator, depth);
            return area.empty() ? top : area;
        });
    }

    // Names areas by first use.
    template <class AreaName>
    void placeNodes(AreaName areaName) {
        names_.clear();
        std::map<std::u16string, Number> numbers;
        std::u16string name;
        for (const Side side : sides) {
            areaOf_[side].assign(graph_.nodeCount(), none);
        }
        for (Number node = 0; node < graph_.nodeCount(); ++node) {
            for (const Side side : sides) {
                if (!graph_.has(node, side)) {
                    continue;
                }
                if (const auto area = areaName(node, side)) {
                    // Neighbours by ID are often in one area.
                    if (names_.empty() || name != *area) {
                        name = *area;
                        const auto fresh = static_cast<Number>(names_.size());
                        const auto [found, added] = numbers.try_emplace(name, fresh);
                        if (added) {
                            names_.push_back(name);
                        }
                        last_ = found->second;
                    }
                    areaOf_[side][node] = last_;
                }
            }
        }
    }

    void sortAreas() {
        std::vector<Number> order(names_.size());
        for (Number i = 0; i < order.size(); ++i) {
            order[i] = i;
        }
        std::ranges::sort(order, {},
                          [&](Number area) -> const std::u16string& { return names_[area]; });
        std::vector<Number> rank(order.size());
        result_.areas.resize(order.size());
        for (Number i = 0; i < order.size(); ++i) {
            rank[order[i]] = i;
            result_.areas[i].name = names_[order[i]];
        }
        for (const Side side : sides) {
            for (Number& area : areaOf_[side]) {
                area = area == none ? none : rank[area];
            }
        }
    }

    void countFiles() {
        for (Number node = 0; node < graph_.nodeCount(); ++node) {
            const BySide<bool> isFile{graph_.isFile(node, Side::left),
                                      graph_.isFile(node, Side::right)};
            for (const Side side : sides) {
                if (!isFile[side]) {
                    continue;
                }
                Area& area = result_.areas[areaOf_[side][node]];
                ++area.files[side];
                if (!isFile[otherSide(side)]) {
                    ++(side == Side::left ? area.removed : area.added);
                } else if (side == Side::right &&
                           !propertiesEqual(*graph_.node(node, Side::left),
                                            *graph_.node(node, Side::right))) {
                    ++area.changed;
                }
            }
        }
    }

    void countLinks() {
        for (Number node = 0; node < graph_.nodeCount(); ++node) {
            for (const LinkEnd& end : graph_.from(node)) {
                countLink({node, end.node}, end.state);
            }
        }
        addLinks();
    }

    void countLink(Link link, const LinkState& state) {
        BySide<std::pair<Number, Number>> ends{{none, none}, {none, none}};
        for (const Side side : sides) {
            const Number from = areaOf_[side][link.upstream];
            const Number to = areaOf_[side][link.downstream];
            if (!state.on(side) || from == none || to == none) {
                continue;
            }
            if (from == to) {
                ++result_.areas[from].inside[side];
            } else {
                ++result_.areas[from].out[side];
                ++result_.areas[to].in[side];
                ends[side] = {from, to};
            }
        }
        if (ends.left == ends.right) {
            if (ends.left.first != none) {
                ++unchanged_[keyOf(ends.left)];
            }
            return;
        }
        if (ends.left.first != none) {
            crossLinks_.push_back({ends.left.first, ends.left.second, Edit::removed, link});
        }
        if (ends.right.first != none) {
            crossLinks_.push_back({ends.right.first, ends.right.second, Edit::added, link});
        }
    }

    static std::uint64_t keyOf(std::pair<Number, Number> areas) {
        return std::uint64_t{areas.first} << 32U | areas.second;
    }

    void addLinks() {
        std::ranges::sort(crossLinks_, {}, [](const CrossLink& cross) {
            return std::tuple(cross.from, cross.to, cross.edit, cross.link);
        });
        for (const CrossLink& cross : crossLinks_) {
            auto& links = result_.links;
            if (links.empty() || links.back().from != cross.from || links.back().to != cross.to) {
                const auto common = unchanged_.find(keyOf({cross.from, cross.to}));
                const std::size_t count = common == unchanged_.end() ? 0 : common->second;
                links.push_back(
                    {.from = cross.from, .to = cross.to, .links = {count, count}, .examples = {}});
            }
            AreaLink& link = links.back();
            if (cross.edit == Edit::added) {
                ++link.added;
                ++link.links.right;
            } else {
                ++link.removed;
                ++link.links.left;
            }
            if (link.examples.size() < mostExamples) {
                link.examples.push_back(cross.link);
            }
        }
    }

    const LinkGraph& graph_;
    const AreaOptions& options_;
    Areas result_;
    std::vector<std::u16string> names_;
    Number last_ = 0;
    BySide<std::vector<Number>> areaOf_;  // by node; `none` for a node in no area
    std::vector<CrossLink> crossLinks_;   // those of one side
    // By pair of areas. Not hashed: a file could choose pairs that collide.
    std::map<std::uint64_t, std::size_t> unchanged_;
};

}  // namespace

Areas findAreas(const LinkGraph& graph, const AreaOptions& options) {
    return AreaFinder(graph, options).find();
}

OtherNodes findOtherNodes(const LinkGraph& graph) {
    OtherNodes others;
    for (Number node = 0; node < graph.nodeCount(); ++node) {
        const Edit edit = graph.edit(node);
        if (edit == Edit::common) {
            continue;
        }
        const Side side = edit == Edit::added ? Side::right : Side::left;
        if (graph.isFile(node, side)) {
            continue;
        }
        const auto files = std::ranges::count_if(
            graph.into(node), [&](const LinkEnd& end) { return graph.isFile(end.node, side); });
        if (files != 0) {
            (edit == Edit::added ? others.added : others.removed)
                .push_back({.node = node, .files = static_cast<std::size_t>(files)});
        }
    }
    for (auto* list : {&others.added, &others.removed}) {
        std::ranges::stable_sort(*list, std::ranges::greater(), &OtherNode::files);
    }
    return others;
}

}  // namespace dependency::insight
