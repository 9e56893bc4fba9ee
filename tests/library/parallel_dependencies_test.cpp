#include <dependency/comparisons/parallel_dependencies.h>

#include <algorithm>
#include <unordered_set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <dependency/comparisons/item.h>

#include "support/catalogs.h"
#include "support/text_graph.h"

namespace dependency::comparisons {
namespace {

using test::graphOf;
using test::groupOf;
using test::nodeOf;
using test::utf16;
using testing::UnorderedElementsAre;

std::vector<std::string> groupsOf(const std::shared_ptr<const graph::Graph>& graph,
                                  std::string_view upstream) {
    std::vector<std::string> texts;
    for (const auto& group :
         ParallelDependencies::createParallelDependencies(graph, nodeOf(graph, upstream))) {
        EXPECT_EQ(group.upstream, nodeOf(graph, upstream));
        std::string text = test::utf8(group.downstream->getID() + u" (" + group.id + u")");
        for (const auto& dependency : group.dependencies) {
            text += ' ' + test::utf8(dependency->getID());
        }
        texts.push_back(text);
    }
    return texts;
}

TEST(ParallelDependencies, groupsTheDependenciesOfAnUpstreamNodeByDownstreamNode) {
    const auto graph = graphOf(
        "x -> y [id=b]\n"
        "x -> z [id=c]\n"
        "y -> x [id=e]\n"
        "x -> y [id=ab]\n"
        "x -> y [id=a]\n"
        "x -> x [id=d]\n"
        "lib [type=external]\n"
        "x -> lib [id=f]\n"
        "lib -> x [id=g]");
    EXPECT_THAT(groupsOf(graph, "x"),
                UnorderedElementsAre("y (xy) a ab b", "z (xz) c", "x (xx) d", "lib (xlib) f"));
    EXPECT_THAT(groupsOf(graph, "lib"), UnorderedElementsAre("x (libx) g"));
    EXPECT_TRUE(groupsOf(graph, "z").empty());
}

TEST(ParallelDependencies, areEqualByTheirObjectsAndNotByTheirId) {
    const auto graph = graphOf("A -> B\nA -> B\nA -> C\nB -> A\nab -> c\na -> bc");
    const auto group = groupOf(graph, "A", "B");
    auto renamed = group;
    renamed.id = u"other";
    EXPECT_TRUE(renamed == group);
    EXPECT_EQ(std::hash<ParallelDependencies>{}(renamed), std::hash<ParallelDependencies>{}(group));

    auto fewer = group;
    fewer.dependencies.erase(fewer.dependencies.begin());
    auto otherPair = fewer;
    otherPair.dependencies = groupOf(graph, "A", "C").dependencies;
    for (const auto& unequal : {fewer, otherPair}) {
        EXPECT_FALSE(unequal == group);
        EXPECT_EQ(std::hash<ParallelDependencies>{}(unequal),
                  std::hash<ParallelDependencies>{}(group));
    }
    EXPECT_FALSE(fewer == otherPair);
    for (auto node : {&ParallelDependencies::upstream, &ParallelDependencies::downstream}) {
        auto otherEnd = group;
        otherEnd.*node = nodeOf(graph, "C");
        EXPECT_FALSE(otherEnd == group);
    }
    EXPECT_FALSE(groupOf(graph, "B", "A") == group);
    EXPECT_FALSE(groupOf(graph, "ab", "c") == groupOf(graph, "a", "bc"));
    EXPECT_FALSE(groupOf(graphOf("A -> B\nA -> B"), "A", "B") == group);
}

TEST(ParallelDependencies, startEmptyAndSwap) {
    const auto graph = graphOf("A -> B");
    auto a = groupOf(graph, "A", "B");
    ParallelDependencies b;
    EXPECT_TRUE(b.upstream == nullptr && b.downstream == nullptr && b.dependencies.empty() &&
                b.id.empty());
    std::swap(a, b);
    EXPECT_EQ(a.upstream, nullptr);
    EXPECT_TRUE(b == groupOf(graph, "A", "B"));
    EXPECT_EQ(b.id, u"AB");
}

// The names of the downstream nodes in the order of their groups; node n has the n-th line.
std::string sorted(const std::vector<std::string>& attributes) {
    std::string text;
    for (std::size_t i = 0; i < attributes.size(); ++i) {
        const std::string id = 'n' + std::to_string(i);
        text += id + " [" + attributes[i] + "]\nup -> " + id + '\n';
    }
    const auto graph = graphOf(text);
    auto groups = ParallelDependencies::createParallelDependencies(graph, nodeOf(graph, "up"));
    std::ranges::sort(groups, [](const auto& a, const auto& b) { return a < b; });
    std::string names;
    for (const auto& group : groups) {
        names += test::utf8(group.downstream->getName()) + ' ';
    }
    return names;
}

TEST(ParallelDependencies, orderByTypeIdAsItIsThenByLowerCasedName) {
    const test::Catalogs catalogs;
    const struct {
        std::vector<std::string> nodes;
        std::string expected;
    } cases[] = {
        {{"type=T2 name=a", "type=T1 name=z"}, "z a "},
        {{"name=Beta", "name=alpha"}, "alpha Beta "},
        {{"type=a name=1", "type=B name=2", "type=aa name=0"}, "2 1 0 "},
        {{"type=T:zzz name=b", "type=T:aaa name=c", "type=T name=a"}, "a b c "},
        {{"name=ab", "name=A", "name=aB1"}, "A ab aB1 "},
        {{"name=Ä", "name=z", "name=ä1"}, "z Ä ä1 "},
    };
    for (const auto& [nodes, expected] : cases) {
        EXPECT_EQ(sorted(nodes), expected);
    }
}

TEST(ParallelDependencies, orderNamesByTheRulesOfTheGlobalLocale) {
    const test::Catalogs catalogs;
    const std::vector<std::string> nodes{"name=IB", "name=ia", "name=jA", "type=a name=Z"};
    EXPECT_EQ(sorted(nodes), "Z ia IB jA ");
    fl::i18n::Locale::setGlobal(fl::i18n::Locale("tr_TR"));
    EXPECT_EQ(sorted(nodes), "Z ia jA IB ");
}

TEST(ParallelDependencies, equalSortKeysAreLessNeitherWay) {
    const auto graph =
        graphOf("up -> b [id=1]\nup -> c\ndown -> d\nb [name=X]\nc [name=x]\nd [name=X]");
    const auto b = groupOf(graph, "up", "b");
    for (const auto& other : {groupOf(graph, "up", "c"), groupOf(graph, "down", "d")}) {
        EXPECT_FALSE(b < other);
        EXPECT_FALSE(other < b);
    }
}

TEST(Item, comparesAndHashesByIdentityOfGraphsAndNodes) {
    const auto graph = graphOf("A -> B");
    const auto twin = graphOf("A -> B");
    std::unordered_set<std::optional<Item>> items;
    for (const auto& g : {graph, twin, graph}) {
        items.insert(Item(g));
        items.insert(Item(nodeOf(g, "A")));
        items.insert(Item(groupOf(g, "A", "B")));
        items.insert(std::nullopt);
    }
    EXPECT_EQ(items.size(), 7U);

    std::unordered_set<ItemEdit> edits;
    for (const bool changed : {false, true, false}) {
        edits.insert({Item(groupOf(graph, "A", "B")), Item(groupOf(twin, "A", "B")), changed});
        edits.insert({Item(groupOf(twin, "A", "B")), Item(groupOf(graph, "A", "B")), changed});
        edits.insert({Item(nodeOf(graph, "A")), std::nullopt, changed});
    }
    EXPECT_EQ(edits.size(), 6U);
}

}  // namespace
}  // namespace dependency::comparisons
