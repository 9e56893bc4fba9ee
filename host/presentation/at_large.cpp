#include "presentation/at_large.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <map>
#include <numeric>
#include <set>
#include <tuple>
#include <utility>

#include <fl/i18n/ustring.h>
#include <fmt/format.h>
#include <fmt/ranges.h>

#include "presentation/ledger_text.h"

namespace depcompare {

namespace {

using ::comparisons::EditType;
using fl::i18n::utf8_to_ustring;
using insight::BySide;
using insight::CycleEdit;
using insight::CycleFamily;
using insight::Cycles;
using insight::Edit;
using insight::Link;
using insight::LinkGraph;
using insight::Number;
using insight::Side;

constexpr std::size_t mostShort = 12;  // statements of a topic that a report may show

/// Returns: with a comma after every three digits.
std::string grouped(std::uint64_t number) {
    const std::string digits = std::to_string(number);
    std::string text;
    for (std::size_t i = 0; i < digits.size(); ++i) {
        text += i != 0 && (digits.size() - i) % 3 == 0 ? "," : "";
        text += digits[i];
    }
    return text;
}

std::string percentage(double share) {
    const double percent = share * 100;
    const int digits = percent == 0 || percent >= 10 ? 0 : percent >= 0.1 ? 1 : 3;
    return fmt::format("{:.{}f} %", percent, digits);
}

std::string arrowed(const std::string& left, const std::string& right) {
    return left == right ? left : fmt::format("{} \u2192 {}", left, right);
}

std::string arrowed(std::uint64_t left, std::uint64_t right) {
    return arrowed(grouped(left), grouped(right));
}

EditType editType(Edit edit) {
    return edit == Edit::added     ? EditType::rightOnly
           : edit == Edit::removed ? EditType::leftOnly
                                   : EditType::changed;
}

/// Returns: "3 new, 1 gone" of those that are not 0.
std::string listed(std::initializer_list<std::pair<std::size_t, std::string_view>> counts) {
    std::vector<std::string> parts;
    for (const auto& [count, what] : counts) {
        if (count != 0) {
            parts.push_back(fmt::format("{} {}", grouped(count), what));
        }
    }
    return fmt::format("{}", fmt::join(parts, ", "));
}

/// Puts a statement together.
class Saying {
  public:
    explicit Saying(std::optional<EditType> edit = {}) { statement_.edit = edit; }

    Saying& words(std::string_view text) {
        statement_.phrases.push_back({Phrase::Kind::words, utf8_to_ustring(text)});
        return *this;
    }
    Saying& name(std::u16string_view text) {
        statement_.phrases.push_back({Phrase::Kind::name, std::u16string(text)});
        return *this;
    }
    Saying& link(std::u16string_view from, std::u16string_view to) {
        name(from);
        statement_.phrases.push_back({Phrase::Kind::leadsTo, {}});
        return name(to);
    }
    Statement end() { return std::move(statement_); }

  private:
    Statement statement_;
};

class TopicMaker {
  public:
    explicit TopicMaker(const Report& report)
        : differs_(report.summary.showsDifference),
          insights_(*report.insights),
          graph_(insights_.graph) {}

    std::vector<Topic> make() {
        addAreaLinks();
        addFilesOfAreas();
        addOthers();
        addCycles();
        addReach();
        addRenames();
        addCauses();
        if (insights_.full) {
            addTargets();
            addRewired();
        }
        return std::move(topics_);
    }

  private:
    Topic& begin(std::string_view title, std::size_t mostLines, bool flows) {
        return topics_.emplace_back(Topic{.title = title, .mostLines = mostLines, .flows = flows});
    }

    /// Adds a statement for each of `all`, or for as many as a short report needs.
    template <class Values, class MakeStatement>
    void addStatements(Topic& topic, const Values& all, MakeStatement make) {
        const std::size_t count = insights_.full ? all.size() : std::min(all.size(), mostShort);
        for (std::size_t i = 0; i < count; ++i) {
            topic.statements.push_back(make(all[i]));
        }
        topic.more += all.size() - count;
    }

    void endTopic() {
        if (topics_.back().statements.empty()) {
            topics_.pop_back();
        }
    }

    Saying& say(const Link& link, Saying& saying) const {
        return saying.link(graph_.id(link.upstream), graph_.id(link.downstream));
    }

    static EditType editOf(const insight::AreaLink& link) {
        return link.links.left == 0    ? EditType::rightOnly
               : link.links.right == 0 ? EditType::leftOnly
                                       : EditType::changed;
    }

    void addAreaLinks() {
        std::vector<const insight::AreaLink*> links;
        for (const auto& link : insights_.areas.links) {
            links.push_back(&link);
        }
        std::ranges::stable_sort(links, [](const auto* a, const auto* b) {
            return std::tuple(editOf(*a), b->added + b->removed) <
                   std::tuple(editOf(*b), a->added + a->removed);
        });
        Topic& topic = begin("Areas", 2, true);
        topic.isNews = true;
        addStatements(topic, links, [&](const auto* link) {
            const EditType edit = editOf(*link);
            const std::string numbers = edit == EditType::changed
                                            ? fmt::format(" (+{} -{})", link->added, link->removed)
                                            : fmt::format(" ({})", link->added + link->removed);
            const auto& areas = insights_.areas.areas;
            return Saying(edit)
                .link(areas[link->from].name, areas[link->to].name)
                .words(numbers)
                .end();
        });
        endTopic();
    }

    void addFilesOfAreas() {
        if (insights_.areas.areas.size() < 2) {
            return;
        }
        std::vector<const insight::Area*> areas;
        for (const auto& area : insights_.areas.areas) {
            if (area.added + area.removed != 0) {
                areas.push_back(&area);
            }
        }
        std::ranges::stable_sort(areas, std::greater(),
                                 [](const auto* area) { return area->added + area->removed; });
        addStatements(begin("Files in", 1, true), areas, [](const auto* area) {
            return Saying()
                .name(area->name)
                .words((area->added == 0 ? "" : fmt::format(" +{}", area->added)) +
                       (area->removed == 0 ? "" : fmt::format(" -{}", area->removed)))
                .end();
        });
        endTopic();
    }

    void addOthers() {
        std::vector<std::pair<EditType, insight::OtherNode>> nodes;
        for (const auto& node : insights_.others.added) {
            nodes.emplace_back(EditType::rightOnly, node);
        }
        for (const auto& node : insights_.others.removed) {
            nodes.emplace_back(EditType::leftOnly, node);
        }
        if (nodes.empty()) {
            return;
        }
        std::ranges::stable_sort(nodes, std::greater(),
                                 [](const auto& node) { return node.second.files; });
        Topic& topic = begin("Other nodes", 1, true);
        topic.isNews = true;
        topic.statements.push_back(Saying()
                                       .words(listed({{insights_.others.added.size(), "new"},
                                                      {insights_.others.removed.size(), "gone"}}))
                                       .end());
        addStatements(topic, nodes, [&](const auto& node) {
            return Saying(node.first)
                .name(graph_.id(node.second.node))
                .words(fmt::format(" ({})", counted(node.second.files, "file", "files")))
                .end();
        });
    }

    void addCycles() {
        if (insights_.hardCycles) {
            addCycles("Cycles", 2, *insights_.hardCycles);
            addCycles("with soft", 1, insights_.cycles);
        } else {
            addCycles("Cycles", 3, insights_.cycles);
        }
    }

    void addCycles(std::string_view title, std::size_t mostLines, const Cycles& cycles) {
        if (cycles.groups.left + cycles.groups.right == 0 ||
            (cycles.families.empty() && !differs_)) {
            return;
        }
        std::string numbers = arrowed(cycles.groups.left, cycles.groups.right);
        if (cycles.families.empty()) {
            numbers += ", as before";
        } else {
            const auto count = [&](CycleEdit edit) {
                return static_cast<std::size_t>(
                    std::ranges::count(cycles.families, edit, &CycleFamily::edit));
            };
            numbers += ": " + listed({{count(CycleEdit::added), "new"},
                                      {count(CycleEdit::changed), "changed"},
                                      {count(CycleEdit::removed), "gone"},
                                      {cycles.unchanged, "as before"}});
        }
        std::vector<const CycleFamily*> families;
        for (const auto& family : cycles.families) {
            families.push_back(&family);
        }
        std::ranges::stable_sort(families, {}, [](const auto* family) {
            return family->edit == CycleEdit::added     ? 0
                   : family->edit == CycleEdit::changed ? 1
                                                        : 2;
        });
        Topic& topic = begin(title, mostLines, false);
        topic.isNews = true;
        topic.statements.push_back(Saying().words(numbers).end());
        addStatements(topic, families, [&](const auto* family) { return cycleSaying(*family); });
    }

    static std::size_t nodesIn(const std::vector<std::vector<Number>>& groups) {
        std::size_t count = 0;
        for (const auto& group : groups) {
            count += group.size();
        }
        return count;
    }

    [[nodiscard]] Statement cycleSaying(const CycleFamily& family) const {
        const EditType edit = family.edit == CycleEdit::added     ? EditType::rightOnly
                              : family.edit == CycleEdit::removed ? EditType::leftOnly
                                                                  : EditType::changed;
        const BySide<std::size_t> nodes{nodesIn(family.groups.left), nodesIn(family.groups.right)};
        std::string size = edit == EditType::rightOnly ? counted(nodes.right, "node", "nodes")
                           : edit == EditType::leftOnly
                               ? counted(nodes.left, "node", "nodes")
                               : arrowed(nodes.left, nodes.right) + " nodes";
        if (family.groups.left.size() + family.groups.right.size() > 2) {
            size =
                fmt::format("{} cycles, {}",
                            arrowed(family.groups.left.size(), family.groups.right.size()), size);
        }
        Saying saying(edit);
        saying.words(size);
        if (!family.closing.empty()) {
            sayClosing(family, saying.words(", closed by "));
        } else if (!family.opened.empty()) {
            sayFirst(family.opened, saying.words(", opened by loss of "));
        }
        return saying.end();
    }

    /// Says the first link, and how many others there are.
    void sayFirst(const std::vector<Link>& links, Saying& saying) const {
        say(links.front(), saying);
        if (links.size() != 1) {
            saying.words(fmt::format(" and {} more", links.size() - 1));
        }
    }

    void sayClosing(const CycleFamily& family, Saying& saying) const {
        const auto& cycle = family.cycle;
        for (std::size_t i = 0; i < cycle.size(); ++i) {
            const Link link{cycle[i], cycle[(i + 1) % cycle.size()]};
            if (!std::ranges::binary_search(family.closing, link)) {
                continue;
            }
            say(link, saying);
            if (cycle.size() > 2) {
                saying.words(", back through ").name(graph_.id(cycle[(i + 2) % cycle.size()]));
            }
            if (cycle.size() > 3) {
                saying.words(fmt::format(" and {} more", cycle.size() - 3));
            }
            return;
        }
        sayFirst(family.closing, saying);
    }

    void addReach() {
        if (!insights_.reach) {
            begin("Reach", 1, false)
                .statements.push_back(
                    Saying()
                        .words(fmt::format("not counted: it would take long; {} counts it",
                                           howToSeeMore))
                        .end());
            return;
        }
        const insight::Reach& reach = *insights_.reach;
        if (reach.filesAll == 0 && reach.sides.left == reach.sides.right) {
            return;
        }
        Topic& links = begin("Reach", 2, false);
        links.statements.push_back(
            Saying()
                .words(fmt::format(
                    "{} pairs of file and node, {} of all",
                    arrowed(reach.sides.left.pairs, reach.sides.right.pairs),
                    arrowed(percentage(reach.sides.left.cost), percentage(reach.sides.right.cost))))
                .end());
        std::vector<const insight::LinkReach*> gaining;
        for (const auto& link : reach.links) {
            if (link.gained != 0) {
                gaining.push_back(&link);
            }
        }
        addStatements(links, gaining, [&](const auto* link) { return reachSaying(*link); });
        links.more += reach.linksAll - reach.links.size();
        Topic& files = begin("", 1, false);
        addStatements(files, reach.files, [&](const auto& file) { return reachSaying(file); });
        files.more += reach.filesAll - reach.files.size();
        endTopic();
    }

    [[nodiscard]] Statement reachSaying(const insight::LinkReach& reach) const {
        const std::size_t files =
            reach.dependents + (graph_.isFile(reach.link.upstream, Side::right) ? 1U : 0U);
        Saying saying(EditType::rightOnly);
        return say(reach.link, saying)
            .words(fmt::format(": {} {} {}", counted(files, "file", "files"),
                               files == 1 ? "gains" : "gain up to", grouped(reach.gained)))
            .end();
    }

    [[nodiscard]] Statement reachSaying(const insight::FileReach& reach) const {
        const std::string numbers =
            reach.reach.left == reach.reach.right
                ? fmt::format("{}, {} of them new", grouped(reach.reach.right),
                              grouped(reach.gained))
                : arrowed(reach.reach.left, reach.reach.right);
        Saying saying;
        saying.name(graph_.id(reach.file)).words(": " + numbers);
        if (reach.path.size() >= 2 && reach.reach.left <= reach.reach.right) {
            say({reach.path[reach.path.size() - 2], reach.path.back()},
                saying.words(", first by "));
        }
        return saying.end();
    }

    using FolderPair = std::pair<std::u16string, std::u16string>;

    void addRenames() {
        std::map<FolderPair, std::size_t> moves;
        std::vector<const ListedRename*> single;
        std::size_t probable = 0;
        for (const ListedRename& rename : insights_.renames) {
            probable += rename.found.probable() ? 1 : 0;
            const auto& folder = rename.found.evidence.folder;
            if (folder && !insights_.full) {
                ++moves[{folder->left, folder->right}];
            } else {
                single.push_back(&rename);
            }
        }
        if (insights_.renames.empty()) {
            return;
        }
        std::vector<std::pair<FolderPair, std::size_t>> folders(moves.begin(), moves.end());
        std::ranges::stable_sort(folders, std::greater(),
                                 [](const auto& move) { return move.second; });
        std::ranges::stable_sort(single, std::greater(),
                                 [](const auto* rename) { return rename->found.score; });
        Topic& topic = begin("Renames", 2, false);
        topic.statements.push_back(
            Saying()
                .words(listed(
                    {{probable, "probable"}, {insights_.renames.size() - probable, "possible"}}))
                .end());
        const auto nameOf = [](const std::u16string& folder) {
            return folder.empty() ? std::u16string(u".") : folder;
        };
        addStatements(topic, folders, [&](const auto& move) {
            return Saying()
                .name(nameOf(move.first.first))
                .words(" \u2192 ")
                .name(nameOf(move.first.second))
                .words(fmt::format(": {}", counted(move.second, "file", "files")))
                .end();
        });
        addStatements(topic, single, [](const auto* rename) { return renameSaying(*rename); });
    }

    static Statement renameSaying(const ListedRename& rename) {
        const insight::RenameEvidence& evidence = rename.found.evidence;
        std::vector<std::string> reasons;
        if (rename.applied) {
            reasons.emplace_back("applied");
        }
        if (rename.found.stated) {
            reasons.emplace_back("stated");
        } else {
            reasons.push_back(fmt::format("{:.2f}", rename.found.score));
        }
        if (rename.found.ambiguous) {
            reasons.emplace_back("ambiguous");
        }
        if (evidence.digest) {
            reasons.emplace_back("equal digest");
        }
        if (evidence.name) {
            reasons.emplace_back("equal name");
        }
        if (evidence.sharedNeighbours != 0) {
            reasons.push_back(
                fmt::format("{} of {} neighbours", evidence.sharedNeighbours,
                            std::max(evidence.neighbours.left, evidence.neighbours.right)));
        }
        return Saying()
            .name(rename.ids.left)
            .words(" \u2192 ")
            .name(rename.ids.right)
            .words(fmt::format(": {}", fmt::join(reasons, ", ")))
            .end();
    }

    void addCauses() {
        const insight::Causes& causes = insights_.causes;
        Topic& topic = begin("Links", 3, false);
        const auto add = [&](char sign, std::size_t all, const std::string& what) {
            if (all != 0) {
                topic.statements.push_back(
                    Saying().words(fmt::format("{}{}: {}", sign, grouped(all), what)).end());
            }
        };
        add('+', causes.added.all(),
            listed({{causes.added.rewiring, "rewired"},
                    {causes.added.file, "of new files"},
                    {causes.added.target, "to new nodes"},
                    {causes.added.rename, "renamed"}}));
        add('-', causes.removed.all(),
            listed({{causes.removed.rewiring, "rewired"},
                    {causes.removed.file, "of gone files"},
                    {causes.removed.target, "to gone nodes"},
                    {causes.removed.rename, "renamed"}}));
        add('~', causes.changed.all(),
            listed({{causes.changed.components, "in components only"},
                    {causes.changed.types, "in types"},
                    {causes.changed.ends, "in an end only"}}));
        endTopic();
    }

    void addTargets() {
        addStatements(begin("Targets", 0, true), insights_.causes.targets, [&](const auto& target) {
            return Saying(editType(target.edit))
                .name(graph_.id(target.node))
                .words(fmt::format(" ({})", counted(target.files, "file", "files")))
                .end();
        });
        endTopic();
    }

    void addRewired() {
        addStatements(begin("Rewired", 0, true), insights_.causes.rewired,
                      [&](const auto& rewired) {
                          Saying saying(editType(rewired.edit));
                          return say(rewired.link, saying).end();
                      });
        endTopic();
    }

    bool differs_;
    const Insights& insights_;
    const LinkGraph& graph_;
    std::vector<Topic> topics_;
};

}  // namespace

std::string verdictOf(const Report& report) {
    std::string verdict(report.verdict());
    if (verdict.empty()) {
        return report.tree->showsStructuralDifference() ? "The structure changed."
                                                        : "Only properties changed.";
    }
    if (report.summary.showsDifference) {
        verdict += " Use --no-filter to see the hidden ones.";
    }
    return verdict;
}

std::vector<Topic> atLarge(const Report& report) {
    std::vector<Topic> topics = report.insights ? TopicMaker(report).make() : std::vector<Topic>();
    if (report.versions) {
        const auto& [up, down, other] = *report.versions;
        if (std::string counts = listed({{up, "up"}, {down, "down"}, {other, "other"}});
            !counts.empty()) {
            // The line that this takes is one of the last topic that may have several: what others
            // leave is its own by then.
            if (const auto longer =
                    std::find_if(topics.rbegin(), topics.rend(),
                                 [](const Topic& topic) { return topic.mostLines > 1; });
                longer != topics.rend()) {
                --longer->mostLines;
            }
            Topic& topic = *topics.emplace(
                topics.begin(), Topic{.title = "Versions", .mostLines = 1, .isNews = true});
            topic.statements.push_back(Saying().words(counts).end());
        }
    }
    return topics;
}

}  // namespace depcompare
