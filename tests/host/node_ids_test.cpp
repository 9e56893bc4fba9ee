#include "readers/node_ids.h"

#include <vector>

#include <fmt/format.h>
#include <gtest/gtest.h>

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

std::vector<std::string> idsOf(const LoadedGraph& loaded) {
    std::vector<std::string> ids;
    const std::string text = test::textOf(loaded);
    for (std::size_t line = text.find('\n') + 1; line < text.size();
         line = text.find('\n', line) + 1) {
        ids.push_back(text.substr(line, text.find(' ', line) - line));
    }
    return ids;
}

TEST(NodeIDs, theFirstCandidateThatIsUniqueInBothFilesIsTheID) {
    using Nodes = std::vector<std::pair<std::string, std::string>>;
    using IDs = std::vector<std::string>;
    struct Case {
        const char* about;
        std::array<Nodes, 2> nodes;
        std::array<IDs, 2> ids;
    };
    const Case cases[] = {
        {"another version is the same package",
         {Nodes{{"r", "pkg:a/b@1"}}, Nodes{{"s", "pkg:a/b@2"}}},
         {IDs{"pkg:a/b"}, IDs{"pkg:a/b"}}},
        {"two versions on one side need the version on both",
         {Nodes{{"r", "pkg:a/b@1"}}, Nodes{{"s", "pkg:a/b@1"}, {"t", "pkg:a/b@2"}}},
         {IDs{"pkg:a/b@1"}, IDs{"pkg:a/b@1", "pkg:a/b@2"}}},
        {"two copies on one side need the reference on both",
         {Nodes{{"r", "pkg:a/b@1"}}, Nodes{{"s", "pkg:a/b@1"}, {"t", "pkg:a/b@1"}}},
         {IDs{"r"}, IDs{"s", "t"}}},
        {"what is another node's reference is nobody's URL",
         {Nodes{{"r", "pkg:a/b@1"}, {"pkg:a/b", "pkg:c/d@1"}}, Nodes{}},
         {IDs{"pkg:a/b@1", "pkg:c/d"}, IDs{}}},
        {"a node's own reference may be its URL",
         {Nodes{{"pkg:a/b@1", "pkg:a/b@1"}}, Nodes{}},
         {IDs{"pkg:a/b"}, IDs{}}},
    };
    for (const Case& example : cases) {
        const auto loaded = loadPair(cycloneDX(example.nodes[0]), cycloneDX(example.nodes[1]));
        for (std::size_t side = 0; side < 2; ++side) {
            EXPECT_EQ(idsOf(loaded[side]), example.ids[side]) << example.about << " " << side;
        }
    }
}

TEST(NodeIDs, theRuleMayBeTheFilesOwnIDTheNameOrAProperty) {
    const std::string file = graphML(
        "<node id='a'><data key='name'>A</data><data key='path'>x</data></node>"
        "<node id='b'/><edge source='a' target='b'/>");
    const std::pair<const char*, const char*> cases[] = {
        {"auto", "a \"A\" [file] path=x\nb \"b\" [file]\n0000000 a -> b [depends]\n"},
        {"id", "a \"A\" [file] path=x\nb \"b\" [file]\n0000000 a -> b [depends]\n"},
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
        "<node id='b'><data key='name'>n</data><data key='k'>a</data></node>");
    EXPECT_EQ(readPair(graphML(""), file, {.nodeID = "name"}),
              "new: two nodes would have the ID \"n\"; --node-id name cannot tell them apart");
    EXPECT_EQ(readPair(graphML(""), file, {.nodeID = "k"}),
              "new: two nodes would have the ID \"a\"; --node-id k cannot tell them apart");
    EXPECT_EQ(readPair(R"({"graph": {"nodes": {"a": {"label": "\u0001"}}}})", graphML(""),
                       {.nodeID = "name"}),
              "old: the node ID \"\u0001\" contains the character U+0001");
}

TEST(NodeIDs, positionsAndAddressesAreRecognized) {
    const std::pair<std::vector<std::string_view>, bool> cases[] = {
        {{"n0", "n1", "n12"}, true},
        {{"0", "7"}, true},
        {{"0x55af", "0x7F"}, true},
        {{"Node0x1", "Node0x2"}, true},
        {{"node1", "Node1"}, false},
        {{"header_0", "header_3"}, true},
        {{"a1", "a2"}, false},
        {{"n0", "main"}, false},
        {{"n"}, false},
        {{"0x"}, false},
        {{"12.5"}, false},
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
