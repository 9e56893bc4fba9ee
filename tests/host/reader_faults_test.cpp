// What readers refuse, with the line and the limit, and what they warn of: all formats in one table each.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "formats/read_graph.h"
#include "host_texts.h"
#include "input/input_error.h"

namespace depcompare {
namespace {

using test::graphML;

std::string repeated(const std::string& text, int count) {
    std::string all;
    for (int i = 0; i < count; ++i) {
        all += text;
    }
    return all;
}

std::string jgf(const std::string& members) {
    return R"({"graph": {)" + members + "}}";
}

TEST(Readers, whatCannotBeReadIsRefusedInOneLine) {
    const auto nested = [](int depth) {
        return "digraph {" + repeated("{", depth) + "a" + repeated("}", depth + 1);
    };
    test::expectRead({
        {"empty", "", "in: cannot detect the format from content or file name; use --input-format"},
        {"JSON, not UTF-8", "{\"modules\": [\n{\"source\": \"\xFF\"}]}",
         "in:2: not well-formed JSON: syntax error while parsing value - invalid string: "
         "ill-formed UTF-8 byte"},
        {"the mark of node IDs", jgf(R"("nodes": {"a\u0001": {}})"),
         "in:1: node ID \"a\u0001\" contains the character U+0001"},
        {"the mark in an end", jgf(R"("edges": [{"source": "a", "target": "\u0001"}])"),
         "in:1: node ID \"\u0001\" contains the character U+0001"},
        {"DOT, not UTF-8", "digraph {\n\"\xE4\" }",
         "in:2: not UTF-8; convert the file, for example with iconv"},
        {"DOT, a zero byte", std::string("digraph {\n") + '\0' + "}",
         "in:2: zero byte in a text file"},
        {"DOT, depth", nested(300), "in: graphs nested deeper than 256 (--max-nesting)"},
        {"DOT, what was refused leaves nothing", "digraph { a }", "a \"a\" [file]\n"},
    });
    Input array = Input::fromText("in", "[1]");
    EXPECT_THROW(static_cast<void>(readGraph(array, "jgf")), InputError);
    EXPECT_EQ(test::read(nested(20'000)).find("in:1: not well-formed DOT: "), 0U);
}

TEST(Readers, aLimitThatIsExceededIsNamed) {
    const std::string xml = graphML(
        "<node id='a'/><node id='b'><data key='k'>1234<!-- -->5678</data><data key='l'/></node>"
        "<edge source='a' target='b'/><edge source='a' target='b'/>");
    const std::string ignored = graphML(
        "<node id='a'/><edge source='a' target='a'><data key='w'>1234<!-- -->5678</data></edge>");
    const std::string json = R"({"modules": [{"source": "a"}, {"source": "b", "k": "12345678",
        "l": [[[1]]], "dependencies": [{"resolved": "a"}, {"resolved": "a"}]}]})";
    const std::string dot = "digraph { {a b c d} -> {e f g h} }";
    const std::string endless = "{\"modules\": [{\"unused\": \"" + std::string(100'000, 'x');
    const std::tuple<std::string, Limits, const char*> cases[] = {
        {xml, {.bytes = 200}, "in: larger than 200 bytes (--max-input-bytes)"},
        {xml, {.nodes = 1}, "in:2: more than 1 nodes (--max-nodes)"},
        {xml, {.edges = 1}, "in:2: more than 1 edges (--max-edges)"},
        {xml, {.properties = 1}, "in:2: more than 1 properties on one node"},
        {xml, {.textBytes = 7}, "in:2: text longer than 7 bytes (--max-text-bytes)"},
        {ignored, {.textBytes = 7}, "in:2: text longer than 7 bytes (--max-text-bytes)"},
        {xml, {.nestingDepth = 3}, "in:2: elements nested deeper than 3 (--max-nesting)"},
        {json, {.textBytes = 7}, "in:2: text longer than 7 bytes (--max-text-bytes)"},
        {json, {.nestingDepth = 5}, "in:2: values nested deeper than 5 (--max-nesting)"},
        {endless, {.textBytes = 7}, "in:1: text longer than 7 bytes (--max-text-bytes)"},
        {dot, {.edges = 15}, "in: more than 15 edges (--max-edges)"},
        {dot, {.nodes = 7}, "in: more than 7 nodes (--max-nodes)"},
        {"digraph { long }", {.textBytes = 3}, "in: text longer than 3 bytes (--max-text-bytes)"},
    };
    for (const auto& [file, limits, expected] : cases) {
        EXPECT_EQ(test::read(file, limits), expected);
    }
    EXPECT_EQ(test::read(xml, {.nodes = 2, .edges = 2, .properties = 2, .textBytes = 8}),
              "a \"a\" [file]\nb \"b\" [file] k=12345678 l=\n0000000 a -> b [depends]\n"
              "0000001 a -> b [depends]\n");
    EXPECT_EQ(test::read(ignored, {.textBytes = 8}), "a \"a\" [file]\n0000000 a -> a [depends]\n");
    EXPECT_NE(test::read(dot, {.nodes = 8, .edges = 16}).find("000000f"), std::string::npos);
}

TEST(Readers, oddInputsAreWarnedOf) {
    const std::pair<std::string, std::vector<std::string>> cases[] = {
        {graphML(""), {}},
        {graphML("<node id='n0'/><node id='n1'/>"), {}},
        {graphML("<node id='n0'/><node id='n1'/><node id='n2'/>"),
         {"node IDs (\"n0\", \"n1\", ...) look like positions, which may differ between files; use "
          "--node-id to identify nodes by something else"}},
        {graphML("<node id='a'><data key='type'>lib</data></node>"),
         {"no file nodes, so nothing to compare; use --file-type to choose the types that count as "
          "files (nodes by type: 1 \"lib\")"}},
        {jgf(R"("hyperedges": [{}, {}])"), {"ignored hyperedges: 2"}},
        {jgf(R"("edges": [{"source": "x", "target": "x"}])"),
         {"node \"x\" appears only in edges; added it"}},
        {R"({"specVersion": "1.7"})",
         {"unsupported CycloneDX version \"1.7\"; read like 1.4 to 1.6"}},
        {"digraph { a [label=A] a -> b a -> c }", {"2 nodes appear only in edges (first: \"b\")"}},
        {"digraph { a -> b }", {}},
    };
    for (const auto& [file, expected] : cases) {
        EXPECT_EQ(test::load(file).warnings, expected);
    }
}

}  // namespace
}  // namespace depcompare
