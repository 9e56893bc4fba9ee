// What readers make of documents: those of the folder readings, and what only a program can write.
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "draft/edit_ids.h"
#include "formats/dot/dot_labels.h"
#include "formats/dot/dot_reader.h"
#include "host_texts.h"

namespace depcompare {
namespace {

using test::readPair;

// A case is a line "=== ABOUT", the document, a line "---", and what is read or the refusal. A document
// of one line may be in place of ABOUT.
TEST(Readers, everyDocumentIsReadAsItSays) {
    const auto withoutEnd = [](const std::string& text) {
        return text.substr(0, text.find_last_not_of('\n') + 1);
    };
    int cases = 0;
    for (const auto& entry : std::filesystem::directory_iterator(READINGS)) {
        std::ifstream file(entry.path());
        const std::string all = '\n' + std::string(std::istreambuf_iterator<char>(file), {});
        for (std::size_t begin = 0; begin != all.npos; ++cases) {
            const std::size_t end = all.find("\n=== ", begin + 1);
            const std::size_t document = all.find('\n', begin + 1) + 1;
            const std::size_t result = all.find("\n---\n", document - 1);
            const std::size_t first = result < document ? begin + 5 : document;
            EXPECT_EQ(withoutEnd(test::read(all.substr(first, result - first))),
                      withoutEnd(all.substr(result + 5, end - result - 5)))
                << all.substr(begin, document - begin);
            begin = end;
        }
    }
    EXPECT_GT(cases, 90);
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

TEST(DependencyCruiserReader, theLastTypeThatSaysHowIsThatOfTheDependency) {
    const std::pair<std::string, std::string> typesOfDependencies[] = {
        {R"(["local", "import"])", "import"},
        {R"(["npm-dev", "aliased-tsconfig", "require"])", "require"},
        {R"(["type-only", "local", "import"])", "import type-only"},
        {R"(["core"])", "depends"},
        {"[]", "depends"},
    };
    for (const auto& [types, expected] : typesOfDependencies) {
        EXPECT_EQ(test::read(R"({"modules": [{"source": "a", "dependencies": [{"resolved": "a",
                           "module": "./a", "dependencyTypes": )" +
                             types + "}]}]}"),
                  "a \"a\" [file]\n0000000 a/./a -> a [" + expected + "]\n");
    }
}

std::string igraph(const std::string& nodes) {
    return "<graphml>\n<!-- Created by igraph -->\n<key id='v_name' for='node' attr.name='name'/>"
           "<key id='v_id' for='node' attr.name='id'/><key id='v_k' for='node' attr.name='k'/>"
           "<graph edgedefault='directed'>" +
           nodes + "</graph></graphml>";
}

TEST(GraphMLOfIgraph, nodesAreKnownByIDOrNameAndNotByTheirNumber) {
    EXPECT_EQ(readPair(igraph("<node id='n0'><data key='v_name'>N</data><data key='v_id'>a</data>"
                              "</node><node id='n1'><data key='v_name'>b</data>"
                              "<data key='v_k'>None</data></node><node id='n2'>"
                              "<data key='v_name'>None</data></node>"
                              "<edge source='n0' target='n1'/>"),
                       igraph("<node id='n0'><data key='v_name'>b</data></node>")),
              "a \"N\" [file]\nb \"b\" [file]\nn2 \"n2\" [file]\n0000000 a -> b [depends]\n"
              "b \"b\" [file]\n");
}

std::string yEd(const std::string& nodes) {
    return "<graphml xmlns:y='y'><key id='d6' for='node' yfiles.type='nodegraphics'/>"
           "<key id='d10' for='edge' yfiles.type='edgegraphics'/><graph edgedefault='directed'>" +
           nodes + "</graph></graphml>";
}

std::string yEdNode(const std::string& id, const std::string& label) {
    return "<node id='" + id + "'><data key='d6'>\n<y:ShapeNode><y:Fill/><y:NodeLabel>" + label +
           "</y:NodeLabel><y:NodeLabel>other</y:NodeLabel></y:ShapeNode></data></node>";
}

TEST(GraphMLOfYEd, theLabelIsTheNameAndTheIDIfItIsUnique) {
    EXPECT_EQ(readPair(yEd(yEdNode("n0", "\n a.c <y:LabelModel>m</y:LabelModel> ") +
                           yEdNode("n1", "b.c") + yEdNode("n2", "twin") +
                           "<edge source='n0' target='n1' sourceport='p'><data key='d10'>"
                           "<y:PolyLineEdge><y:EdgeLabel>calls</y:EdgeLabel></y:PolyLineEdge>"
                           "</data></edge><edge source='n0' target='n2'><data key='d10'>"
                           "<y:PolyLineEdge/></data></edge>"),
                       yEd(yEdNode("n0", "twin") + yEdNode("n1", "twin") + yEdNode("n2", ""))),
              "a.c \"a.c\" [file]\nb.c \"b.c\" [file]\nn2 \"twin\" [file]\n"
              "0000000 a.c/p -> b.c [calls]\n0000001 a.c -> n2 [depends]\n"
              "n0 \"twin\" [file]\nn1 \"twin\" [file]\nother \"other\" [file]\n");
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
