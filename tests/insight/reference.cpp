#include "insight/reference.h"

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <sstream>
#include <tuple>
#include <vector>

#include <dependency/comparisons/match_graphs.h>

#include "support/text_graph.h"

namespace dependency::test {

namespace {

using Names = std::vector<std::string>;
using NameSet = std::set<std::string>;
using NamedLink = std::pair<std::string, std::string>;
using LinkSet = std::set<NamedLink>;
using Content = std::tuple<std::u16string, std::u16string, std::u16string, std::u16string,
                           std::u16string>;  // of a dependency: type and components

struct SideFacts {
    NameSet nodes;
    NameSet files;
    LinkSet links;
    LinkSet hardLinks;
    std::map<std::string, std::vector<graph::Property>> properties;
    std::map<std::string, std::pair<std::u16string, std::u16string>> nameAndType;
    std::map<NamedLink, std::map<std::u16string, Content>> dependencies;  // by ID
    std::map<std::string, NameSet> reached;  // by a path of one link or more

    explicit SideFacts(const graph::Graph& graph) {
        for (const auto& node : graph.getNodes()) {
            const std::string id = utf8(node->getID());
            nodes.insert(id);
            if (node->getType()->getID() == u"file") {
                files.insert(id);
            }
            for (const auto& key : node->getPropertyKeys()) {
                properties[id].emplace_back(key, node->getProperty(key));
            }
            nameAndType[id] = {node->getName(), node->getType()->getID()};
            for (const auto& dependency : graph.getDownstreamDependencies(node)) {
                const NamedLink link{id, utf8(dependency->getDownstreamNode()->getID())};
                links.insert(link);
                const auto from = dependency->getUpstreamComponent();
                const auto to = dependency->getDownstreamComponent();
                const std::u16string type = dependency->getType()->getID();
                if (type != u"call") {
                    hardLinks.insert(link);
                }
                dependencies[link].try_emplace(dependency->getID(), type, from->getName(),
                                               from->getType()->getID(), to->getName(),
                                               to->getType()->getID());
            }
        }
        reached = closure(links);
    }

    static std::map<std::string, NameSet> closure(const LinkSet& links) {
        std::map<std::string, NameSet> reached;
        for (const auto& [from, to] : links) {
            reached[from].insert(to);
        }
        for (bool grows = true; grows;) {
            grows = false;
            for (auto& [node, set] : reached) {
                for (const auto& near : NameSet(set)) {
                    if (const auto far = reached.find(near); far != reached.end()) {
                        for (const auto& other : NameSet(far->second)) {
                            grows |= set.insert(other).second;
                        }
                    }
                }
            }
        }
        return reached;
    }

    NameSet reach(const std::string& node) const {
        const auto found = reached.find(node);
        NameSet set = found == reached.end() ? NameSet() : found->second;
        set.erase(node);
        return set;
    }
};

NameSet minus(NameSet a, const NameSet& b) {
    std::erase_if(a, [&](const auto& x) { return b.contains(x); });
    return a;
}

LinkSet minus(LinkSet a, const LinkSet& b) {
    std::erase_if(a, [&](const auto& x) { return b.contains(x); });
    return a;
}

// Tries all paths of one length in the order of their names; those of a cycle begin at its smallest.
bool extend(const LinkSet& links, Names& path, std::size_t length,
            const std::function<bool(const Names&)>& isWanted) {
    if (path.size() == length + 1) {
        return isWanted(path);
    }
    for (auto link = links.lower_bound({path.back(), ""});
         link != links.end() && link->first == path.back(); ++link) {
        path.push_back(link->second);
        if (extend(links, path, length, isWanted)) {
            return true;
        }
        path.pop_back();
    }
    return false;
}

Names shortestCycle(const LinkSet& links, const LinkSet& candidates) {
    for (std::size_t length = 1; length <= 12; ++length) {
        for (auto link = links.begin(); link != links.end(); ++link) {
            Names path{link->first};
            if (extend(links, path, length, [&](const Names& walk) {
                    bool through = false;
                    for (std::size_t i = 0; i + 1 < walk.size(); ++i) {
                        through |= candidates.contains({walk[i], walk[i + 1]});
                    }
                    return through && walk.front() == walk.back() &&
                           std::ranges::min(walk) == walk.front();
                })) {
                path.pop_back();
                return path;
            }
        }
    }
    return {};
}

Names pathToOneOf(const LinkSet& links, const std::string& start, const NameSet& goals) {
    for (std::size_t length = 1; !goals.empty() && length <= 12; ++length) {
        Names path{start};
        if (extend(links, path, length,
                   [&](const Names& walk) { return goals.contains(walk.back()); })) {
            return path;
        }
    }
    return {};
}

class Reference {
  public:
    Reference(const SideFacts& left, const SideFacts& right) : left_(left), right_(right) {}

    std::string text(std::size_t depth) {
        cycles(left_.links, right_.links);
        cycles(left_.hardLinks, right_.hardLinks);
        reach();
        areas(depth);
        others();
        causes();
        return out_.str();
    }

  private:
    void list(const char* head, const Names& names) {
        out_ << head;
        for (const auto& name : names) {
            out_ << ' ' << name;
        }
    }
    void list(const char* head, const LinkSet& links) {
        out_ << head;
        for (const auto& [from, to] : links) {
            out_ << ' ' << from << ' ' << to << ';';
        }
    }

    static std::set<NameSet> groups(const LinkSet& links) {
        const auto reached = SideFacts::closure(links);
        std::set<NameSet> groups;
        for (const auto& [node, set] : reached) {
            if (set.contains(node)) {
                NameSet group;
                for (const auto& other : set) {
                    if (const auto back = reached.find(other);
                        back != reached.end() && back->second.contains(node)) {
                        group.insert(other);
                    }
                }
                groups.insert(group);
            }
        }
        return groups;
    }

    static LinkSet inside(const std::set<NameSet>& groups, const LinkSet& links) {
        LinkSet found;
        for (const auto& link : links) {
            for (const auto& group : groups) {
                if (group.contains(link.first) && group.contains(link.second)) {
                    found.insert(link);
                }
            }
        }
        return found;
    }

    void cycles(const LinkSet& left, const LinkSet& right) {
        struct Family {
            NameSet nodes;
            std::set<NameSet> left;
            std::set<NameSet> right;
        };
        std::vector<Family> families;
        const auto leftGroups = groups(left);
        const auto rightGroups = groups(right);
        for (const auto& group : leftGroups) {
            families.push_back({group, {group}, {}});
        }
        for (const auto& group : rightGroups) {
            Family joined{group, {}, {group}};
            std::erase_if(families, [&](const Family& family) {
                const bool shares = minus(family.nodes, group).size() != family.nodes.size();
                if (shares) {
                    joined.nodes.insert(family.nodes.begin(), family.nodes.end());
                    joined.left.insert(family.left.begin(), family.left.end());
                    joined.right.insert(family.right.begin(), family.right.end());
                }
                return shares;
            });
            families.push_back(joined);
        }
        std::ranges::sort(families, {}, [](const Family& family) { return *family.nodes.begin(); });
        const auto unchanged = std::erase_if(families, [](const Family& family) {
            return family.left.size() == 1 && family.left == family.right;
        });
        out_ << "cycles " << leftGroups.size() << '/' << rightGroups.size() << ", unchanged "
             << unchanged << '\n';
        for (const Family& family : families) {
            out_ << (family.left.empty()    ? "added"
                     : family.right.empty() ? "removed"
                                            : "changed")
                 << '\n';
            for (const auto& group : family.left) {
                list("  left", Names(group.begin(), group.end()));
                out_ << '\n';
            }
            for (const auto& group : family.right) {
                list("  right", Names(group.begin(), group.end()));
                out_ << '\n';
            }
            const LinkSet leftLinks = inside(family.left, left);
            const LinkSet rightLinks = inside(family.right, right);
            list("  closing", minus(rightLinks, left));
            list("\n  opened", minus(leftLinks, right));
            list("\n  cycle", family.right.empty()
                                  ? shortestCycle(leftLinks, leftLinks)
                                  : shortestCycle(rightLinks, minus(rightLinks, left)));
            out_ << '\n';
        }
    }

    void reach() {
        for (const SideFacts* side : {&left_, &right_}) {
            std::size_t pairs = 0;
            for (const auto& file : side->files) {
                pairs += side->reach(file).size();
            }
            const bool counts = !side->files.empty() && side->nodes.size() > 1;
            out_ << "reach " << pairs << ' '
                 << (counts ? static_cast<double>(pairs) / static_cast<double>(side->files.size()) /
                                  static_cast<double>(side->nodes.size() - 1)
                            : 0.0)
                 << '\n';
        }
        std::vector<std::tuple<std::size_t, std::string, std::string>> lines;
        const auto write = [&] {
            std::ranges::sort(lines, [](const auto& a, const auto& b) {
                return std::tuple(std::get<0>(b), std::get<1>(a)) <
                       std::tuple(std::get<0>(a), std::get<1>(b));
            });
            for (const auto& line : lines) {
                out_ << std::get<2>(line) << '\n';
            }
            lines.clear();
        };
        for (const auto& file : left_.files) {
            const NameSet gained = minus(right_.reach(file), left_.reach(file));
            const NameSet lost = minus(left_.reach(file), right_.reach(file));
            if (right_.files.contains(file) && gained.size() + lost.size() != 0) {
                std::ostringstream line;
                line << "  " << file << ' ' << left_.reach(file).size() << '/'
                     << right_.reach(file).size() << " +" << gained.size() << " -" << lost.size();
                for (const auto& node : pathToOneOf(right_.links, file, gained)) {
                    line << ' ' << node;
                }
                lines.emplace_back(gained.size() + lost.size(), file, line.str());
            }
        }
        write();
        for (const auto& [from, to] : minus(right_.links, left_.links)) {
            if (left_.nodes.contains(from)) {
                NameSet gained = right_.reach(to);
                gained.insert(to);
                gained = minus(minus(gained, left_.reach(from)), {from});
                std::size_t dependents = 0;
                for (const auto& file : right_.files) {
                    dependents += right_.reach(file).contains(from) ? 1 : 0;
                }
                std::ostringstream line;
                line << "  " << from << ' ' << to << " +" << gained.size() << " by " << dependents;
                lines.emplace_back(gained.size() * (dependents + 1), from + '\0' + to, line.str());
            }
        }
        write();
    }

    static std::string areaOf(const std::string& file, std::size_t depth) {
        std::size_t end = file.starts_with('/') ? 1 : 0;
        const auto last = file.rfind('/');
        if (last == file.npos || last == 0) {
            return ".";
        }
        for (; depth > 0 && end <= last; --depth) {
            end = file.find('/', end) + 1;
        }
        return file.substr(0, end - 1);
    }

    void areas(std::size_t depth) {
        struct Counts {
            std::array<int, 2> files{}, inside{}, out{}, in{};
            int added = 0, removed = 0, changed = 0;
        };
        std::map<std::string, Counts> counts;
        std::map<NamedLink, std::array<LinkSet, 2>> between;
        for (std::size_t side = 0; side < 2; ++side) {
            const SideFacts& here = side == 0 ? left_ : right_;
            const SideFacts& there = side == 0 ? right_ : left_;
            for (const auto& file : here.files) {
                Counts& area = counts[areaOf(file, depth)];
                ++area.files[side];
                if (!there.files.contains(file)) {
                    ++(side == 0 ? area.removed : area.added);
                } else if (side == 1 &&
                           valueOf(left_.properties, file) != valueOf(right_.properties, file)) {
                    ++area.changed;
                }
            }
            for (const auto& link : here.links) {
                if (here.files.contains(link.first) && here.files.contains(link.second)) {
                    const NamedLink ends{areaOf(link.first, depth), areaOf(link.second, depth)};
                    if (ends.first == ends.second) {
                        ++counts[ends.first].inside[side];
                    } else {
                        ++counts[ends.first].out[side];
                        ++counts[ends.second].in[side];
                        between[ends][side].insert(link);
                    }
                }
            }
        }
        const auto pair = [](const std::array<int, 2>& numbers) {
            return std::to_string(numbers[0]) + '/' + std::to_string(numbers[1]);
        };
        for (const auto& [area, c] : counts) {
            out_ << "area " << area << ' ' << pair(c.files) << " +" << c.added << " -" << c.removed
                 << " ~" << c.changed << ' ' << pair(c.inside) << ' ' << pair(c.out) << ' '
                 << pair(c.in) << '\n';
        }
        for (const auto& [ends, links] : between) {
            const LinkSet added = minus(links[1], links[0]);
            const LinkSet removed = minus(links[0], links[1]);
            if (!added.empty() || !removed.empty()) {
                out_ << "  " << ends.first << " -> " << ends.second << ' ' << links[0].size() << '/'
                     << links[1].size() << " +" << added.size() << " -" << removed.size();
                int room = 3;
                for (const auto* list : {&added, &removed}) {
                    for (const auto& [from, to] : *list) {
                        if (room-- > 0) {
                            out_ << ' ' << from << ' ' << to << ';';
                        }
                    }
                }
                out_ << '\n';
            }
        }
    }

    template <class Map>
    static typename Map::mapped_type valueOf(const Map& map, const typename Map::key_type& key) {
        const auto found = map.find(key);
        return found == map.end() ? typename Map::mapped_type() : found->second;
    }

    void others() {
        for (const bool isNew : {true, false}) {
            const SideFacts& here = isNew ? right_ : left_;
            std::vector<std::pair<int, std::string>> found;
            for (const auto& node : minus(here.nodes, (isNew ? left_ : right_).nodes)) {
                int files = 0;
                for (const auto& file : here.files) {
                    files -= here.links.contains({file, node}) ? 1 : 0;
                }
                if (!here.files.contains(node) && files != 0) {
                    found.emplace_back(files, node);
                }
            }
            std::ranges::sort(found);
            for (const auto& [files, node] : found) {
                out_ << (isNew ? "new " : "gone ") << node << ' ' << -files << '\n';
            }
        }
    }

    static LinkSet groupsOf(const SideFacts& side) {
        LinkSet links = side.links;
        std::erase_if(links, [&](const auto& link) { return !side.files.contains(link.first); });
        return links;
    }

    void causes() {
        std::map<std::string, std::pair<int, bool>> targets;
        std::map<NamedLink, bool> rewired;
        for (const bool isAdded : {true, false}) {
            const SideFacts& here = isAdded ? right_ : left_;
            const SideFacts& there = isAdded ? left_ : right_;
            int file = 0;
            int target = 0;
            int rewiring = 0;
            for (const auto& link : minus(groupsOf(here), groupsOf(there))) {
                if (!there.files.contains(link.first)) {
                    ++file;
                } else if (!there.nodes.contains(link.second)) {
                    ++target;
                    --targets[link.second].first;
                    targets[link.second].second = isAdded;
                } else {
                    ++rewiring;
                    rewired[link] = isAdded;
                }
            }
            out_ << (isAdded ? "added 0 " : "removed 0 ") << file << ' ' << target << ' '
                 << rewiring << '\n';
        }
        int components = 0;
        int types = 0;
        int ends = 0;
        for (const auto& link : groupsOf(left_)) {
            if (!groupsOf(right_).contains(link)) {
                continue;
            }
            std::array<std::multiset<std::u16string>, 2> typesOf;
            std::array<std::vector<Content>, 2> contents;
            for (std::size_t side = 0; side < 2; ++side) {
                for (const auto& [id, content] :
                     (side == 0 ? left_ : right_).dependencies.at(link)) {
                    typesOf[side].insert(std::get<0>(content));
                    contents[side].push_back(content);
                }
            }
            if (typesOf[0] != typesOf[1]) {
                ++types;
            } else if (contents[0] != contents[1]) {
                ++components;
            } else if (left_.nameAndType.at(link.first) != right_.nameAndType.at(link.first) ||
                       left_.nameAndType.at(link.second) != right_.nameAndType.at(link.second)) {
                ++ends;
            }
        }
        out_ << "changed " << components << ' ' << types << ' ' << ends << '\n';
        std::vector<std::tuple<int, std::string, bool>> sorted;
        for (const auto& [node, target] : targets) {
            sorted.emplace_back(target.first, node, target.second);
        }
        std::ranges::sort(sorted);
        for (const auto& [files, node, isAdded] : sorted) {
            out_ << "target " << (isAdded ? "added " : "removed ") << node << ' ' << -files << '\n';
        }
        for (const auto& [link, isAdded] : rewired) {
            out_ << "rewired " << (isAdded ? "added " : "removed ") << link.first << ' '
                 << link.second << '\n';
        }
    }

    const SideFacts& left_;
    const SideFacts& right_;
    std::ostringstream out_;
};

}  // namespace

std::string referenceInsights(const std::shared_ptr<const graph::Graph>& left,
                              const std::shared_ptr<const graph::Graph>& right, std::size_t depth) {
    const SideFacts leftFacts(*left);
    const SideFacts rightFacts(*right);
    return Reference(leftFacts, rightFacts).text(depth);
}

}  // namespace dependency::test
