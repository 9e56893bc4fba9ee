#include "insight/insight_text.h"

#include <array>
#include <sstream>

#include "support/text_graph.h"

namespace dependency::test {

using namespace insight;

namespace {

class Text {
  public:
    explicit Text(const LinkGraph& graph) : graph_(graph) {}

    template <class... Parts>
    Text& line(const Parts&... parts) {
        (add(parts), ...);
        out_ << '\n';
        return *this;
    }
    std::string take() { return std::move(out_).str(); }

  private:
    template <class T>
    void add(const T& value) {
        out_ << value;
    }
    void add(const Link& link) { add(std::vector{link.upstream, link.downstream}); }
    void add(const std::vector<Number>& nodes) {
        for (const Number node : nodes) {
            out_ << ' ' << utf8(graph_.id(node));
        }
    }
    void add(const std::vector<Link>& links) {
        for (const Link& link : links) {
            add(link);
            out_ << ';';
        }
    }
    void add(const BySide<std::size_t>& counts) { out_ << counts.left << '/' << counts.right; }
    void add(const BySide<Number>& counts) { out_ << counts.left << '/' << counts.right; }
    void add(const LinkCauses& causes) {
        out_ << causes.rename << ' ' << causes.file << ' ' << causes.target << ' '
             << causes.rewiring;
    }

    const LinkGraph& graph_;
    std::ostringstream out_;
};

const char* textOf(Edit edit) {
    return std::array{"added", "removed", "common"}.at(static_cast<std::size_t>(edit));
}

}  // namespace

std::string textOf(const LinkGraph& graph, const Cycles& cycles) {
    Text text(graph);
    text.line("cycles ", cycles.groups, ", unchanged ", cycles.unchanged);
    for (const CycleFamily& family : cycles.families) {
        text.line(
            std::array{"added", "removed", "changed"}.at(static_cast<std::size_t>(family.edit)));
        for (const Side side : sides) {
            for (const auto& group : family.groups[side]) {
                text.line(side == Side::left ? "  left" : "  right", group);
            }
        }
        text.line("  closing", family.closing).line("  opened", family.opened);
        text.line("  cycle", family.cycle);
    }
    return text.take();
}

std::string textOf(const LinkGraph& graph, const Reach& reach) {
    Text text(graph);
    for (const Side side : sides) {
        text.line("reach ", reach.sides[side].pairs, ' ', reach.sides[side].cost);
    }
    for (const FileReach& file : reach.files) {
        text.line(" ", std::vector{file.file}, ' ', file.reach, " +", file.gained, " -", file.lost,
                  file.path);
    }
    for (const LinkReach& link : reach.links) {
        text.line(" ", link.link, " +", link.gained, " by ", link.dependents);
    }
    return text.take();
}

std::string textOf(const LinkGraph& graph, const Areas& areas) {
    Text text(graph);
    for (const Area& area : areas.areas) {
        text.line("area ", utf8(area.name), ' ', area.files, " +", area.added, " -", area.removed,
                  " ~", area.changed, ' ', area.inside, ' ', area.out, ' ', area.in);
    }
    for (const AreaLink& link : areas.links) {
        text.line("  ", utf8(areas.areas[link.from].name), " -> ", utf8(areas.areas[link.to].name),
                  ' ', link.links, " +", link.added, " -", link.removed, link.examples);
    }
    return text.take();
}

std::string textOf(const LinkGraph& graph, const OtherNodes& others) {
    Text text(graph);
    for (const auto* list : {&others.added, &others.removed}) {
        for (const OtherNode& other : *list) {
            text.line(list == &others.added ? "new" : "gone", std::vector{other.node}, ' ',
                      other.files);
        }
    }
    return text.take();
}

std::string textOf(const LinkGraph& graph, const Causes& causes) {
    Text text(graph);
    text.line("added ", causes.added).line("removed ", causes.removed);
    text.line("changed ", causes.changed.components, ' ', causes.changed.types, ' ',
              causes.changed.ends);
    for (const Target& target : causes.targets) {
        text.line("target ", textOf(target.edit), std::vector{target.node}, ' ', target.files);
    }
    for (const Rewiring& rewiring : causes.rewired) {
        text.line("rewired ", textOf(rewiring.edit), rewiring.link);
    }
    return text.take();
}

}  // namespace dependency::test
