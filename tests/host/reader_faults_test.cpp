// What readers refuse, with the line and the limit, and what they warn of: all formats in one table each.
#include <algorithm>
#include <string>
#include <vector>

#include <fmt/format.h>
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

/// Returns: the text that many times, each with its number in place of `{}`.
std::string numbered(const std::string& text, int count) {
    std::string all;
    for (int i = 0; i < count; ++i) {
        all += std::string(text).replace(text.find("{}"), 2, std::to_string(i));
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
        {"empty", "", "in: the file is empty or blank; did the command that wrote it fail?"},
        {"JSON, empty", " [\n]\n",
         "in: empty JSON, which several formats write; name the format by --input-format"},
        {"a message", "\n\u2716 Error: ENOENT\n",
         "in: fits no format; it begins with \"\u2716 Error: ENOENT\"; "
         "--list-formats explains what can be read"},
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
        {"DOT, depth", nested(20'000), "in:1: graphs nested deeper than 256 (--max-nesting)"},
        {"DOT, a long number that is none", "digraph { " + std::string(100'000, '1') + "a }",
         "in:1: not well-formed DOT: syntax ambiguity - badly delimited number '" +
             std::string(50, '1') + "..." + std::string(49, '1') + "a' splits into two tokens"},
        {"DOT, what was refused leaves nothing", "digraph { a }", "a \"a\" [file]\n"},
        {"DOT, a text that continues on a line of DOS", "digraph { \"a\\\r\nb\" }",
         "ab \"ab\" [file]\n"},
    });
    const std::pair<const char*, const char*> documents[] = {
        {"[1]", "jgf"}, {"null", "jgf"}, {"null", "madge"}, {"null", "pipdeptree"}, {"7", "nx"}};
    for (const auto& [document, format] : documents) {
        Input input = Input::fromText("in", document);
        EXPECT_THROW(static_cast<void>(readGraph(input, format)), InputError) << format;
    }
}

TEST(Readers, whatGeneratorsWriteForEachNodeIsInProportion) {
    std::string dot = "digraph { node [shape=box, style=filled, color=red] edge [color=blue]\n";
    for (int i = 0; i < 20'000; ++i) {
        dot += fmt::format("subgraph c {{ node [color=red, fontsize=10]; {} }}\n{}->0\n", i, i);
    }
    EXPECT_EQ(test::read(dot + "}").substr(0, 3), "0 \"");
}

TEST(Readers, aMessageRepeatsLittleOfTheInput) {
    const std::string name(3000, 'x');
    std::string members;
    for (int i = 0; i < 30; ++i) {
        members += fmt::format(", \"{}{}\": [{}]", i, name, i);
    }
    const std::string files[] = {
        R"({"modules": [], "summary": 1)" + members + "}",
        jgf(R"("nodes": {})" + members),
        jgf(R"("vertices": {})" + members),
        jgf(R"("nodes": {"a": {"metadata": {"type": ")" + name + R"("}}})"),
        jgf(R"("directed": false, "edges": [{"source": "1)" + name + R"(", "target": "2)" + name +
            R"("}])"),
        R"({"modules": [{"source": ")" + name + R"(", "dependencies": [{}]}]})",
        graphML("<node id='" + name + "'/><node id='" + name + "'/>"),
        "a b {'" + name + "': 1}\nb c {'y" + name + "': 1}\nc d {'z" + name + "': 1}\n",
    };
    for (const std::string& file : files) {
        const std::string result = test::read(file);
        const std::vector<std::string> messages =
            result.starts_with("in:") ? std::vector{result} : test::load(file).warnings;
        EXPECT_FALSE(messages.empty()) << result.substr(0, 200);
        for (const std::string& message : messages) {
            EXPECT_LE(std::ranges::count(message, 'x'), 202) << message;
        }
    }
}

TEST(Readers, whatIsNotReadIsNamedWithAWayOut) {
    const std::pair<std::string, const char*> cases[] = {
        {"\x89PNG\r\n", "a PNG picture"},
        {"%PDF-1.4\n", "PDF"},
        {"<?xml version='1.0'?>\n<!DOCTYPE svg PUBLIC 'x'>\n<!-- x -->\n<svg>", "an SVG picture"},
        {"PK\x03\x04", "a ZIP archive"},
        {"\n<html></html>", "a web page"},
        {"<?xml version='1.0'?><gexf>", "GEXF"},
        {"Creator \"x\"\ngraph\n[\n", "GML"},
        {"*Vertices 2\n1 \"a\"\n2 \"b\"\n", "a network of Pajek"},
        {"graph TD\n  A-->B\n", "Mermaid"},
        {"@startuml\na --> b\n", "PlantUML"},
        {"n@1.0 /x\n\u251C\u2500\u2500 a@1\n\u2514\u2500\u2500 b@2\n",
         "a tree that is drawn as text"},
        {"Package Version\n------- -------\na       1.0\nb       2.0.1\n",
         "a list of packages with their versions"},
        {R"({"SchemaVersion": 2, "Results": []})", "what syft or trivy write for themselves"},
        {R"({"elements": {"nodes": []}})", "what Cytoscape writes"},
        {"SPDXVersion: SPDX-2.3\n", "SPDX in its tag-value form"},
        {"<?xml version='1.0'?><rdf:RDF>", "SPDX as RDF"},
        {"SPDXID: x\nspdxVersion: SPDX-2.3\n", "SPDX as YAML"},
        {"# yarn lockfile v1\n\na@^1:\n", "a lock file of yarn"},
        {"__metadata:\n  version: 8\n", "a lock file of yarn"},
        {"lockfileVersion: '9.0'\n", "a lock file of pnpm"},
        {R"({"name": "n", "dependencies": {"a": "^1"}})", "package.json"},
        {"# This file is automatically @generated by Cargo.\n"
         "# It is not intended for manual editing.\nversion = 3\n\n[[package]]\n",
         "Cargo.lock"},
        {"# x\n[[package]]\nname = \"a\"\n", "a lock file of Poetry or uv"},
        {"# x\n-r base.txt\na[b]==1.0\nc>=2\n", "requirements of pip"},
        {"module m\n\ngo 1.21\n", "go.mod"},
        {"a.b/c v1.0.0 h1:x=\na.b/c v1.0.0/go.mod h1:y=\n", "go.sum"},
        {"<project xmlns=\"http://maven.apache.org/POM/4.0.0\">", "a project file of Maven"},
        {R"({"version": 1, "dependencies": {"net8.0": {"a": {"resolved": "1"}}}})",
         "a lock file of NuGet"},
        {"GEM\n  remote: https://x/\n", "Gemfile.lock"},
        {"# x\nprovider \"registry/a/b\" {\n", "a lock file of Terraform"},
        {R"([{"directory": "/x", "command": "cc"}])", "a compilation database"},
        {R"({"name": "g", "directed": true, "_subgraph_cnt": 0})",
         "a graph that Graphviz wrote as JSON"},
    };
    for (const auto& [content, name] : cases) {
        const std::string message = test::read(content);
        EXPECT_EQ(message.substr(0, message.find(", which is not read; ")),
                  std::string("in: looks like ") + name);
    }
    Input named = Input::fromText("x/requirements.txt.gz", "a b\nc d\n");
    EXPECT_THROW(static_cast<void>(readGraph(named)), InputError);
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
        {"<graphml><!--" + std::string(200'000, 'x'),
         {.textBytes = 99'999},
         "in:1: text longer than 99999 bytes (--max-text-bytes)"},
        {"<graphml><key id='k' for='node'><default>" + std::string(100'000, 'x') +
             "</default></key><graph>" + numbered("<node id='{}'/>", 1'000) + "</graph></graphml>",
         {},
         "in: defaults of about 100065 bytes for each of 1000 nodes are out of proportion to the "
         "file's size"},
        {"<graphml><key id='k' attr.name='" + std::string(100'000, 'x') + "'/>\n<graph>" +
             numbered("<node id='{}'><data key='k'/></node>", 1'000) + "</graph></graphml>",
         {},
         "in:2: keys with names of more than 256 bytes are out of proportion to the file's size"},
        {dot, {.edges = 15}, "in:1: more than 15 edges (--max-edges)"},
        {dot, {.nodes = 7}, "in: more than 7 nodes (--max-nodes)"},
        {"digraph {\na [b = \"1234\"\n+ \"5678\"] }",
         {.textBytes = 7},
         "in:2: text longer than 7 bytes (--max-text-bytes)"},
        {"digraph {\n{" + numbered("a{} ", 400) + "} -> {" + numbered("b{} ", 400) + "} }",
         {},
         "in:2: more than 115204 edges, which is out of proportion to the file's size"},
        {"digraph { " + std::string(100'000, 'x') + " [label=\"" + repeated("\\N", 1'000) + "\"] }",
         {},
         "in: labels are out of proportion to the file's size"},
        {"digraph { node [" + numbered("a{}=1 ", 2'000) + "]\n" + numbered("b{} ", 2'000) + "}",
         {},
         "in:2: what is said of many nodes or edges at once is out of proportion to the file's "
         "size"},
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
        {R"({"graph": {"nodes": {"a": {"metadata": {"type": "f"}}, "b": {"metadata": {"type": "b"}},
             "c": {"metadata": {"type": "c"}}, "d": {"metadata": {"type": "d"}},
             "e": {"metadata": {"type": "e"}}, "g": {"metadata": {"type": "b"}},
             "h": {"metadata": {"type": "a"}}}}})",
         {"no file nodes, so nothing to compare; use --file-type to choose the types that count as "
          "files (nodes by type: 1 \"a\", 2 \"b\", 1 \"c\", 1 \"d\", 1 \"e\", ...)"}},
        {jgf(R"("hyperedges": [{}, {}])"), {"ignored hyperedges: 2"}},
        {jgf(R"("edges": [{"source": "x", "target": "x"}])"),
         {"node \"x\" appears only in edges; added it"}},
        {jgf(R"("edges": [{"source": "y", "target": "x"}])"),
         {"2 nodes appear only in edges (first: \"x\"); added them"}},
        {R"({"specVersion": "1.7"})",
         {"unsupported CycloneDX version \"1.7\"; read like 1.4 to 1.6"}},
        {"digraph { a [label=A] a -> c a -> b }",
         {"2 nodes have edges, but no attributes (first: \"b\")"}},
        {"digraph { a -> b }", {}},
        {"digraph { edge [dir=none] c -> a a -> b b -> c [dir=both] }",
         {"edges without a direction (dir=none), read as from the first end to the second: 2 "
          "(first: \"a\" -> \"b\")"}},
        {graphML("<node id='a'/><hyperedge/>"), {"ignored hyperedges: 1"}},
        {"a b {'weight': 1.5, 'w': [\"]\"]}\n",
         {"dependencies have no properties; ignored data: \"w\", \"weight\""}},
        {"from to\na b\nb c\n", {}},
        {"caller callee\na b\nb c\n",
         {"the first row, \"caller\" and \"callee\", is read as data; a header names \"source\" "
          "and "
          "\"target\""}},
        {"from,to\na, b\nb,c\n", {"IDs with blanks around them, which count: 1 (first: \" b\")"}},
        {R"({"nodes": [{"id": "a"}], "edges": [{"source": "a", "target": "a", "key": 0, "w": 1}]})",
         {"dependencies have no properties; ignored members of edges: \"w\""}},
    };
    for (const auto& [file, expected] : cases) {
        EXPECT_EQ(test::load(file).warnings, expected);
    }
    Input weights = Input::fromText("in", "a b 2e-3\nb c x\n");
    EXPECT_EQ(
        readGraph(weights, "list").warnings,
        std::vector<std::string>{"dependencies have no properties; ignored data: \"weight\""});
}

}  // namespace
}  // namespace depcompare
