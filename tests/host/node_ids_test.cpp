#include "draft/choose_node_ids.h"

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
std::string idsOf(const std::string& left, const std::string& right) {
    std::string ids;
    for (const LoadedGraph& loaded : test::loadPair(left, right)) {
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
