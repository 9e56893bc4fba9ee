#include "draft/choose_node_ids.h"

#include <vector>

#include <fl/i18n/ustring.h>
#include <fmt/format.h>
#include <gtest/gtest.h>

#include "draft/marked_id.h"
#include "host_texts.h"

namespace depcompare {
namespace {

using test::graphML;
using test::loadPair;
using test::readPair;

// Nodes with an ID, and with what they had better be known by.
std::string cycloneDX(const std::vector<std::pair<std::string, std::string>>& components) {
    std::string text;
    for (const auto& [ref, url] : components) {
        text += fmt::format(R"({}{{"name": "{}", "bom-ref": "{}", "purl": "{}"}})",
                            text.empty() ? "" : ",", ref, ref, url);
    }
    return R"({"bomFormat": "CycloneDX", "components": [)" + text + "]}";
}

std::string idsOf(const LoadedGraph& loaded) {
    std::string ids;
    for (const auto& node : loaded.graph->getNodes()) {
        ids += fl::i18n::ustring_to_utf8(idAsRead(node->getID())) + ' ';
    }
    return ids;
}

TEST(NodeIDs, theFirstCandidateThatIsUniqueInBothFilesIsTheID) {
    using Nodes = std::vector<std::pair<std::string, std::string>>;
    struct Case {
        Nodes left;
        Nodes right;
        const char* ids;
    };
    const Case cases[] = {
        {{{"r", "pkg:a/b@1"}}, {{"s", "pkg:a/b@2"}}, "pkg:a/b | pkg:a/b "},
        // Two versions on one side need the version on both, two copies the reference.
        {{{"r", "pkg:a/b@1"}},
         {{"s", "pkg:a/b@1"}, {"t", "pkg:a/b@2"}},
         "pkg:a/b@1 | pkg:a/b@1 pkg:a/b@2 "},
        {{{"r", "pkg:a/b@1"}}, {{"s", "pkg:a/b@1"}, {"t", "pkg:a/b@1"}}, "r | s t "},
        // What is another node's reference is nobody's URL; a node's own may be.
        {{{"r", "pkg:a/b@1"}, {"pkg:a/b", "pkg:c/d@1"}}, {}, "pkg:a/b@1 pkg:c/d | "},
        {{{"pkg:a/b@1", "pkg:a/b@1"}}, {}, "pkg:a/b | "},
    };
    for (const auto& [left, right, ids] : cases) {
        const auto loaded = loadPair(cycloneDX(left), cycloneDX(right));
        EXPECT_EQ(idsOf(loaded[0]) + "| " + idsOf(loaded[1]), ids);
    }
}

TEST(NodeIDs, theRuleMayBeTheFilesOwnIDTheNameOrAProperty) {
    const std::string file = graphML(
        "<node id='a'><data key='name'>A</data><data key='path'>x</data></node>"
        "<node id='b'/><edge source='a' target='b'/>");
    const std::pair<const char*, const char*> cases[] = {
        {"auto", "a \"A\" [file] path=x\nb \"b\" [file]\n0000000 a -> b [depends]\n"},
        {"name", "A \"A\" [file] path=x\nb \"b\" [file]\n0000000 A -> b [depends]\n"},
        {"path", "b \"b\" [file]\nx \"A\" [file] path=x\n0000000 x -> b [depends]\n"},
        {"size", "old: no node has the property \"size\" that --node-id names"},
    };
    for (const auto& [rule, expected] : cases) {
        EXPECT_EQ(readPair(file, graphML(""), {.nodeID = rule}), expected);
    }
}

TEST(NodeIDs, aRuleThatCannotTellNodesApartIsAnError) {
    const std::string file = graphML(
        "<node id='a'><data key='name'>n</data></node>"
        "<node id='b'><data key='name'>n</data></node>");
    EXPECT_EQ(readPair(graphML(""), file, {.nodeID = "name"}),
              "new: two nodes would have the ID \"n\"; --node-id name cannot tell them apart");
    EXPECT_EQ(readPair(R"({"graph": {"nodes": {"a": {"label": "\u0001"}}}})", graphML(""),
                       {.nodeID = "name"}),
              "old: the node ID \"\u0001\" contains the character U+0001");
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

TEST(NodeIDs, oddInputsAreWarnedOf) {
    using Warnings = std::vector<std::string>;
    const std::pair<std::string, Warnings> cases[] = {
        {graphML(""), {}},
        {graphML("<node id='n0'/><node id='n1'/>"), {}},
        {graphML("<node id='n0'/><node id='n1'/><node id='n2'/>"),
         {"the node IDs (\"n0\", \"n1\", ...) look like positions, which another file may give to "
          "other nodes; --node-id can name something better"}},
        {graphML("<node id='a'><data key='type'>lib</data></node>"),
         {"no node is a file, so there is nothing to compare; --file-type says which types are "
          "files (nodes by type: 1 \"lib\")"}},
    };
    for (const auto& [file, expected] : cases) {
        EXPECT_EQ(test::load(file).warnings, expected);
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
