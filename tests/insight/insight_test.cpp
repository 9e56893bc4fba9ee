// What random pairs do not tell: options, limits, renames.
#include <algorithm>
#include <cstddef>
#include <ctime>
#include <string>
#include <tuple>

#include <gtest/gtest.h>

#include <dependency/insight/paths.h>
#include <dependency/insight/renames.h>

#include "insight/insight_text.h"
#include "support/text_graph.h"

namespace dependency::test {
namespace {

using namespace insight;

LinkGraph linkGraph(const char* left, const char* right, const LinkOptions& options = {}) {
    return {graphOf(left), graphOf(right), options};
}

// Returns: a line per rename.
std::string renamesOf(const LinkGraph& graph, const RenameOptions& options = {}) {
    std::string text;
    for (const Rename& rename : findRenames(graph, options)) {
        text += utf8(graph.id(rename.nodes.left)) + " => " + utf8(graph.id(rename.nodes.right));
        text += rename.stated ? " stated" : rename.probable() ? " probable" : " possible";
        text += rename.ambiguous ? " ambiguous" : "";
        const RenameEvidence& evidence = rename.evidence;
        text += evidence.digest ? ", " + utf8(*evidence.digest) : "";
        text += evidence.name ? ", name" : "";
        if (evidence.folder) {
            text += ", " + utf8(evidence.folder->left) + " to " + utf8(evidence.folder->right) +
                    " with " + std::to_string(evidence.folder->others);
        }
        text += ", " + std::to_string(evidence.sharedNeighbours) + " of " +
                std::to_string(evidence.neighbours.left) + '/' +
                std::to_string(evidence.neighbours.right) + ", " +
                std::to_string(evidence.equalProperties) + " of " +
                std::to_string(evidence.properties) + '\n';
    }
    return text;
}

TEST(Insight, pathsAreShortestAndSmallest) {
    const LinkGraph graph = linkGraph("a -> c\na -> b\nb -> z\nc -> z\nz -> a\nq", "a -> z");
    const auto path = [&](Side side, const char16_t* from, const char16_t* to) {
        std::string text;
        for (const Number node : findPath(graph, side, *graph.find(from), *graph.find(to))) {
            text += utf8(graph.id(node));
        }
        return text;
    };
    EXPECT_EQ(path(Side::left, u"a", u"z"), "abz");
    EXPECT_EQ(path(Side::right, u"a", u"z"), "az");
    EXPECT_EQ(path(Side::left, u"a", u"a"), "abza");
    EXPECT_EQ(path(Side::right, u"a", u"a"), "");
    EXPECT_EQ(path(Side::left, u"z", u"q"), "");
}

TEST(Insight, nodesAreFoundByIdOrByEnding) {
    const LinkGraph graph = linkGraph("x/a -> y/a\na", "b\nx/pa.h\nx/hpa.h");
    EXPECT_EQ(findNodes(graph, u"a"), std::vector<Number>{0});
    EXPECT_EQ(findNodes(graph, u"/a"), (std::vector<Number>{2, 5}));
    EXPECT_EQ(findNodes(graph, u"pa.h"), std::vector<Number>{4});
    EXPECT_EQ(findNodes(graph, u"a.h"), (std::vector<Number>{3, 4}));
    EXPECT_EQ(findNodes(graph, u"pa.h", u"x"), (std::vector<Number>{3, 4}));
    EXPECT_EQ(findNodes(graph, u"c"), std::vector<Number>());
}

TEST(Insight, optionsChooseIdsAndTypes) {
    const LinkGraph graph = linkGraph(
        "!a/x -> !b/y [type=soft]\n!a/x -> !b/z [type=never]", "!a/x -> !b/y [type=hard]",
        {.displayedID =
             [](const graph::Node& node) { return std::u16string_view(node.getID()).substr(1); },
         .isSelected = [](std::u16string_view type) { return type != u"never"; },
         .isSoft = [](std::u16string_view type) { return type == u"soft"; }});
    ASSERT_EQ(graph.linkCount(), 1U);
    EXPECT_EQ(graph.id(0), u"a/x");
    const LinkState& state = graph.from(0).front().state;
    EXPECT_EQ(state.edit(), Edit::common);
    EXPECT_EQ(state.edit(Strength::hard), Edit::added);
    EXPECT_EQ(state.change(), LinkChange::types);
    EXPECT_EQ(findAreas(graph).areas.at(1).name, u"b");
}

TEST(Insight, reachIsLeftOutPastItsBudget) {
    const LinkGraph graph = linkGraph("a -> b", "a -> b\nb -> c");
    EXPECT_FALSE(findReach(graph, {.work = 1}));
    const auto reach = findReach(graph, {.files = 1, .links = 0});
    ASSERT_TRUE(reach);
    EXPECT_EQ(reach->filesAll, 2U);
    EXPECT_EQ(textOf(graph, *reach), "reach 1 0.5\nreach 3 0.5\n  a 1/2 +1 -0 a b c\n");
}

TEST(Insight, areasOtherNodesAndCausesAreCounted) {
    const LinkGraph graph = linkGraph(
        "a/x/1 [size=1]\na/y/5 [name=n]\nlib [type=external]\nold [type=external]\n/r\n"
        "a/x/1 -> a/x/2\na/x/1 -> b/3\na/x/2 -> b/3 [from=f]\na/x/2 -> old\nb/3 -> b/4\n"
        "b/4 -> a/x/1\nb/3 -> b/6 [type=use]\nlib -> b/3\na/y/5 -> b/3\n/r -> top",
        "a/x/1 [size=2]\na/y/5 [name=N]\nlib [type=external]\nnew [type=external]\n/r\n"
        "a/x/1 -> a/x/2\na/x/2 -> b/3 [from=g]\na/x/2 -> b/6\na/x/2 -> lib\na/x/2 -> new\n"
        "b/3 -> b/6 [type=call]\nb/3 -> new\nc/7 -> b/3\nc/7 -> a/y/5\na/y/5 -> b/3\n"
        "/r -> top");
    EXPECT_EQ(textOf(graph, findAreas(graph, {.depth = 1})),
              "area . 2/2 +0 -0 ~0 1/1 0/0 0/0\n"
              "area a 3/3 +0 -0 ~1 1/1 3/3 1/1\n"
              "area b 3/2 +0 -1 ~0 2/1 1/0 3/4\n"
              "area c 0/1 +1 -0 ~0 0/0 0/2 0/0\n"
              "  a -> b 3/3 +1 -1 a/x/2 b/6; a/x/1 b/3;\n"
              "  b -> a 1/0 +0 -1 b/4 a/x/1;\n"
              "  c -> a 0/1 +1 -0 c/7 a/y/5;\n"
              "  c -> b 0/1 +1 -0 c/7 b/3;\n");
    EXPECT_EQ(findAreas(graph, {.depth = 2}).areas.at(1).name, u"a/x");
    EXPECT_EQ(textOf(graph, findOtherNodes(graph)), "new new 2\ngone old 1\n");
    EXPECT_EQ(textOf(graph, findCauses(graph)),
              "added 0 2 2 2\nremoved 0 1 2 1\nchanged 1 1 1\n"
              "target added new 2\ntarget removed b/4 1\ntarget removed old 1\n"
              "rewired removed a/x/1 b/3\nrewired added a/x/2 b/6\nrewired added a/x/2 lib\n");
}

TEST(Insight, areasMayBeProperties) {
    const LinkGraph graph =
        linkGraph("a [team=x]\nb [team=y]\nlib [type=external team=y]\na -> lib",
                  "a [team=x]\nb [team=x]\nlib [type=external team=y]\nc\n"
                  "a -> lib\nb -> lib\nc -> other\nother [type=external]");
    EXPECT_EQ(textOf(graph, findAreas(graph, {.property = u"team"})),
              "area . 0/1 +1 -0 ~0 0/0 0/0 0/0\n"
              "area x 1/2 +0 -0 ~1 0/0 1/2 0/0\n"
              "area y 1/0 +0 -0 ~0 0/0 0/0 1/2\n"
              "  x -> y 1/2 +1 -0 b lib;\n");
    EXPECT_THROW(static_cast<void>(findAreas(graph, {.depth = 0})), std::invalid_argument);
}

TEST(Insight, manyFoldersMakeShallowAreas) {
    std::string text;
    for (int i = 0; i < 61; ++i) {
        text += "a/b/" + std::to_string(i) + "/f -> a/x\n";
    }
    const Areas areas = findAreas(linkGraph(text.c_str(), ""));
    EXPECT_EQ(areas.depth, 2U);
    ASSERT_EQ(areas.areas.size(), 2U);
    EXPECT_EQ(areas.areas[1].name, u"a/b");
}

// What stays on both sides: something that evidence is held against.
std::string surroundings() {
    std::string text;
    for (int i = 0; i < 40; ++i) {
        const std::string number = std::to_string(i);
        text += "keep/" + number + ".c -> keep/" + std::to_string(i * 7 % 40) + ".h\n";
        text += "keep/" + number + ".c -> keep/" + std::to_string(i * 3 % 40) + ".h\n";
    }
    return text;
}

// Files that have two neighbours in common, and one of their own.
std::string alike(const std::string& name) {
    std::string text;
    for (int i = 0; i < 6; ++i) {
        for (const int header : {1, 2, 10 + i}) {
            text +=
                "s/" + name + std::to_string(i) + ".c -> keep/" + std::to_string(header) + ".h\n";
        }
    }
    return text;
}

TEST(Insight, renamesAreFoundByEvidence) {
    struct Case {
        const char* about;
        std::string left;
        std::string right;
        std::string expected;
    };
    const Case cases[] = {
        {"a digest", "old.c [sha1=abc size=1]", "src/new.c [sha1=abc size=1]",
         "old.c => src/new.c probable, sha1, 0 of 0/0, 1 of 1\n"},
        {"a digest that several have", "o.c [hash=a]\np.c [hash=a]", "n.h [hash=a]", ""},
        {"a folder moved", "x/a.c -> x/a.h\nx/b.c -> x/a.h\nx/b.c -> x/b.h",
         "y/a.c -> y/a.h\ny/b.c -> y/a.h\ny/b.c -> y/b.h",
         "x/a.c => y/a.c probable, name, x to y with 3, 1 of 1/1, 0 of 0\n"
         "x/a.h => y/a.h probable, name, x to y with 3, 2 of 2/2, 0 of 0\n"
         "x/b.c => y/b.c probable, name, x to y with 3, 2 of 2/2, 0 of 0\n"
         "x/b.h => y/b.h probable, name, x to y with 3, 1 of 1/1, 0 of 0\n"},
        {"neighbours", "s/old.c -> keep/1.h\ns/old.c -> keep/9.h\nkeep/5.c -> s/old.c",
         "s/new.c -> keep/1.h\ns/new.c -> keep/9.h\nkeep/5.c -> s/new.c",
         "s/old.c => s/new.c probable, 3 of 3/3, 0 of 0\n"},
        {"neighbours, with rivals whose own partners are nearer", alike("o"), alike("n"),
         "s/o0.c => s/n0.c probable, 3 of 3/3, 0 of 0\n"
         "s/o1.c => s/n1.c probable, 3 of 3/3, 0 of 0\n"
         "s/o2.c => s/n2.c probable, 3 of 3/3, 0 of 0\n"
         "s/o3.c => s/n3.c probable, 3 of 3/3, 0 of 0\n"
         "s/o4.c => s/n4.c probable, 3 of 3/3, 0 of 0\n"
         "s/o5.c => s/n5.c probable, 3 of 3/3, 0 of 0\n"},
        {"nothing in common", "s/old.c -> keep/1.h", "t/new.py -> keep/2.h", ""},
    };
    for (const auto& [about, left, right, expected] : cases) {
        const LinkGraph graph =
            linkGraph((surroundings() + left).c_str(), (surroundings() + right).c_str());
        EXPECT_EQ(renamesOf(graph), expected) << about;
    }
}

// There is hardly a file that stays, and no property: names and the links among them must do.
TEST(Insight, aFolderThatMovedAsAWholeIsFound) {
    const std::string inside =
        "-> lib/a\nlib/a -> lib/b\nlib/a -> lib/c\nlib/b -> lib/d\nlib/c -> lib/e\nlib/e -> "
        "lib/f\nlib/g";
    const auto moved = [](std::string text) {
        for (std::size_t at = 0; (at = text.find("lib/", at)) != std::string::npos; ++at) {
            text.replace(at, 3, "src");
        }
        return text;
    };
    const std::tuple<const char*, std::string, std::string, std::size_t> cases[] = {
        {"all links are as before", "main " + inside, "main " + moved(inside), 7},
        {"one file stayed", "main " + inside + "\nlib/z", "main " + moved(inside) + "\nlib/z", 0},
        {"other links", "main " + inside,
         "main -> src/f\nsrc/f -> src/a\nsrc/d -> src/a\nsrc/b -> src/e\nsrc/b -> src/c\n"
         "src/e -> src/d\nsrc/g",
         0},
    };
    for (const auto& [about, left, right, probable] : cases) {
        const auto renames = findRenames(linkGraph(left.c_str(), right.c_str()));
        EXPECT_EQ(static_cast<std::size_t>(std::ranges::count_if(renames, &Rename::probable)),
                  probable)
            << about;
    }
}

TEST(Insight, renamesAreStatedOrForbidden) {
    const LinkGraph graph = linkGraph((surroundings() + "old.c [sha1=abc]\nother.c").c_str(),
                                      (surroundings() + "src/new.c [sha1=abc]\nkeep/1.c").c_str());
    const NodePair guessed{*graph.find(u"old.c"), *graph.find(u"src/new.c")};
    const NodePair stated{*graph.find(u"other.c"), guessed.right};
    EXPECT_EQ(renamesOf(graph, {.forbidden = {guessed}}), "");
    EXPECT_EQ(renamesOf(graph, {.stated = {stated}}),
              "other.c => src/new.c stated, 0 of 0/0, 0 of 0\n");
    const NodePair common{guessed.left, *graph.find(u"keep/1.c")};
    for (const auto& wrong : {std::vector{common}, std::vector{stated, guessed}}) {
        EXPECT_THROW(static_cast<void>(findRenames(graph, {.stated = wrong})),
                     std::invalid_argument);
        EXPECT_THROW(static_cast<void>(findCauses(graph, wrong)), std::invalid_argument);
    }
}

// Four times as deep may cost four times as much, and some more for noise.
TEST(Insight, deepPathsCostNoMoreThanTheirText) {
    const auto ticks = [](bool isOneName, int depth) {
        std::string folders;
        for (int folder = 0; folder < depth; ++folder) {
            folders += "/d";
        }
        std::string left;
        std::string right;
        for (int i = 0; i < 100; ++i) {
            const std::string number = std::to_string(i);
            const std::string path = number + folders + (isOneName ? "/n" : "/n" + number) + '\n';
            left += "l" + path;
            right += "r" + path;
        }
        const LinkGraph graph = linkGraph(left.c_str(), right.c_str());
        const std::clock_t start = std::clock();
        static_cast<void>(findRenames(graph));
        return std::clock() - start;
    };
    for (const bool isOneName : {false, true}) {
        EXPECT_LE(ticks(isOneName, 1'000), 8 * ticks(isOneName, 250) + CLOCKS_PER_SEC / 10);
    }
}

TEST(Insight, renamesAreTheFirstCause) {
    const LinkGraph graph =
        linkGraph("old -> lib\nuser -> old\nold -> gone", "new -> lib\nuser -> new\nnew -> user");
    const NodePair rename{*graph.find(u"old"), *graph.find(u"new")};
    EXPECT_EQ(textOf(graph, findCauses(graph, std::vector{rename})),
              "added 2 1 0 0\nremoved 2 1 0 0\nchanged 0 0 0\n");
}

}  // namespace
}  // namespace dependency::test
