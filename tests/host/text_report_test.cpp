#include "reports/text/text_report.h"

#include <gtest/gtest.h>

#include "host_texts.h"

namespace depcompare {
namespace {

using test::compare;
using test::graphML;
using test::textOf;

// NOLINTBEGIN(cert-err58-cpp): a test that cannot even copy a text may end.
const std::string header =
    "Comparing old (3 files, 3 dependencies)\n"
    "with      new (3 files, 4 dependencies)\n\n";

const std::string oldFile = graphML(
    "<node id='a'/><node id='b'><data key='k'>1</data></node><node id='c'/>"
    "<node id='x'><data key='type'>lib</data></node>"
    "<edge source='a' target='c'/><edge source='a' target='x'/>"
    "<edge source='b' target='c'><data key='upstream_component'>line 1</data></edge>");
const std::string newFile = graphML(
    "<node id='a'/><node id='b'><data key='k'>2</data><data key='long'/></node><node id='d'/>"
    "<node id='x'><data key='type'>lib</data><data key='name'>X</data></node>"
    "<edge source='a' target='d'><data key='upstream_component'>f</data>"
    "<data key='downstream_component'>g</data></edge><edge source='a' target='x'/>"
    "<edge source='a' target='d'><data key='type'>use</data></edge>"
    "<edge source='a' target='d'><data key='type'>use</data>"
    "<data key='upstream_component'>h</data></edge>");
// NOLINTEND(cert-err58-cpp)

/// Returns: the report's lines between the header and the ending.
std::string treeOf(const std::string& left, const std::string& right,
                   const std::vector<std::string>& filters, const TextStyle& style = {}) {
    const std::string text = textOf(compare(left, right, filtersNamed(filters)), style);
    const std::size_t begin = text.find("\n\n") + 2;
    return text.substr(begin, text.find("\n\n", begin) + 1 - begin);
}

TEST(TextReport, entriesStandOnTheLeftAndTheirRowsBesideOrBelowThem) {
    EXPECT_EQ(treeOf(oldFile, newFile, {}),
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
              "- c\n"
              "+ d\n");
}

TEST(TextReport, aHiddenEntryStandsWithoutASignAboveWhatIsVisible) {
    EXPECT_EQ(treeOf(oldFile, newFile, {"nonstructural"}),
              "a           Dependency type  Impacted component -> Required component\n"
              "  - -> c  - depends\n"
              "  + -> d  + depends          f -> g\n"
              "          + use\n"
              "          +                  h\n"
              "b\n"
              "  - -> c  - depends          line 1\n"
              "- c\n"
              "+ d\n");
}

TEST(TextReport, itEndsWithWhatIsHiddenWithTheLedgerAndTheCounts) {
    const std::string text = textOf(compare(oldFile, newFile, filtersNamed({"nonstructural"})));
    EXPECT_EQ(text.substr(0, header.size()), header);
    EXPECT_EQ(text.substr(text.find("\n\nHidden") + 2),
              "Hidden by the non-structural filter: the graph, 2 files, 1 group, 3\n"
              "       rows; show with --no-filter\n"
              "\n"
              "Left   4 nodes: 3 files, 1 lib; 3 dependencies: 3 compared\n"
              "Right  4 nodes: 3 files, 1 lib; 4 dependencies: 4 compared\n"
              "\n"
              "                     added   removed   changed unchanged\n"
              "Files                    1         1         1         1\n"
              "Groups                   1         2         1         0\n"
              "Dependencies             3         2         0         1\n"
              "File properties          1         0         1         0\n"
              "Graph properties         0         0         0         0\n");
    EXPECT_EQ(textOf(compare(oldFile, newFile)).find("Hidden"), std::string::npos);
}

TEST(TextReport, graphsWithoutAVisibleDifferenceSaySo) {
    const std::string other = graphML("<node id='a'><data key='k'>1</data></node>");
    const std::string one = graphML("<node id='a'/>");
    EXPECT_EQ(treeOf(one, one, {}), "No differences.\n");
    EXPECT_EQ(treeOf(one, one, {"nonstructural"}), "No differences.\n");
    EXPECT_EQ(treeOf(one, other, {"nonstructural"}), "No visible differences.\n");
}

TEST(TextReport, coloursGoBySignAndWidthByTerminal) {
    const std::string file = graphML(
        "<node id='src/deeply/nested/folder/with/a/file.cc'><data key='k'>a value that is too "
        "long for this</data></node><node id='b'/>"
        "<edge source='b' target='src/deeply/nested/folder/with/a/file.cc'/>");
    EXPECT_EQ(treeOf(graphML("<node id='b'/>"), file, {}, {.colours = true, .columns = 40}),
              "\x1b[2m= graph\x1b[0m\n"
              "\x1b[2m= b\x1b[0m\n"
              "                      \x1b[2m  Dependency type  Impacted component\x1b[0m\n"
              "                      \x1b[2m  -> Required component\x1b[0m\n"
              "  \x1b[32m+ -> s...a/file.cc\x1b[0m  \x1b[32m+ depends\x1b[0m\n"
              "\x1b[32m+ src/deeply/...ed/folder/with/a/file.cc\x1b[0m\n"
              "      \x1b[2mFile property\x1b[0m\n"
              "    \x1b[32m+ k  a value t...s too long for this\x1b[0m\n");
}

TEST(TextReport, namesCannotSteerTheTerminal) {
    const std::string text = treeOf(
        graphML(""),
        // NOLINTNEXTLINE(misc-misleading-bidirectional): that is what is tested.
        graphML("<node id='a&#10;b\u202e\u009b1m'><data key='k&#9;'>\u009b2m</data></node>"), {});
    EXPECT_NE(text.find("+ a\\nb\\u202e\\x9b1m\n"), std::string::npos) << text;
    EXPECT_NE(text.find("+ k\\t  \\x9b2m\n"), std::string::npos) << text;
}

}  // namespace
}  // namespace depcompare
