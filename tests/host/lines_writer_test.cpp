#include "formats/lines/lines_writer.h"

#include <string>

#include <gtest/gtest.h>

#include "host_texts.h"

namespace depcompare {
namespace {

std::string linesOf(const std::string& file) {
    return test::written([&](Output& output) { writeLines(*test::load(file).graph, output); });
}

TEST(WriteLines, everyPartOfAGraphHasItsLine) {
    EXPECT_EQ(linesOf(R"({"graph": {"metadata": {"version": "1", "by": "a b"},
                  "nodes": {"b": {"label": "B", "metadata": {"type": "lib"}},
                            "a.c": {"metadata": {"size": "3", "note": ""}}},
                  "edges": [{"source": "b", "target": "a.c", "relation": "use"},
                            {"source": "a.c", "target": "b", "metadata": {
                                "upstream_component": "x", "downstream_component": "y z",
                                "downstream_component_type": "t"}}]}})"),
              "graph by=\"a b\"\n"
              "graph version=1\n"
              "a.c [file] note=\"\" size=3\n"
              "a.c -> b [depends] from=x to=\"y z\" to-type=t\n"
              "b \"B\" [lib]\n"
              "b -> a.c [use]\n");
}

TEST(WriteLines, noTextCanBeTakenForAnother) {
    EXPECT_EQ(linesOf(R"({"graph": {"nodes": {
                  "->": {}, "a\nb": {}, "a\\nb": {}, "\"q\"": {}, "[x]": {}, "k=v": {}, "": {}, "::b": {},
                  "\u202eevil\u0000": {}, "\u00e9": {}}}})"),
              "\"\" [file]\n"
              "\"\\\"q\\\"\" [file]\n"
              "\"->\" [file]\n"
              "\"::b\" [file]\n"
              "\"[x]\" [file]\n"
              "\"a\\nb\" [file]\n"
              "\"a\\\\nb\" [file]\n"
              "\"k=v\" [file]\n"
              "\xC3\xA9 [file]\n"
              "\"\\u202eevil\\x00\" [file]\n");
}

}  // namespace
}  // namespace depcompare
