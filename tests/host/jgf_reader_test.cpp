#include "formats/jgf/jgf_reader.h"

#include <gtest/gtest.h>

#include "host_texts.h"
#include "input/input_error.h"

namespace depcompare {
namespace {

using test::expectRead;

TEST(JGFReader, bothVersionsGiveTheSameGraph) {
    const std::string expected =
        "k=v\nlabel=L\na \"A\" [lib] n=1 p={\"q\":[2]} type=t\nb \"b\" [file]\n"
        "0000000 a/f:g -> b [call]\n0000001 a -> b [depends]\n0000002 a -> b [use]\n";
    const std::string a = R"("label": "A", "metadata": {"type": "lib", "n": 1, "p": {"q": [2]},
                             "properties": {"type": "t"}})";
    const std::string rest =
        R"("edges": [{"source": "a", "target": "b", "relation": "call", "metadata": {"type": "x",
                      "upstream_component": "f", "upstream_component_type": "g", "weight": 2}},
                     {"source": "a", "target": "b", "directed": true},
                     {"source": "a", "target": "b", "metadata": {"type": "use"}}],
           "label": "L", "metadata": {"k": "v", "label": "L"}}})";
    expectRead({
        {"version 1", R"({"graph": {"nodes": [{"id": "a", )" + a + R"(}, {"id": "b"}], )" + rest,
         expected},
        {"version 2",
         R"({"graph": {"directed": true, "nodes": {"a": {)" + a + R"(}, "b": {}}, )" + rest,
         expected},
        {"the only one of several", R"({"graphs": [{"edges": [], "nodes": {"[]": {}, "": null}}]})",
         " \"\" [file]\n[] \"[]\" [file]\n"},
        {"exact numbers",
         R"({"graph": {"metadata": {"a": 1.50, "b": 123456789012345678901234567890, "c": true,
                                    "d": null, "e": -7}}})",
         "a=1.50\nb=123456789012345678901234567890\nc=true\nd=null\ne=-7\n"},
    });
}

TEST(JGFReader, whatCannotBeReadIsRefusedInOneLine) {
    const std::string edge = R"("edges": [{"source": "a", "target": "b"}])";
    expectRead({
        {"several graphs",
         R"({"graphs": [{"nodes": {"a": {}}},)"
         "\n"
         R"({"nodes": {"a": {}}}]})",
         "in:2: more than one graph in the file"},
        {"undirected by rule", R"({"graph": {)" + edge + R"(, "directed": false}})",
         "in:1: undirected edge between \"a\" and \"b\""},
        {"undirected by itself",
         R"({"graph": {"edges": [{"source": "a", "target": "b", "directed": false}]}})",
         "in:1: undirected edge between \"a\" and \"b\""},
        {"a node without an ID", R"({"graph": {"nodes": [{}]}})", "in:1: a node without \"id\""},
        {"an edge without an end", R"({"graph": {"edges": [{"source": "a"}]}})",
         "in:1: an edge without \"source\" or \"target\""},
    });
    Input other = Input::fromText("in", "[1]");
    EXPECT_THROW(static_cast<void>(readJGF(other)), InputError);
    EXPECT_EQ(test::load(R"({"graph": {"hyperedges": [{}, {}]}})").warnings,
              std::vector<std::string>{"2 hyperedges were passed over"});
}

}  // namespace
}  // namespace depcompare
