#include "reports/text_report.h"

#include <gtest/gtest.h>

#include "host_texts.h"

namespace depcompare {
namespace {

using test::compare;
using test::graphML;
using test::textOf;

const std::string header =
    "Comparing old (3 files, 3 dependencies)\n"
    "with      new (3 files, 3 dependencies)\n\n";

const std::string oldFile = graphML(
    "<node id='a'/><node id='b'><data key='k'>1</data></node><node id='c'/>"
    "<node id='x'><data key='type'>lib</data></node>"
    "<edge source='a' target='c'/><edge source='a' target='x'/><edge source='b' target='c'/>");
const std::string newFile = graphML(
    "<node id='a'/><node id='b'><data key='k'>2</data><data key='l'/></node><node id='d'/>"
    "<node id='x'><data key='type'>lib</data><data key='name'>X</data></node>"
    "<edge source='a' target='d'/><edge source='a' target='x'/>"
    "<edge source='a' target='d'><data key='type'>use</data></edge>");

TEST(TextReport, theTreeShowsWhatDiffersAndWhatItHangsOn) {
    EXPECT_EQ(
        textOf(compare(oldFile, newFile)),
        header +
            "= graph\n"
            "  = a\n"
            "    - -> c\n"
            "    + -> d\n"
            "    ~ -> x  (lib, name or type of an end changed)\n"
            "  ~ b  (1 property changed, 1 added)\n"
            "    - -> c\n"
            "  - c\n"
            "  + d\n"
            "\n"
            "Files                      1 added     1 removed     1 changed     1 unchanged\n"
            "Groups of dependencies     1 added     2 removed     1 changed     0 unchanged\n");
}

TEST(TextReport, unchangedFilesAreLeftOutAndEqualGraphsSaySo) {
    EXPECT_EQ(textOf(compare(oldFile, oldFile)),
              "Comparing old (3 files, 3 dependencies)\n"
              "with      new (3 files, 3 dependencies)\n\n"
              "No differences.\n");
}

TEST(TextReport, aTimeOfAnalysisIsADifferenceOfTheGraph) {
    const std::string text =
        textOf(compare(graphML("<data key='timestamp'>2026-01-01</data>"), graphML("")));
    EXPECT_NE(text.find("\n~ graph  (1 property removed)\n"), std::string::npos) << text;
}

TEST(TextReport, coloursGoBySignAndWidthByTerminal) {
    const std::string file = graphML("<node id='src/deeply/nested/folder/with/a/file.cc'/>");
    const std::string text = textOf(compare(graphML(""), file), {.colours = true, .columns = 30});
    EXPECT_NE(text.find("  \x1b[32m+ src/dee...r/with/a/file.cc\x1b[0m\n"), std::string::npos)
        << text;
    EXPECT_NE(text.find("\x1b[2m= graph\x1b[0m\n"), std::string::npos) << text;
}

TEST(TextReport, namesCannotSteerTheTerminal) {
    const std::string text =
        textOf(compare(graphML(""), graphML("<node id='a&#10;b\u202e\u009b1m'/>")));
    EXPECT_NE(text.find("  + a\\nb\\u202e\\x9b1m\n"), std::string::npos) << text;
}

}  // namespace
}  // namespace depcompare
