#include <gtest/gtest.h>
#include <boost/date_time/posix_time/posix_time.hpp>

#include <dependency/comparisons/graph_subcomparator.h>
#include <dependency/comparisons/node_subcomparator.h>
#include <fl/i18n/date_time.h>

#include "support/catalogs.h"
#include "support/comparison_text.h"
#include "support/text_graph.h"

namespace dependency::comparisons {
namespace {

using fl::i18n::MessageCatalog;
using test::rowsOf;

class PropertySubcomparatorTest : public testing::Test {
  protected:
    const test::Catalogs catalogs;

    static std::string graphRows(const std::string& left, const std::string& right) {
        return rowsOf("graph [" + left + ']', "graph [" + right + ']', "graph");
    }
    static std::string nodeRows(const std::string& left, const std::string& right) {
        return rowsOf("A [" + left + ']', "A [" + right + ']', "A");
    }
};

TEST_F(PropertySubcomparatorTest, rowsPairByNameAndChangeByValue) {
    const struct {
        const char* left;
        const char* right;
        const char* expected;
    } cases[] = {
        {"", "", ""},
        {"b=1 a=2", "a=2 b=1", "= a: 2\n= b: 1\n"},
        {"a=1", "a=2", "~ a: 1 | 2\n"},
        {"a=\"\"", "a=\"\" b=\"\"", "= a: \n> b: \n"},
        {"z=1 ab=2 a=3", "B=4", "> B: 4\n< a: 3\n< ab: 2\n< z: 1\n"},
        {"a=1 A=2", "A=1 a=2", "~ A: 2 | 1\n~ a: 1 | 2\n"},
        {"\"\"=1", "", "< \"\": 1\n"},
        {"a:b=1 c:=2", "", "< a:b: 1\n< c:: 2\n"},
        {"\U0001F600=1", "\uFF41=1", "< \U0001F600: 1\n> \uFF41: 1\n"},
    };
    for (const auto& [left, right, expected] : cases) {
        EXPECT_EQ(graphRows(left, right), expected) << left << " | " << right;
        EXPECT_EQ(nodeRows(left, right), expected) << left << " | " << right;
    }
}

TEST_F(PropertySubcomparatorTest, graphNamesComeFromTwoCatalogsAndNodeNamesFromAThird) {
    MessageCatalog::add("en", R"({
        "ORBITA:dependency:analysis": {"license": "First", "size": "Size"},
        "VeltrinoDependencyAnalysis:Analyze": {"license": "Second", "tool": "Tool"},
        "ORBITA:dependency:comparisons": {"license": "Third", "origin": "Origin"}})");
    const char* properties = "license=1 tool=2 origin=3 size=4 other=5";
    EXPECT_EQ(graphRows(properties, properties),
              "= First: 1\n= Size: 4\n= Tool: 2\n= origin: 3\n= other: 5\n");
    EXPECT_EQ(nodeRows(properties, properties),
              "= Origin: 3\n= Third: 1\n= other: 5\n= size: 4\n= tool: 2\n");
}

TEST_F(PropertySubcomparatorTest, namesFollowTheGlobalLocale) {
    fl::i18n::Locale::setGlobal(fl::i18n::Locale("de"));
    MessageCatalog::add("de", R"({
        "ORBITA:dependency:analysis": {"license": "Lizenz"},
        "ORBITA:dependency:comparisons": {"license": "Dateilizenz"}})");
    EXPECT_EQ(graphRows("license=1", ""), "< Lizenz: 1\n");
    EXPECT_EQ(nodeRows("license=1", ""), "< Dateilizenz: 1\n");
}

TEST_F(PropertySubcomparatorTest, lastKeyOfASideWinsAmongThoseWithOneName) {
    MessageCatalog::add("en", R"({
        "VeltrinoDependencyAnalysis:Analyze": {"a": "Same", "b": "Same"},
        "ORBITA:dependency:comparisons": {"a": "Same", "b": "Same"}})");
    for (const auto& rows : {graphRows, nodeRows}) {
        EXPECT_EQ(rows("a=1 b=2", "b=1 a=2"), "= Same: 2\n");
        EXPECT_EQ(rows("b=1 Same=2 a=3", "Same=4"), "~ Same: 3 | 4\n");
        EXPECT_EQ(rows("", "a=1 Same=2"), "> Same: 2\n");
    }
}

std::string shown(const char* time) {
    return test::utf8(fl::i18n::date_time::to_ustring(boost::posix_time::time_from_string(time),
                                                      fl::i18n::DateFormat{2}));
}

TEST_F(PropertySubcomparatorTest, propertyNamedTimestampIsTheAnalysisTimeWhateverItsValue) {
    const std::string old = "2023-01-02 03:04:05";
    const std::string recent = "2024-05-06 07:08:09";
    const std::string left = "@ " + old + "\ngraph [timestamp=stored]";
    const std::string right = "@ " + recent + "\ngraph [timestamp=stored]";
    EXPECT_EQ(rowsOf(left, right, "graph"),
              "~ Analysis time: " + shown(old.c_str()) + " | " + shown(recent.c_str()) + "\n");
    EXPECT_EQ(rowsOf(left, "@ " + old + "\ngraph [timestamp=other]", "graph"),
              "= Analysis time: " + shown(old.c_str()) + "\n");
    EXPECT_EQ(rowsOf(left, "@ " + recent, "graph"),
              "< Analysis time: " + shown(old.c_str()) + "\n");
    EXPECT_EQ(graphRows("timestamp=1 \"Analysis time\"=2", ""), "< Analysis time: 2\n");
    EXPECT_EQ(graphRows("\"Analysis time\"=2 timestamp=1", ""), "< Analysis time: \n");
    EXPECT_EQ(graphRows("Timestamp=1", ""), "< Timestamp: 1\n");
}

TEST_F(PropertySubcomparatorTest, displayedNameDecidesWhatIsTheAnalysisTimeNotTheKey) {
    MessageCatalog::add("en", R"({
        "ORBITA:dependency:analysis": {"timestamp": "When", "made": "timestamp"}})");
    EXPECT_EQ(rowsOf("@ 2024-05-06 07:08:09\ngraph [timestamp=1 made=2]", "", "graph"),
              "< Analysis time: " + shown("2024-05-06 07:08:09") + "\n< When: 1\n");
}

TEST_F(PropertySubcomparatorTest, analysisTimeNeedsItsLabelAndOtherPropertiesNone) {
    MessageCatalog::clear();
    EXPECT_EQ(graphRows("license=1", "license=2"), "~ license: 1 | 2\n");
    EXPECT_THROW((void)graphRows("timestamp=1", ""), fl::i18n::MessageNotFound);
    EXPECT_THROW((void)graphRows("", "timestamp=1"), fl::i18n::MessageNotFound);
    MessageCatalog::add("en", R"({"ORBITA:dependency:analysis": {"timestamp": "When"}})");
    EXPECT_EQ(graphRows("timestamp=1", ""), "< When: 1\n");
}

TEST_F(PropertySubcomparatorTest, nodesHaveNoAnalysisTime) {
    MessageCatalog::add("en", R"({"ORBITA:dependency:comparisons": {"made": "timestamp"}})");
    EXPECT_EQ(nodeRows("timestamp=1", "timestamp=2"), "~ timestamp: 1 | 2\n");
    EXPECT_EQ(nodeRows("timestamp=1 made=3", ""), "< timestamp: 3\n");
    MessageCatalog::clear();
    EXPECT_EQ(nodeRows("timestamp=1", ""), "< timestamp: 1\n");
}

TEST_F(PropertySubcomparatorTest, fileOfOneSideIsComparedWithNothing) {
    EXPECT_EQ(rowsOf("A [b=1 a=2]", "", "A"), "< a: 2\n< b: 1\n");
    EXPECT_EQ(rowsOf("", "A [checksum=1]", "A"), "> Checksum: 1\n");
}

template <class Row>
void expectOrderedByNameAlone() {
    using Edit = ::comparisons::StatefulEdit<std::optional<Row>, 2>;
    const Edit b(Row{u"b", u"1"}, std::nullopt, false);
    const Edit bToo(std::nullopt, Row{u"b", u"0"}, true);
    const Edit c(std::nullopt, Row{u"c", u"0"}, false);
    const Edit leftCounts(Row{u"a", u"9"}, Row{u"z", u"9"}, true);
    EXPECT_TRUE(b < c);
    EXPECT_FALSE(c < b);
    EXPECT_FALSE(b < bToo || bToo < b);
    EXPECT_TRUE(leftCounts < b);
    EXPECT_THROW((void)(Edit() < b), std::bad_optional_access);
    EXPECT_THROW((void)(b < Edit()), std::bad_optional_access);
}

TEST(PropertyEdits, orderByNameAlone) {
    expectOrderedByNameAlone<GraphProperty>();
    expectOrderedByNameAlone<NodeProperty>();
}

}  // namespace
}  // namespace dependency::comparisons
