// What readers make of documents that only a program can write, large ones and odd bytes, and what
// they are made of.
#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "draft/edit_ids.h"
#include "formats/dot/dot_labels.h"
#include "formats/dot/dot_reader.h"
#include "host_texts.h"

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
    const std::string wide(100'000, 'x');
    const std::string properties =
        graphML("<node id='a'><data key='k'>1</data><data key='l'>2</data></node>");
    const struct {
        std::string file;
        std::string expected;
        Limits limits = {};
    } cases[] = {
        {"", "in: the file is empty or blank; did the command that wrote it fail?"},
        {"\x89PNG\r\n",
         "in: looks like a PNG picture, which is not read; give the DOT file that it was drawn "
         "from"},
        {"PK\x03\x04",
         "in: looks like a ZIP archive, which is not read; unpack it, and give a file of it"},
        {"{\"modules\": [\n{\"source\": \"\xFF\"}]}",
         "in:2: not well-formed JSON: syntax error while parsing value - invalid string: "
         "ill-formed UTF-8 byte"},
        {jgf(R"("nodes": {"a\u0001": {}})"),
         "in:1: node ID \"a\u0001\" contains the character U+0001"},
        {jgf(R"("edges": [{"source": "a", "target": "\u0001"}])"),
         "in:1: node ID \"\u0001\" contains the character U+0001"},
        {"source,target\na,\xFF\n", "in:2: not UTF-8; convert the file, for example with iconv"},
        {"digraph {\n\"\xE4\" }", "in:2: not UTF-8; convert the file, for example with iconv"},
        {std::string("digraph {\n") + '\0' + "}", "in:2: zero byte in a text file"},
        {"digraph {" + repeated("{", 20'000) + "a" + repeated("}", 20'001),
         "in:1: graphs nested deeper than 256 (--max-nesting)"},
        {"digraph { " + std::string(100'000, '1') + "a }",
         "in:1: not well-formed DOT: syntax ambiguity - badly delimited number '" +
             std::string(50, '1') + "..." + std::string(49, '1') + "a' splits into two tokens"},
        {"digraph { a }", "a \"a\" [file]\n"},  // what was refused leaves nothing
        {"digraph { \"a\\\r\nb\" }", "ab \"ab\" [file]\n"},
        {"\xEF\xBB\xBF# x\r\n\r\nTO,\"From\"\r\n\"c,\r\nd\",a\r\n",
         "a \"a\" [file]\nc,\r\nd \"c,\r\nd\" [file]\n0000000 a -> c,\r\nd [depends]\n"},
        {properties, "in:2: more than 1 properties on one node", {.properties = 1}},
        {properties, "a \"a\" [file] k=1 l=2\n", {.properties = 2}},
        {"{\"modules\": [{\"unused\": \"" + wide,
         "in:1: text longer than 7 bytes (--max-text-bytes)",
         {.textBytes = 7}},
        {"<graphml><!--" + wide + wide,
         "in:1: text longer than 99999 bytes (--max-text-bytes)",
         {.textBytes = 99'999}},
        {"<graphml><key id='k' for='node'><default>" + wide + "</default></key><graph>" +
             numbered("<node id='{}'/>", 1'000) + "</graph></graphml>",
         "in: defaults of about 100065 bytes for each of 1000 nodes are out of proportion to the "
         "file's size"},
        {"<graphml><key id='k' attr.name='" + wide + "'/>\n<graph>" +
             numbered("<node id='{}'><data key='k'/></node>", 1'000) + "</graph></graphml>",
         "in:2: keys with names of more than 256 bytes are out of proportion to the file's size"},
        {"digraph {\n{" + numbered("a{} ", 400) + "} -> {" + numbered("b{} ", 400) + "} }",
         "in:2: more than 115204 edges, which is out of proportion to the file's size"},
        {"digraph { " + wide + " [label=\"" + repeated("\\N", 1'000) + "\"] }",
         "in: labels are out of proportion to the file's size"},
        {"digraph { node [" + numbered("a{}=1 ", 2'000) + "]\n" + numbered("b{} ", 2'000) + "}",
         "in:2: what is said of many nodes or edges at once is out of proportion to the file's "
         "size"},
    };
    for (const auto& [file, expected, limits] : cases) {
        EXPECT_EQ(test::read(file, {.limits = limits}), expected) << file.substr(0, 100);
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

TEST(GraphMLReader, encodingsAreRecognizedByTheirByteOrderMarks) {
    const std::string file = "<graphml><graph><node id='a'/></graph></graphml>";
    std::string bigEndian = "\xFE\xFF";
    std::string littleEndian = "\xFF\xFE";
    for (const char byte : file) {
        bigEndian.append({'\0', byte});
        littleEndian.append({byte, '\0'});
    }
    for (const std::string& encoded : {"\xEF\xBB\xBF" + file, bigEndian, littleEndian}) {
        EXPECT_EQ(test::read(encoded), "a \"a\" [file]\n");
    }
}

TEST(CycloneDXReader, aPackageIsItsURLWithoutVersionAndQualifiers) {
    const std::pair<const char*, const char*> cases[] = {
        {"pkg:npm/a@1.2.3", "pkg:npm/a"},
        {"pkg:npm/%40s/a@1", "pkg:npm/%40s/a"},
        {"pkg:npm/@s/a@1", "pkg:npm/@s/a"},
        {"pkg:deb/debian/a@1?arch=amd64&x=/@", "pkg:deb/debian/a"},
        {"pkg:golang/g.org/a@v1#sub/b@c", "pkg:golang/g.org/a#sub/b@c"},
    };
    for (const auto& [url, expected] : cases) {
        EXPECT_EQ(barePackageURL(url), expected);
    }
}

TEST(DOTReader, charactersAcrossPiecesOfTheFileStayWhole) {
    std::string name;
    for (int i = 0; i < 50'000; ++i) {
        name += "\xE2\x82\xAC";
    }
    const std::string expected = fmt::format("{0} \"{0}\" [file]\n", name);
    for (const char* before : {"", " ", "  ", "\xEF\xBB\xBF"}) {
        EXPECT_EQ(test::read(fmt::format("{}digraph {{ \"{}\" }}", before, name)), expected);
    }
}

TEST(DOTReader, aFileIsRecognizedByItsFirstWord) {
    const std::pair<const char*, bool> cases[] = {
        {"digraph", true},
        {" // c\n/* graph */ # x\nSTRICT DiGraph {", true},
        {"graph{}", true},
        {"\xEF\xBB\xBF"
         "digraph {",
         true},
        {"strict", false},
        {"/* digraph", false},
        {"{\"graph\": 1}", false},
        {"", false},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(looksLikeDOT(text), expected) << text;
    }
}

TEST(DOTLabels, theTextIsWithoutWhatDraws) {
    const std::pair<const char*, const char*> cases[] = {
        {R"(\N.c)", "id.c"},   {R"(a\nb)", "a b"},        {R"(lo\lng)", "long"},
        {R"({main})", "main"}, {R"(a\"b\\c)", "a\"b\\c"}, {R"(\{x\})", "{x}"},
        {"\\", "\\"},
    };
    for (const auto& [label, expected] : cases) {
        EXPECT_EQ(labelText(label, "id"), expected);
    }
    EXPECT_EQ(htmlLabelText("<b>a</b><BR/>b &amp; c"), "a b & c");
    EXPECT_EQ(htmlLabelText("<b>a"), "<b>a");
}

}  // namespace
}  // namespace depcompare
