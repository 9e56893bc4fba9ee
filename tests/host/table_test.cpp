// Tables of differences have what the report in JSON has.
#include <map>
#include <sstream>
#include <string>
#include <utility>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "program.h"

namespace depcompare::test {
namespace {

using nlohmann::json;

using Counts = std::map<std::string, std::size_t>;  // by kind and edit

void countDifferences(const json& entry, Counts& counts) {
    const auto count = [&](const std::string& kind, const json& edit) {
        counts[kind + ',' + edit.get<std::string>()] += edit == "unchanged" ? 0 : 1;
    };
    const std::string kind = entry["kind"];
    if (entry["visible"] == true) {
        count(kind, entry["edit"]);
        json tables = json::array({entry["detail"]});
        if (tables[0].contains("parts")) {
            tables = tables[0]["parts"];
        }
        for (const json& table : tables) {
            for (const json& row : table.value("rows", json::array())) {
                count(kind == "group" ? "dependency" : kind + "_property", row["edit"]);
            }
        }
    }
    for (const json& child : entry["children"]) {
        countDifferences(child, counts);
    }
}

Counts linesOf(const std::string& table) {
    Counts counts;
    std::istringstream lines(table);
    std::string line;
    std::getline(lines, line);
    while (std::getline(lines, line)) {
        ++counts[line.substr(0, line.find(',', line.find(',') + 1))];
    }
    return counts;
}

TEST_F(Program, aTableHasALineForEachVisibleDifference) {
    const std::string samples = "'" EXAMPLES "/";
    for (const auto& [old, now] :
         {std::pair("ninja-v1.8.2.graphml", "ninja-v1.12.1.graphml"),
          std::pair("mocha-9.2.2.cdx.json.gz", "mocha-10.8.2.cdx.json.gz")}) {
        for (const char* filters : {"", "--no-filter ", "--filter unchanged "}) {
            std::string words = filters + samples;
            words.append(old).append("' ").append(samples).append(now).append("'");
            const Outcome outcome = run("-f json --report csv=table " + words);
            EXPECT_EQ(outcome.status, 1) << outcome.error;
            Counts expected;
            countDifferences(json::parse(outcome.output)["tree"], expected);
            std::erase_if(expected, [](const auto& count) { return count.second == 0; });
            EXPECT_EQ(linesOf(contentOf(folder_ / "table")), expected) << words;
        }
    }
}

}  // namespace
}  // namespace depcompare::test
