// Tables of differences, and the versions of packages, as the program writes them.
#include <map>
#include <sstream>
#include <string>
#include <tuple>
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

TEST_F(Program, aTableHasIDsAndKeysAndNoFormula) {
    const auto file = [](const std::string& content) {
        return R"({"graph": {"metadata": )" + content + "}}";
    };
    write("old", file(R"({"timestamp": "2026-01-02T03:04:05"}, "nodes": {
        "@a": {"label": "A", "metadata": {"checksum": "1", "a\"b": "x,y"}}, "gone": {},
        "-b": {"metadata": {"type": "lib"}}, "'c": {}},
        "edges": [{"source": "@a", "target": "-b", "relation": "use"},
                  {"source": "@a", "target": "'c", "metadata": {"downstream_component": "f",
                   "downstream_component_type": "one"}}])"));
    write("new", file(R"({"timestamp": "2026-01-02T03:04:06"}, "nodes": {
        "@a": {"label": "B", "metadata": {"checksum": "=1", "a\"b": "x,y"}}, "'c": {},
        "-b": {"metadata": {"type": "ext"}}, "\t+": {}},
        "edges": [{"source": "@a", "target": "-b", "relation": "use"}, {"source": "\t+", "target": "@a"},
                  {"source": "@a", "target": "'c", "metadata": {"downstream_component": "f",
                   "downstream_component_type": "two"}}])"));
    const std::string expected =
        "kind,edit,upstream,downstream,dependency_type,upstream_component,downstream_component,"
        "property,old,new\r\n"
        "graph,changed,,,,,,,,\r\n"
        "graph_property,changed,,,,,,timestamp,2026-01-02T03:04:05,2026-01-02T03:04:06\r\n"
        "file,added,\\t+,,,,,,,\r\n"
        "group,added,\\t+,'@a,,,,,,\r\n"
        "dependency,added,\\t+,'@a,depends,,,,,\r\n"
        "file,changed,'@a,,,,,name,A,B\r\n"
        "file_property,changed,'@a,,,,,checksum,1,'=1\r\n"
        "group,changed,'@a,'-b,,,,upstream_name,A,B\r\n"
        "group,changed,'@a,'-b,,,,downstream_type,lib,ext\r\n"
        "group,changed,'@a,''c,,,,upstream_name,A,B\r\n"
        "dependency,changed,'@a,''c,depends,,f,downstream_component_type,one,two\r\n"
        "file,removed,gone,,,,,,,\r\n";
    EXPECT_EQ(run("--locale de -f csv --no-filter old new").output, expected);
    const std::string structural = run("-f tsv --raw old new").output;
    EXPECT_NE(structural.find("\nfile\tadded\t\"\t+\"\t\t"), std::string::npos) << structural;
    EXPECT_EQ(structural.find("checksum"), std::string::npos) << structural;
    EXPECT_EQ(run("-f csv old old").output, expected.substr(0, expected.find('\n') + 1));
}

TEST_F(Program, versionsAreShownByDefaultAndCountedAsUpDownOrOther) {
    const auto list = [](const std::string& version) {
        return R"({"bomFormat": "CycloneDX", "components": [{"bom-ref": "a", "name": "a")" +
               (version.empty() ? "" : R"(, "version": ")" + version + '"') +
               R"(, "hashes": [{"alg": "MD5", "content": ")" + version + R"("}]}]})";
    };
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"1.9.9", "1.10.0", "up"},
        {"v1.0.0-rc.9", "1.0.0-rc.10", "up"},
        {"1.0.0-9", "1.0.0-a", "up"},
        {"1.0.0", "1.0.0-rc.1", "down"},
        {"1.0.0-a.b", "1.0.0-a", "down"},
        {"1.2", "1.10.0.1", "up"},
        {"10000000000000000000000", "9", "down"},
        {"1.0.0+a", "1.0.0+b", "other"},
        {"1.0", "1.0.0", "other"},
        {"1.0-1", "1.1-1", "other"},
        {"1.0.0-01", "1.0.0-2", "other"},
        {"1.0.0", "latest", "other"},
        {"", "1.0.0", "other"},
    };
    for (const auto& [old, now, expected] : cases) {
        write("old", list(old));
        write("new", list(now));
        const Outcome outcome = run("-f json old new");
        EXPECT_EQ(outcome.status, 1) << old;
        const json report = json::parse(outcome.output);
        EXPECT_EQ(report["versions"][expected], 1) << old << ' ' << now;
        EXPECT_EQ(report["tree"]["children"][0]["detail"]["rows"].size(), 1U);
        EXPECT_EQ(run("-q old new").status, 1) << old;
        const std::string arrow = " \u2192 ";
        const bool both = *old != '\0';
        const std::string text = run("old new").output;
        EXPECT_NE(text.find("\n~ a  " + (both ? old + arrow : "+ ") + now + "\n"), text.npos)
            << text;
        EXPECT_NE(text.find(std::string("Versions") + std::string(5, ' ') + "1 " + expected),
                  text.npos)
            << text;
        const std::string markdown = run("-f markdown old new").output;
        EXPECT_NE(markdown.find("- changed `a` " +
                                (both ? '`' + (old + ('`' + arrow)) : std::string("+ ")) + '`' +
                                now + "`\n"),
                  markdown.npos)
            << markdown;
        EXPECT_EQ(run("-q --fail-on structural old new").status, 0);
        EXPECT_EQ(run("-q --filter nonstructural old new").status, 0);
    }
    // One side's format is enough; where there is none, nothing is told.
    write("graph", R"({"graph": {"nodes": {"a": {"metadata": {"version": "2"}}}}})");
    write("other", R"({"graph": {"nodes": {"a": {"metadata": {"version": "3"}}}}})");
    EXPECT_EQ(run("-q old graph").status, 1);
    EXPECT_EQ(run("-q graph other").status, 0);
}

}  // namespace
}  // namespace depcompare::test
