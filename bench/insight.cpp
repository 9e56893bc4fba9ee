// What insights cost beside a comparison, and how well renames are found.
//
//     bench_insight cost FILES            on a generated pair, one line per function
//     bench_insight renames GRAPHML...    on graphs with known moves, several seeds
#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>
#include <exception>
#include <iterator>
#include <map>
#include <set>
#include <span>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <depcompare/messages/messages.h>
#include <dependency/comparisons/compare_graphs.h>
#include <dependency/graph/graph_builder.h>
#include <dependency/insight/areas.h>
#include <dependency/insight/causes.h>
#include <dependency/insight/cycles.h>
#include <dependency/insight/reach.h>
#include <dependency/insight/renames.h>

#include "draft/marked_id.h"
#include "formats/load_graphs.h"
#include "generated_graphs.h"
#include "generator.h"
#include "random.h"

namespace depcompare::bench {
namespace {

namespace insight = dependency::insight;
using dependency::graph::Graph;
using GraphPointer = std::shared_ptr<const Graph>;

// ---- Cost

double cpuSeconds() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

class Stopwatch {
  public:
    template <class Work>
    auto operator()(const char* name, const Work& work) {
        const double before = cpuSeconds();
        auto result = work();
        const double seconds = cpuSeconds() - before;
        if (compareGraphs_ == 0) {
            compareGraphs_ = seconds;
        } else {
            sum_ += seconds;
        }
        print(name, seconds);
        return result;
    }
    void printSum() const { print("all insights", sum_); }

  private:
    void print(const char* name, double seconds) const {
        std::printf("%-16s %9.1f ms  %6.3f x compareGraphs\n", name, seconds * 1e3,
                    seconds / compareGraphs_);
    }

    double compareGraphs_ = 0;
    double sum_ = 0;
};

void measureCost(std::uint32_t files) {
    messages::registerMessages();
    const GeneratedPair pair = generatePair(files);
    const GraphPointer left = makeGraph(pair, 0);
    const GraphPointer right = makeGraph(pair, 1);
    Stopwatch measure;
    measure("compareGraphs", [&] { return dependency::comparisons::compareGraphs(left, right); });
    const auto graph = measure("LinkGraph", [&] { return insight::LinkGraph(left, right); });
    measure("findCycles", [&] { return insight::findCycles(graph); });
    const auto reach = measure("findReach", [&] { return insight::findReach(graph); });
    measure("findAreas", [&] { return insight::findAreas(graph); });
    measure("findOtherNodes", [&] { return insight::findOtherNodes(graph); });
    const auto renames = measure("findRenames", [&] { return insight::findRenames(graph); });
    measure("findCauses", [&] { return insight::findCauses(graph); });
    measure.printSum();
    std::printf("%zu links, %zu renames, reach %s\n", graph.linkCount(), renames.size(),
                reach ? "counted" : "left out");
}

// ---- Renames

enum class Fate { stays, folderMoved, renamed, moved, leftOnly, rightOnly };

struct PlainNode {
    std::u16string id;
    bool isFile = false;
    std::vector<dependency::graph::Property> properties;  // without digests
    Fate fate = Fate::stays;
    std::u16string newID;
    std::size_t neighbours = 0;
    bool isEdited = false;
};

using PlainLinks = std::set<std::pair<std::size_t, std::size_t>>;

struct PlainGraph {
    std::vector<PlainNode> nodes;
    PlainLinks links;
};

PlainGraph plainGraph(const Graph& graph) {
    PlainGraph plain;
    std::map<std::u16string, std::size_t> numbers;
    for (const auto& node : graph.getNodes()) {
        PlainNode copy{.id = std::u16string(idAsRead(node->getID())),
                       .isFile = *node->getType() == *dependency::graph::Type::FILE(),
                       .properties = {},
                       .newID = {}};
        for (const auto& key : node->getPropertyKeys()) {
            if (key != u"checksum") {
                copy.properties.emplace_back(key, node->getProperty(key));
            }
        }
        copy.newID = copy.id;
        numbers[node->getID()] = plain.nodes.size();
        plain.nodes.push_back(std::move(copy));
    }
    for (const auto& node : graph.getNodes()) {
        for (const auto& dependency : graph.getDownstreamDependencies(node)) {
            plain.links.emplace(numbers.at(node->getID()),
                                numbers.at(dependency->getDownstreamNode()->getID()));
        }
    }
    for (const auto& [from, to] : plain.links) {
        ++plain.nodes[from].neighbours;
        ++plain.nodes[to].neighbours;
    }
    return plain;
}

std::u16string folderOf(const std::u16string& id) {
    const auto at = id.rfind(u'/');
    return at == id.npos ? std::u16string() : id.substr(0, at);
}

std::u16string number(std::uint64_t value) {
    const std::string digits = std::to_string(value);
    return {digits.begin(), digits.end()};
}

/// Moves folders with about a sixth of the files, renames and moves a twelfth each, and leaves a
/// twentieth to either side alone.
class Mover {
  public:
    Mover(PlainGraph& graph, Random& random) : graph_(graph), random_(random) {
        for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
            if (graph.nodes[i].isFile) {
                files_.push_back(i);
                folders_.insert(folderOf(graph.nodes[i].id));
            }
        }
    }

    void move() {
        moveFolders();
        random_.shuffle(files_);
        std::size_t next = 0;
        for (const auto& [fate, parts] : {std::pair(Fate::renamed, 12),
                                          {Fate::moved, 12},
                                          {Fate::leftOnly, 20},
                                          {Fate::rightOnly, 20}}) {
            for (std::size_t count = files_.size() / static_cast<std::size_t>(parts);
                 count != 0 && next < files_.size(); ++next) {
                if (PlainNode& node = graph_.nodes[files_[next]]; node.fate == Fate::stays) {
                    give(node, fate);
                    --count;
                }
            }
        }
    }

  private:
    void moveFolders() {
        std::vector<std::u16string> folders(folders_.begin(), folders_.end());
        random_.shuffle(folders);
        std::size_t moved = 0;
        for (const auto& folder : folders) {
            if (folder.empty() || moved * 6 > files_.size()) {
                continue;
            }
            std::vector<PlainNode*> inside;
            for (const std::size_t i : files_) {
                if (graph_.nodes[i].id.starts_with(folder + u'/')) {
                    inside.push_back(&graph_.nodes[i]);
                }
            }
            const bool isFree = std::ranges::all_of(
                inside, [](const PlainNode* node) { return node->fate == Fate::stays; });
            if (!isFree || inside.size() < 2 || inside.size() * 3 > files_.size()) {
                continue;
            }
            const std::u16string last = folder.substr(folderOf(folder).size());
            const std::u16string target = random_.below(2) == 0
                                              ? folder + u"-" + number(random_.below(100))
                                              : u"moved" + number(random_.below(100)) + u'/' + last;
            for (PlainNode* node : inside) {
                node->fate = Fate::folderMoved;
                node->newID = target + node->id.substr(folder.size());
            }
            moved += inside.size();
        }
    }

    void give(PlainNode& node, Fate fate) {
        node.fate = fate;
        const auto at = node.id.rfind(u'/') + 1;
        if (fate == Fate::renamed) {
            const auto dot = node.id.rfind(u'.');
            const auto ending = dot == node.id.npos || dot < at ? u"" : node.id.substr(dot);
            node.newID =
                node.id.substr(0, at) + u"renamed" + number(random_.below(100'000)) + ending;
        } else if (fate == Fate::moved) {
            std::vector<std::u16string> others(folders_.begin(), folders_.end());
            std::erase(others, folderOf(node.id));
            others.emplace_back(u"other");
            node.newID = others[random_.below(others.size())] + u'/' + node.id.substr(at);
        }
    }

    PlainGraph& graph_;
    Random& random_;
    std::vector<std::size_t> files_;
    std::set<std::u16string> folders_;
};

bool isMove(Fate fate) {
    return fate == Fate::folderMoved || fate == Fate::renamed || fate == Fate::moved;
}

// Turns a fifth of the links of moved files to other files.
PlainLinks edited(PlainGraph& graph, Random& random) {
    std::vector<std::size_t> files;
    for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
        if (graph.nodes[i].isFile) {
            files.push_back(i);
        }
    }
    PlainLinks links;
    for (auto [from, to] : graph.links) {
        const bool ofMoved = isMove(graph.nodes[from].fate) || isMove(graph.nodes[to].fate);
        if (ofMoved && random.below(5) == 0) {
            graph.nodes[from].isEdited = true;
            (isMove(graph.nodes[from].fate) ? to : from) = files[random.below(files.size())];
            graph.nodes[from].isEdited = true;
        }
        links.emplace(from, to);
    }
    return links;
}

GraphPointer built(const PlainGraph& graph, const PlainLinks& links, bool isRight,
                   bool hasProperties) {
    dependency::graph::GraphBuilder builder;
    const auto type = builder.type(u"depends", u"depends");
    const auto other = builder.type(u"other", u"other");
    const auto component = builder.component(u"", type);
    std::vector<std::shared_ptr<dependency::graph::Node>> nodes(graph.nodes.size());
    std::set<std::u16string> used;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const PlainNode& node = graph.nodes[i];
        const auto& id = isRight ? node.newID : node.id;
        if (node.fate == (isRight ? Fate::leftOnly : Fate::rightOnly) || !used.insert(id).second) {
            continue;
        }
        std::vector<dependency::graph::Property> properties;
        if (hasProperties) {
            properties = node.properties;
            for (auto& [key, value] : properties) {
                if (isRight && node.isEdited && (key == u"size" || key == u"lines")) {
                    value += u'1';
                }
            }
        }
        nodes[i] = builder.addNode(id, id, node.isFile ? dependency::graph::Type::FILE() : other,
                                   std::move(properties));
    }
    std::uint64_t next = 0;
    for (const auto& [from, to] : links) {
        if (nodes[from] && nodes[to]) {
            builder.addDependency(number(next++), nodes[from], nodes[to], type, component,
                                  component);
        }
    }
    return builder.finish();
}

struct Score {
    std::size_t probable = 0;
    std::size_t right = 0;
    std::map<Fate, std::array<std::size_t, 2>> found;  // found, all

    void add(const PlainGraph& graph, const insight::LinkGraph& links) {
        std::map<std::u16string, const PlainNode*> truth;
        for (const PlainNode& node : graph.nodes) {
            if (isMove(node.fate)) {
                truth[node.id] = &node;
            }
        }
        std::set<std::u16string> foundIDs;
        for (const auto& rename : insight::findRenames(links)) {
            if (rename.probable()) {
                ++probable;
                const std::u16string from(links.id(rename.nodes.left));
                const auto node = truth.find(from);
                if (node != truth.end() && node->second->newID == links.id(rename.nodes.right)) {
                    ++right;
                    foundIDs.insert(from);
                }
            }
        }
        for (const auto& [id, node] : truth) {
            const auto from = links.find(id);
            const auto to = links.find(node->newID);
            // A place that was taken already, or with a file on both sides, is no move.
            const bool counts = from && to && links.edit(*from) == insight::Edit::removed &&
                                links.edit(*to) == insight::Edit::added &&
                                (node->fate == Fate::folderMoved || node->neighbours >= 3);
            if (counts) {
                ++found[node->fate][1];
                found[node->fate][0] += foundIDs.contains(id) ? 1U : 0U;
            }
        }
    }

    void print(const char* name, const char* properties) {
        const auto share = [](std::size_t part, std::size_t all) {
            return all == 0 ? 1.0 : static_cast<double>(part) / static_cast<double>(all);
        };
        const auto recall = [&](Fate fate) { return share(found[fate][0], found[fate][1]); };
        std::printf("%-24s %-10s %9zu %9.3f %9.3f %9.3f %9.3f\n", name, properties, probable,
                    share(right, probable), recall(Fate::folderMoved), recall(Fate::renamed),
                    recall(Fate::moved));
    }
};

void evaluateRenames(std::span<char* const> paths) {
    constexpr std::uint64_t seeds = 60;
    std::printf("%-24s %-10s %9s %9s %9s %9s %9s\n", "graph", "properties", "probable", "precision",
                "folders", "renamed", "moved");
    for (const char* path : paths) {
        const auto loaded = loadGraph(Input::open(path), {}, [](std::string_view) {});
        const PlainGraph plain = plainGraph(*loaded.graph);
        for (const bool hasProperties : {false, true}) {
            Score score;
            for (std::uint64_t seed = 1; seed <= seeds; ++seed) {
                Random random(seed);
                PlainGraph graph = plain;
                Mover(graph, random).move();
                const PlainLinks links = edited(graph, random);
                score.add(graph, insight::LinkGraph(built(graph, graph.links, false, hasProperties),
                                                    built(graph, links, true, hasProperties)));
            }
            const std::string_view name(path);
            score.print(std::string(name.substr(name.rfind('/') + 1)).c_str(),
                        hasProperties ? "with" : "without");
        }
    }
}

void run(std::span<char* const> arguments) {
    const std::string_view command = arguments.size() < 3 ? "" : arguments[1];
    if (command == "cost") {
        measureCost(static_cast<std::uint32_t>(std::stoul(arguments[2])));
    } else if (command == "renames") {
        evaluateRenames(arguments.subspan(2));
    } else {
        throw std::invalid_argument("bench_insight cost FILES | renames GRAPHML...");
    }
}

}  // namespace
}  // namespace depcompare::bench

int main(int argc, char* argv[]) {
    try {
        depcompare::bench::run({argv, static_cast<std::size_t>(argc)});
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "bench_insight: %s\n", error.what());
        return 2;
    }
}
