// What fuzzing found, and what it starts from, along the whole path; and that its rules can be broken.
#include "whole_path.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>

#include <depcompare/messages/messages.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "host_texts.h"
#include "report_contract.h"

namespace depcompare {
namespace {

using nlohmann::json;
using test::compare;
using test::graphOf;
using test::jsonOf;

TEST(WholePath, noInputOfTheFuzzersBreaksARule) {
    messages::registerMessages();
    for (const auto& entry : std::filesystem::recursive_directory_iterator(FUZZ_CORPUS)) {
        if (entry.is_regular_file()) {
            std::ifstream file(entry.path());
            const std::string bytes{std::istreambuf_iterator<char>(file), {}};
            EXPECT_EQ(fuzz::brokenRule(bytes), "") << entry.path();
            // Both sides differ: a word here, an element there.
            EXPECT_EQ(fuzz::brokenRule(bytes + '\0' + "!!!!!!!!" + "\"+4zz" + "$Zaz!"), "")
                << entry.path();
        }
    }
}

TEST(WholePath, aReportThatSaysSomethingElseBreaksARule) {
    const std::string older = graphOf("a k=1; b; a>b; x type=lib; a>x");
    const std::string newer = graphOf("a k=2; c; a>c; x type=lib; a>x; c>a");
    const json report = jsonOf(compare(older, newer));
    const json swapped = jsonOf(compare(newer, older));
    const json same = jsonOf(compare(newer, newer));
    EXPECT_NO_THROW(test::requireContract(report));
    EXPECT_THROW(test::requireNoDifference(report), test::BrokenRule);
    EXPECT_NO_THROW(test::requireNoDifference(same));
    const std::pair<const char*, json> changes[] = {
        {"/summary/files/added", 2},        {"/summary/groups/unchanged", 0},
        {"/ledger/left/folded", 1},         {"/ledger/right/otherNodes/lib", 2},
        {"/ledger/rows/visible", 3},        {"/insights/causes/added/file", 7},
        {"/tree/children/0/edit", "added"}, {"/tree/children/0/visible", false},
        {"/tree/children/0/metrics/2", 0},  {"/tree/children/0/detail/rows", json::array()},
        {"/tree/children/2/position/1", 0},
    };
    for (const auto& [place, value] : changes) {
        json changed = report;
        changed.at(json::json_pointer(place)) = value;
        EXPECT_THROW(test::requireContract(changed), test::BrokenRule) << place;
        EXPECT_THROW(test::requireMirrorImage(changed, swapped), test::BrokenRule) << place;
    }
}

}  // namespace
}  // namespace depcompare
