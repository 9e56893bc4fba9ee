#include "reports/text/text_report.h"

#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "host_texts.h"

namespace depcompare {
namespace {

using test::compare;
using test::graphOf;
using test::textOf;

constexpr const char* oldFile =
    "a; b k=1; c; x type=lib; y type=lib name=m; z type=lib name=n; a>c; a>x;"
    "b>c upstream_component=line_1; b>x; b>y; b>z";
constexpr const char* newFile =
    "a; b k=2 long=; d; x type=lib name=A; y type=lib name=m; z type=lib name=n; b>x; b>y; b>z;"
    "a>d upstream_component=f downstream_component=g; a>x; a>d type=use;"
    "a>d type=use upstream_component=h";

struct Case {
    const char* about;
    std::string left;
    std::string right;
    std::vector<std::string> filters;
    TextStyle style;
    std::string expected;  // between the counts and the ending
};

TEST(TextReport, theTreeHasEveryVisibleEntryWithItsRowsBesideOrBelow) {
    const std::string digits = "0123456789";
    const std::string letters = "abcdefghijklmnopqrstuvwxyz";
    const std::string capitals = "0123456789ABCDEFGHIJklmnopqrstuvwxyz";
    const std::string path = "src/deeply/nested/folder/with/a/file.cc";
    const Case cases[] = {
        {"everything",
         oldFile,
         newFile,
         {},
         {},
         "= graph\n"
         "= a\n"
         "                                            Dependency type  Impacted component\n"
         "                                                           -> Required component\n"
         "  - -> c                                  - depends\n"
         "  + -> d                                  + depends          f -> g\n"
         "                                          + use\n"
         "                                          +                  h\n"
         "  ~ -> x (lib, name or type of an end changed)\n"
         "                                          = depends\n"
         "~ b\n"
         "      File property\n"
         "    ~ k  1 \u2192 2\n"
         "    + long\n"
         "  - -> c                                  - depends          line 1\n"
         "  ~ -> x (lib, name or type of an end changed, moved)\n"
         "                                          = depends\n"
         "  = -> y (lib)                            = depends\n"
         "  = -> z (lib)                            = depends\n"
         "- c\n"
         "+ d\n"},
        {"a hidden entry has no sign",
         oldFile,
         newFile,
         {"nonstructural"},
         {},
         "a           Dependency type  Impacted component -> Required component\n"
         "  - -> c  - depends\n"
         "  + -> d  + depends          f -> g\n"
         "          + use\n"
         "          +                  h\n"
         "b\n"
         "  - -> c  - depends          line 1\n"
         "- c\n"
         "+ d\n"},
        {"properties of added files and groups in which only components differ are left out",
         "a; b; c; d k=1; x type=lib; a>b upstream_component=1; a>c upstream_component=2; b>a "
         "type=s;"
         "b>c upstream_component=2; b>d; c>a upstream_component=1; c>b type=s; c>d; c>x; d>a",
         "a; b; c; e k=1; x type=l; a>b upstream_component=3; a>c upstream_component=4; b>a type=t;"
         "b>c upstream_component=3; c>a upstream_component=9; c>b type=s; c>b type=s"
         " upstream_component=2; c>x upstream_component=1; e>a",
         {"nonstructural"},
         {.columns = 50},
         "a  ~ 2 groups (only components differ)\n"
         "b                 Dependency type  Impacted component\n"
         "                             -> Required component\n"
         "  ~ -> a        - s\n"
         "                + t\n"
         "  - -> d        - depends\n"
         "  ~ -> c (only components differ)\n"
         "c\n"
         "  ~ -> b        + s                2\n"
         "  - -> d        - depends\n"
         "  ~ -> x (lib)  - depends\n"
         "                +                  1\n"
         "  ~ -> a (only components differ)\n"
         "- d\n"
         "  - -> a        - depends\n"
         "+ e\n"
         "  + -> a        + depends\n"},
        {"colours, and paths and values as wide as the terminal",
         "b",
         "b; b>" + path + "; " + path + " k=a_value_that_is_too_long_for_this",
         {},
         {.colours = true, .columns = 40},
         "\x1b[2m= graph\x1b[0m\n"
         "\x1b[2m= b\x1b[0m\n"
         "                      \x1b[2m  Dependency type  Impacted component\x1b[0m\n"
         "                      \x1b[2m  -> Required component\x1b[0m\n"
         "  \x1b[32m+ -> s...a/file.cc\x1b[0m  \x1b[32m+ depends\x1b[0m\n"
         "\x1b[32m+ src/deeply/...ed/folder/with/a/file.cc\x1b[0m\n"
         "      \x1b[2mFile property\x1b[0m\n"
         "    \x1b[32m+ k  a value t...s too long for this\x1b[0m\n"},
        {"short rows of one part share a line, as far as they fit",
         "a; b",
         "a; b; a>b upstream_component=first; a>b upstream_component=second;"
         "a>b upstream_component=third; a>b upstream_component=third_and_last; a>b type=use; a>b "
         "type=use upstream_component=fourth;"
         "a>b type=use upstream_component=" +
             letters,
         {"unchanged"},
         {.columns = 64},
         "a           Dependency type  Impacted component\n"
         "                             -> Required component\n"
         "  + -> b  + depends          first  + second  + third\n"
         "          +                  third and last\n"
         "          + use\n"
         "          +                  abcdefghijklmnopqrstuvwxyz\n"
         "          +                  fourth\n"},
        {"long values continue below",
         "a k=" + digits + letters + letters + letters + "; a>a upstream_component=" + letters,
         "a k=" + letters + letters + letters + digits + "; a>a upstream_component=" + letters +
             letters + letters,
         {"unchanged"},
         {},
         "~ a\n"
         "      File property\n"
         "    ~ k  0123456789abcdefghijklmnopqrstuvwxyzabcdefghijklmnopqrstuvwxyzabcdefghi\n"
         "         jklmnopqrstuvwxyz\n"
         "         \u2192 abcdefghijklmnopqrstuvwxyzabcdefghijklmnopqrstuvwxyzabcdefghijklmnopq\n"
         "         rstuvwxyz0123456789\n"
         "            Dependency type  Impacted component -> Required component\n"
         "  ~ -> a  - depends          abcdefghijklmnopqrstuvwxyz\n"
         "          +                  abcdefghijklmnopqrstuvwxyzabcdefghijklmnopqrstuvwxy\n"
         "                             zabcdefghijklmnopqrstuvwxyz\n"},
        {"values are shortened on a terminal",
         "a k=" + digits + letters + " " + letters + letters + "=value",
         "a k=" + letters + digits + " " + letters + letters + "=value_2 l=" + digits + letters,
         {"unchanged"},
         {.columns = 40},
         "~ a\n"
         "      File property\n"
         "    ~ abcdefghij...fghijklmnopqrstuvwxyz\n"
         "        value \u2192 value 2\n"
         "    ~ k\n"
         "        012...stuvwxyz \u2192 abc...23456789\n"
         "    + l\n"
         "        012345678...ghijklmnopqrstuvwxyz\n"},
        {"not if both sides would look alike",
         "a k=" + digits + letters,
         "a k=" + capitals,
         {"unchanged"},
         {.columns = 40},
         "~ a\n"
         "      File property\n"
         "    ~ k  0123456789abcdefghijklmnopqrstu\n"
         "         vwxyz\n"
         "         \u2192 0123456789ABCDEFGHIJklmnopqrs\n"
         "         tuvwxyz\n"},
    };
    for (const Case& example : cases) {
        Report report =
            compare(graphOf(example.left), graphOf(example.right), filtersNamed(example.filters));
        report.insights.reset();
        const std::string text = textOf(report, example.style);
        const std::size_t begin = text.find("\n\n", text.find("Graph properties")) + 2;
        EXPECT_EQ(text.substr(begin, text.find("\n\n", begin) + 1 - begin), example.expected)
            << example.about;
    }
}

TEST(TextReport, itBeginsWithInputsAndCountsAndEndsWithTheAccount) {
    Report report = compare(graphOf(std::string(oldFile) + "; a>c; x>a"), graphOf(newFile),
                            filtersNamed({"nonstructural"}));
    report.ledger.sides[1].warnings = {"odd\n" + std::string(90, 'x')};
    const std::string text = textOf(report);
    EXPECT_EQ(text.substr(0, text.find("\n\n")),
              "Comparing old (3 files, 8 dependencies)\n"
              "with      new (3 files, 7 dependencies)");
    EXPECT_NE(text.find("\n\nThe structure changed.\n"
                        "                     added   removed   changed unchanged\n"
                        "Files                    1         1         1         1\n"
                        "Groups                   1         2         2         2\n"
                        "Dependencies             3         2         0         4\n"
                        "File properties          1         0         1         0\n"
                        "Graph properties         0         0         0         0\n\n"),
              std::string::npos)
        << text;
    EXPECT_EQ(text.substr(text.find("\n\nHidden") + 2),
              "Hidden by the non-structural filter: 1 file, 2 groups, 2 rows; show with\n"
              "       --no-filter\n"
              "\n"
              "Left   6 nodes: 3 files, 3 lib;\n"
              "       8 dependencies: 6 compared, 1 duplicate, 1 leaving non-file nodes\n"
              "Right  6 nodes: 3 files, 3 lib; 7 dependencies: 7 compared\n"
              "       Warning: odd\\nxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx\n"
              "       xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx\n");
    const std::pair<const char*, const char*> verdicts[] = {
        {"a", "\n\nNo differences.\n  "}, {"a k=1", "\n\nNo visible differences.\n  "}};
    for (const auto& [newer, verdict] : verdicts) {
        const Report equal = compare(graphOf("a"), graphOf(newer), filtersNamed({"nonstructural"}));
        EXPECT_NE(textOf(equal).find(verdict), std::string::npos) << textOf(equal);
    }
}

TEST(TextReport, whatHappenedAtLargeComesBeforeTheTreeAsFarAsItFits) {
    std::string older =
        "m/a; m/b; m/c; m/d; n/x k=1; n/old.c hash=77; o/p; z type=lib; y type=lib;"
        "m/a>m/b; m/b>m/c; m/d>n/x; m/d>o/p; n/old.c>m/a; n/old.c>m/b; m/b>z;"
        "o/p>o/p; m/a>n/old.c upstream_component=1";
    std::string newer =
        "m/a; m/b; m/c; m/d; n/x k=2; n/new.c hash=77; o/p; q/very/deep/folder/name.c;"
        "y type=lib; m/a>m/b; m/b>m/c; m/c>m/a; m/d>n/x; m/d>m/a; n/new.c>m/a; n/new.c>m/b;"
        "m/b>y; o/p>q/very/deep/folder/name.c; m/a>n/new.c upstream_component=1";
    const Report report = compare(graphOf(older), graphOf(newer), filtersNamed({"nonstructural"}));
    const auto summaryOf = [](const Report& ofWhat, const TextStyle& style) {
        return test::written([&](Output& output) { writeSummaryReport(ofWhat, style, output); });
    };
    const auto atLarge = [&](const TextStyle& style) {
        const std::string text = summaryOf(report, style);
        return text.substr(text.find("\n\n") + 2);
    };
    EXPECT_EQ(atLarge({}),
              "Areas        + o -> q/very/deep (1)   - m -> o (1)   ~ n -> m (+2 -2)\n"
              "             ~ m -> n (+1 -1)\n"
              "Files in     n +1 -1   q/very/deep +1\n"
              "Other nodes  1 gone   - z (1 file)\n"
              "Cycles       2 \u2192 1: 1 changed, 1 gone\n"
              "             ~ 2 \u2192 4 nodes, closed by m/a -> n/new.c\n"
              "             - 1 node, opened by loss of o/p -> o/p\n"
              "Reach        12 \u2192 23 pairs of file and node, 21 % \u2192 36 % of all\n"
              "             + m/c -> m/a: 5 files gain up to 4  (4 more)\n"
              "             m/d: 2 \u2192 6, first by m/d -> m/a  (4 more)\n"
              "Renames      1 probable\n"
              "             n/old.c \u2192 n/new.c: 1.00, equal digest, 3 of 3 neighbours\n"
              "Groups       +7: 3 rewired, 1 to new nodes, 3 renamed\n"
              "             -6: 2 rewired, 1 to gone nodes, 3 renamed\n"
              "More: --insights full\n");
    EXPECT_EQ(atLarge({.colours = true, .columns = 50}),
              "\x1b[1mAreas\x1b[0m        \x1b[32m+ o -> q/very/deep (1)\x1b[0m   \x1b[31m- m -> o "
              "(1)\x1b[0m\n"
              "             \x1b[33m~ n -> m (+2 -2)\x1b[0m   \x1b[33m~ m -> n (+1 -1)\x1b[0m\n"
              "\x1b[1mFiles in\x1b[0m     n +1 -1   q/very/deep +1\n"
              "\x1b[1mOther nodes\x1b[0m  1 gone   \x1b[31m- z (1 file)\x1b[0m\n"
              "\x1b[1mCycles\x1b[0m       2 \u2192 1: 1 changed, 1 gone\n"
              "             \x1b[33m~ 2 \u2192 4 nodes, closed by m/a ->\x1b[0m\n"
              "             \x1b[33mn/new.c\x1b[0m  (1 more)\n"
              "\x1b[1mReach\x1b[0m        12 \u2192 23 pairs of file and node, 21 %\n"
              "             \u2192 36 % of all  (5 more)\n"
              "             m/d: 2 \u2192 6, first by\n"
              "             m/d -> m/a  (4 more)\n"
              "\x1b[1mRenames\x1b[0m      1 probable  (1 more)\n"
              "\x1b[1mGroups\x1b[0m       +7: 3 rewired, 1 to new nodes, 3\n"
              "             renamed\n"
              "             -6: 2 rewired, 1 to gone nodes, 3\n"
              "             renamed\n"
              "\x1b[2mMore: --insights full\x1b[0m\n");

    const Report moved = compare(graphOf("f/a hash=1; f/b hash=2"), graphOf("a hash=1; b hash=2"));
    EXPECT_NE(summaryOf(moved, {}).find("f \u2192 .: 2 files"), std::string::npos);
}

TEST(TextReport, namesCannotSteerTheTerminalNorTheLogOfABuild) {
    const std::string name = "\u00a0::warning" + std::string(90, ':');
    const std::string older = graphOf(name + ";##[group]");
    const std::string newer = graphOf(name + " k=::error" + std::string(99, ':') + ";##[group];" +
                                      name + ">##[group];##[group]>" + name);
    std::istringstream log(textOf(compare(older, newer)) +
                           textOf(compare(older, newer, filtersNamed({"nonstructural"}))));
    for (std::string line; std::getline(log, line);) {
        line.erase(0, line.find_first_not_of(" \u00a0"));
        EXPECT_FALSE(line.starts_with("::") || line.find("##[") != line.npos) << line;
    }
    const std::string text = textOf(
        compare(test::graphML(""),
                test::graphML(
                    // NOLINTNEXTLINE(misc-misleading-bidirectional): that is what is tested.
                    "<node id='a&#10;b\u202e\u009b1m'><data key='k&#9;'>\u009b2m</data></node>")));
    EXPECT_NE(text.find("+ a\\nb\\u202e\\x9b1m\n"), std::string::npos) << text;
    EXPECT_NE(text.find("+ k\\t  \\x9b2m\n"), std::string::npos) << text;
}

}  // namespace
}  // namespace depcompare
