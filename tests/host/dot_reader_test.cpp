#include "formats/dot/dot_reader.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "formats/dot/dot_labels.h"
#include "host_texts.h"

namespace depcompare {
namespace {

using test::expectRead;

TEST(DOTReader, everyNodeIsAFileNamedByItsLabel) {
    expectRead({
        {"named by edges only", "digraph { a -> b -> c }",
         "a \"a\" [file]\nb \"b\" [file]\nc \"c\" [file]\n"
         "0000000 a -> b [depends]\n0000001 b -> c [depends]\n"},
        {"labels and other texts; what draws is passed over",
         "digraph { rankdir=LR; label=L; owner=x; node [shape=box, team=none];\n"
         "a [label=\"\\N.c\", color=red, URL=\"u\", team=t, tooltip=\" \"]; b "
         "[label=<<b>B</b>&lt;>] }",
         "label=L\nowner=x\na \"a.c\" [file] URL=u team=t\nb \"B<\" [file] team=none\n"},
        {"subgraphs are flat", "digraph g { subgraph s { x=1; a } subgraph { b -> a } }",
         "name=g\na \"a\" [file]\nb \"b\" [file]\n0000000 b -> a [depends]\n"},
        {"names that look made up", "digraph { \"%1\" -> \"%\"; subgraph \"%s\" { \"%1\" -> a } }",
         "% \"%\" [file]\n%1 \"%1\" [file]\na \"a\" [file]\n"
         "0000000 %1 -> % [depends]\n0000001 %1 -> a [depends]\n"},
    });
}

TEST(DOTReader, edgesHaveTypesComponentsAndADirection) {
    expectRead({
        {"type, then label, then style",
         "digraph { edge [style=dashed] a -> b; a -> b [label=\" calls\"];"
         "a -> b [type=t, label=l] }",
         "a \"a\" [file]\nb \"b\" [file]\n0000000 a -> b [calls]\n0000001 a -> b [dashed]\n"
         "0000002 a -> b [t]\n"},
        {"ports, but no points of the compass",
         "digraph { a:p -> b:q:ne; a:n -> b [headport=\"sw\"] }",
         "a \"a\" [file]\nb \"b\" [file]\n0000000 a -> b [depends]\n0000001 a/p -> b/q "
         "[depends]\n"},
        {"turned, and in both directions", "digraph { a:p -> b:q [dir=back]; b -> c [dir=both] }",
         "a \"a\" [file]\nb \"b\" [file]\nc \"c\" [file]\n0000000 b/q -> a/p [depends]\n"
         "0000001 b -> c [depends]\n0000002 c -> b [depends]\n"},
        {"strict", "strict digraph { a -> b a -> b }",
         "a \"a\" [file]\nb \"b\" [file]\n0000000 a -> b [depends]\n"},
    });
}

TEST(DOTReader, nodesWithPositionsForIDsAreKnownByTheirLabels) {
    expectRead({
        {"numbers", "digraph { Node1 [label=\"src/\\lmain.c\"] Node2 [label=b] Node1 -> Node2 }",
         "b \"b\" [file]\nsrc/main.c \"src/main.c\" [file]\n0000000 src/main.c -> b [depends]\n"},
        {"equal steps of a build are told apart by what they make",
         "digraph { \"0x1\" [label=cc] \"0x2\" [label=cc] \"0x3\" [label=\"a.o\"]\n"
         "\"0x4\" [label=\"b.o\"] \"0x1\" -> \"0x3\" \"0x2\" -> \"0x4\" }",
         "a.o \"a.o\" [file]\nb.o \"b.o\" [file]\ncc -> a.o \"cc\" [file]\n"
         "cc -> b.o \"cc\" [file]\n0000000 cc -> a.o -> a.o [depends]\n"
         "0000001 cc -> b.o -> b.o [depends]\n"},
        {"names stay", "digraph { node1 [label=a] main [label=b] }",
         "main \"b\" [file]\nnode1 \"a\" [file]\n"},
        {"targets of CMake, without its legend",
         "digraph { subgraph clusterLegend { legendNode0 [label=Executable] legendNode1 [label=x]"
         "legendNode0 -> legendNode1 [style=dotted] } node0 [label=\"a\\n(N::a)\"] node1 [label=b]"
         "node0 -> node1 [style=dotted] node1 -> node0 }",
         "a \"a\" [file] alias=(N::a)\nb \"b\" [file]\n0000000 a -> b [private]\n"
         "0000001 b -> a [public]\n"},
        {"the own archive of jdeps",
         "digraph \"n.jar\" { \"a\" -> \"b (n.jar)\"; \"b\" -> \"c (d.jar)\" }",
         "name=n.jar\na \"a\" [file]\nb \"b\" [file]\nc (d.jar) \"c (d.jar)\" [file]\n"
         "0000000 a -> b [depends]\n0000001 b -> c (d.jar) [depends]\n"},
    });
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
