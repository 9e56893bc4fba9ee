#include "draft/choose_node_ids.h"

#include "draft/edit_ids.h"

#include <utility>
#include <vector>

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "host_texts.h"

namespace depcompare {
namespace {

using test::graphML;
using test::readPair;

/// Returns: a bill of materials with a component for each "REFERENCE URL".
std::string components(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        const std::size_t end = line.find(' ');
        text += fmt::format(R"({}{{"name": "", "bom-ref": "{}", "purl": "{}"}})",
                            text.empty() ? "" : ",", line.substr(0, end), line.substr(end + 1));
    }
    return R"({"bomFormat": "CycloneDX", "components": [)" + text + "]}";
}

/// Returns: the IDs of the nodes of both graphs, with a bar between them.
std::string idsOf(const std::string& left, const std::string& right,
                  const ReadOptions& options = {}) {
    std::string ids;
    for (const LoadedGraph& loaded : test::loadPair(left, right, options)) {
        ids += ids.empty() ? "" : "| ";
        const std::string text = test::textOf(loaded);
        for (std::size_t end = text.find(" \""); end != text.npos;
             end = text.find(" \"", end + 1)) {
            const std::size_t begin = text.rfind('\n', end) + 1;
            ids += text.substr(begin, end - begin) + ' ';
        }
    }
    return ids;
}

TEST(NodeIDs, theFirstCandidateThatIsUniqueInBothFilesIsTheID) {
    const std::tuple<std::vector<std::string>, std::vector<std::string>, const char*> cases[] = {
        {{"r pkg:a/b@1"}, {"s pkg:a/b@2"}, "pkg:a/b | pkg:a/b "},
        // Two versions on one side need the version on both, two copies the reference.
        {{"r pkg:a/b@1"}, {"s pkg:a/b@1", "t pkg:a/b@2"}, "pkg:a/b@1 | pkg:a/b@1 pkg:a/b@2 "},
        {{"r pkg:a/b@1"}, {"s pkg:a/b@1", "t pkg:a/b@1"}, "r | s t "},
        // Another node's reference is not a node's URL; its own may be.
        {{"r pkg:a/b@1", "pkg:a/b pkg:c/d@1"}, {}, "pkg:a/b@1 pkg:c/d | "},
        {{"pkg:a/b@1 pkg:a/b@1"}, {}, "pkg:a/b | "},
    };
    for (const auto& [left, right, ids] : cases) {
        EXPECT_EQ(idsOf(components(left), components(right)), ids);
    }
}

TEST(NodeIDs, theRuleMayBeTheFilesOwnIDTheNameOrAProperty) {
    const std::string file = graphML(
        "<node id='a'><data key='name'>A</data><data key='path'>x</data></node>"
        "<node id='b'/><edge source='a' target='b'/>");
    const std::string twins = graphML(
        "<node id='a'><data key='name'>n</data></node>"
        "<node id='b'><data key='name'>n</data></node>");
    const std::string marked = R"({"graph": {"nodes": {"a": {"label": "\u0001"}}}})";
    const std::tuple<std::string, const char*, const char*> cases[] = {
        {file, "auto", "a \"A\" [file] path=x\nb \"b\" [file]\n0000000 a -> b [depends]\n"},
        {file, "id", "a \"A\" [file] path=x\nb \"b\" [file]\n0000000 a -> b [depends]\n"},
        {file, "name", "A \"A\" [file] path=x\nb \"b\" [file]\n0000000 A -> b [depends]\n"},
        {file, "path", "b \"b\" [file]\nx \"A\" [file] path=x\n0000000 x -> b [depends]\n"},
        {file, "size", "old: no node has the property \"size\" (--node-id)"},
        {twins, "name", "old: two nodes would have the ID \"n\" (--node-id name)"},
        {marked, "name", "old: node ID \"\u0001\" contains the character U+0001"},
    };
    for (const auto& [left, rule, expected] : cases) {
        EXPECT_EQ(readPair(left, graphML(""), {.nodeID = rule}), expected);
    }
}

TEST(NodeIDs, ofPackagesMayLoseTheirVersion) {
    const std::pair<const char*, const char*> cases[] = {
        {"pkg:deb/debian/a@1?arch=x#sub", "pkg:deb/debian/a?arch=x#sub"},
        {"a@1.2.3", "a"},
        {"@s/a@1.2.3-rc.1+b", "@s/a"},
        {"@s/a", "@s/a"},
        {"g.org/a/v2@v2.0.1", "g.org/a/v2"},
        {"toolchain@go1.21", "toolchain"},
        {"registry+https://g.org/index#a@1.0", "registry+https://g.org/index#a"},
        {"path+file:///x/a#0.1.0", "path+file:///x/a"},
        {"a 1.0.1 (registry+https://x)", "a (registry+https://x)"},
        {"g.h:a:1.0", "g.h:a"},
        {"g.h:a:jar:tests:1.0-SNAPSHOT:test", "g.h:a:jar:tests:test"},
        {"g.h:a", "g.h:a"},
        {"zlib/1.3.1", "zlib"},
        {"zlib/1#abc (host)", "zlib (host)"},
        {"zlib/1.3@me/stable#abc", "zlib@me/stable"},
        {"src/1.txt", "src/1.txt"},
        {"src/a@2/b.js", "src/a@2/b.js"},
        {"//a/b:c", "//a/b:c"},
    };
    for (const auto& [id, expected] : cases) {
        EXPECT_EQ(withoutVersion(id), expected);
    }
}

TEST(NodeIDs, areEditedInBothFiles) {
    const std::string left = graphML("<node id='/b1/src/a.c'/><node id='n@1'/>");
    const std::string right = graphML("<node id='C:\\b\\src/a.c'/><node id='n@2'/>");
    const auto edits = [](IdEdits asked) { return ReadOptions{.idEdits = std::move(asked)}; };
    EXPECT_EQ(idsOf(left, right, edits({.prefixes = {"/b1/", "C:\\b"}, .withoutVersion = true})),
              "n src/a.c | n src/a.c ");
    EXPECT_EQ(idsOf(left, right,
                    edits({.replacements = {IdReplacement("s|.*/([^/]*)$|\\1|"),
                                            IdReplacement("s/A|@\\d/\\/x/gi")}})),
              "/x.c n/x | /x.c n/x ");
    EXPECT_EQ(readPair(left, right, edits({.replacements = {IdReplacement("s/.*//")}})),
              "old: nodes \"/b1/src/a.c\" and \"n@1\" would both have the ID \"\"");
    EXPECT_EQ(readPair(left, right, edits({.replacements = {IdReplacement("s/n/\u0001/")}})),
              "old: node ID \"\u0001@1\" contains the character U+0001");
    EXPECT_EQ(readPair(graphML("<node id='x/a'/>"), "digraph {}", edits({.prefixes = {"x"}})),
              "a \"a\" [file]\n");
}

TEST(NodeIDs, positionsAndAddressesAreRecognized) {
    const std::pair<std::vector<std::string_view>, bool> cases[] = {
        {{"n0", "n1", "n12"}, true},
        {{"0x55af", "0x7F"}, true},
        {{"Node0x1", "Node0x2"}, true},
        {{"node1", "Node1"}, false},
        {{"header_0", "header_3"}, true},
        {{"n0", "main"}, false},
        {{"0x"}, false},
        {{}, false},
    };
    for (const auto& [ids, expected] : cases) {
        EXPECT_EQ(lookPositional(ids), expected) << (ids.empty() ? "" : ids[0]);
    }
}

TEST(FileTypes, nodesOfANamedTypeAreFilesWithTheirTypeAsAProperty) {
    const std::string file = graphML(
        "<node id='a'><data key='type'>lib</data><data key='z'>1</data></node><node id='b'/>"
        "<node id='c'><data key='type'>app</data></node>");
    EXPECT_EQ(readPair(file, graphML(""), {.fileTypes = {"lib", "none"}}),
              "a \"a\" [file] type=lib z=1\nb \"b\" [file]\nc \"c\" [app]\n");
}

}  // namespace
}  // namespace depcompare
