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
    static std::string graphRows(const std::string& left, const std::string& right) {
        return rowsOf("graph [" + left + ']', "graph [" + right + ']', "graph");
    }
    static std::string nodeRows(const std::string& left, const std::string& right) {
        return rowsOf("A [" + left + ']', "A [" + right + ']', "A");
    }

    const test::Catalogs catalogs;
};

TEST_F(PropertySubcomparatorTest, namesComeFromTheCatalogsOfTheGlobalLocale) {
    MessageCatalog::add("en", R"({
        "ORBITA:dependency:analysis": {"license": "First", "size": "Size"},
        "VeltrinoDependencyAnalysis:Analyze": {"license": "Second", "tool": "Tool"},
        "ORBITA:dependency:comparisons": {"license": "Third", "origin": "Origin",
                                          "npm:version": "Version"}})");
    const char* properties = "license=1 tool=2 origin=3 size=4 other=5";
    EXPECT_EQ(graphRows(properties, properties),
              "= First: 1\n= Size: 4\n= Tool: 2\n= origin: 3\n= other: 5\n");
    EXPECT_EQ(nodeRows(properties, properties),
              "= Origin: 3\n= Third: 1\n= other: 5\n= size: 4\n= tool: 2\n");
    EXPECT_EQ(nodeRows("npm:version=1", "npm:version=1"), "= Version: 1\n");
    MessageCatalog::add("de", R"({"ORBITA:dependency:analysis": {"license": "Lizenz"}})");
    fl::i18n::Locale::setGlobal(fl::i18n::Locale("de"));
    EXPECT_EQ(graphRows("license=1", ""), "< Lizenz: 1\n");
}

// The displayed name decides what is the analysis time, not the key.
TEST_F(PropertySubcomparatorTest, propertyNamedTimestampIsTheAnalysisTimeWhateverItsValue) {
    const auto shown = [](const char* time) {
        return test::utf8(fl::i18n::date_time::to_ustring(boost::posix_time::time_from_string(time),
                                                          fl::i18n::DateFormat{2}));
    };
    const std::string old = "2023-01-02 03:04:05";
    const std::string recent = "2024-05-06 07:08:09";
    const std::string left = "@ " + old + "\ngraph [timestamp=stored]";
    EXPECT_EQ(rowsOf(left, "@ " + recent + "\ngraph [timestamp=stored]", "graph"),
              "~ Analysis time: " + shown(old.c_str()) + " | " + shown(recent.c_str()) + "\n");
    EXPECT_EQ(rowsOf(left, "@ " + old + "\ngraph [timestamp=other]", "graph"),
              "= Analysis time: " + shown(old.c_str()) + "\n");
    EXPECT_EQ(graphRows("timestamp=1 \"Analysis time\"=2", ""), "< Analysis time: 2\n");
    EXPECT_EQ(rowsOf("@ " + old + "\ngraph [\"Analysis time\"=2 timestamp=1]", "", "graph"),
              "< Analysis time: " + shown(old.c_str()) + "\n");
    EXPECT_EQ(nodeRows("timestamp=1", "timestamp=2"), "~ timestamp: 1 | 2\n");
    MessageCatalog::add("en", R"({
        "ORBITA:dependency:analysis": {"timestamp": "When", "made": "timestamp"}})");
    EXPECT_EQ(rowsOf("@ " + old + "\ngraph [timestamp=1 made=2]", "", "graph"),
              "< Analysis time: " + shown(old.c_str()) + "\n< When: 1\n");
    MessageCatalog::clear();
    EXPECT_EQ(graphRows("license=1", "license=2"), "~ license: 1 | 2\n");
    EXPECT_THROW((void)graphRows("", "timestamp=1"), fl::i18n::MessageNotFound);
}

}  // namespace
}  // namespace dependency::comparisons
