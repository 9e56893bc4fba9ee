// What each format makes of its particular cases; the numbers of whole samples are checked apart.
#include "formats/formats.h"

#include <string>

#include <gtest/gtest.h>

#include "formats/csv/csv_writer.h"
#include "formats/load_graphs.h"
#include "host_texts.h"
#include "input/input_error.h"

namespace depcompare {
namespace {

using test::expectRead;

std::string readAs(const std::string& format, const std::string& file) {
    try {
        auto loaded =
            loadGraph(Input::fromText("in", file), {.format = format}, [](std::string_view) {});
        return test::textOf(loaded);
    } catch (const InputError& error) {
        return error.what();
    }
}

TEST(Formats, tablesOfEdges) {
    const std::string edge = "a \"a\" [file]\nb \"b\" [file]\n0000000 a -> b [depends]\n";
    expectRead({
        {"comments, empty lines, carriage returns, a mark, other names and order",
         "\xEF\xBB\xBF# x\r\n\r\nTO,\"From\"\r\nb,a\r\n", edge},
        {"quotation marks, separators and line breaks",
         "source,target\n\"a \"\"b\"\"\",\"c,\r\nd\"\n",
         "a \"b\" \"a \"b\"\" [file]\nc,\r\nd \"c,\r\nd\" [file]\n"
         "0000000 a \"b\" -> c,\r\nd [depends]\n"},
        {"types and components", "source,type,target,upstream_component\na,t,b,p\na,,b,\n",
         "a \"a\" [file]\nb \"b\" [file]\n0000000 a -> b [depends]\n0000001 a/p -> b [t]\n"},
        {"rows without a target describe", "from,to,type,name,size\na,,lib,A,7\n\"#a\",,,,\n",
         "#a \"#a\" [file]\na \"A\" [lib] size=7\n"},
        {"tabs", "source\ttarget\na\tb\n", edge},
        {"a quotation mark too many", "source,target\na,b\"c\n",
         "in:2: quotation mark inside a field that does not begin with one"},
        {"text behind a field", "source,target\n\"a\"b,c\n", "in:2: text after a quoted field"},
        {"no end", "source,target\n\"a,b\nc", "in:3: quoted field without an end"},
        {"too few fields", "source,target,type\na,b\n", "in:2: 2 fields, but 3 in the first line"},
        {"no source", "source,target\n,b\n", "in:2: row without a source"},
    });
    EXPECT_EQ(readAs("csv", "a,b\n"), edge);
    EXPECT_EQ(readAs("csv", "a,b,c,d\n"),
              "in:1: no header with \"source\" and \"target\", or \"from\" and \"to\", and not two "
              "or three fields");
    EXPECT_EQ(readAs("csv", "a,\xFF\n"),
              "in:1: not UTF-8; convert the file, for example with iconv");
    EXPECT_EQ(
        test::load("source,target,size\na,b,7\n").warnings,
        std::vector<std::string>{"dependencies have no properties; ignored columns: \"size\""});
}

TEST(Formats, whatIsWrittenAsATableIsReadAgain) {
    const std::string table =
        "source,target,type,upstream_component,downstream_component,upstream_component_type,"
        "downstream_component_type\r\n"
        "\"#\",,file,,,,\r\n"
        "a,\"b\n\"\"\",t,p,q,r,s\r\n"
        "lib,,archive,,,,\r\n";
    const LoadedGraph loaded = test::load(table);
    EXPECT_EQ(test::written([&](Output& output) { writeCSV(*loaded.graph, output); }), table);
}

TEST(Formats, listsOfEdges) {
    expectRead({
        {"pairs, equal ones being nodes", "a b # c\n\n# x\n\tc   c\n",
         "a \"a\" [file]\nb \"b\" [file]\nc \"c\" [file]\n0000000 a -> b [depends]\n"},
        {"modules of Go", "m a.b/c@v1.2\n",
         "a.b/c \"a.b/c\" [file] version=v1.2\nm \"m\" [file]\n0000000 m -> a.b/c [depends]\n"},
        {"a module in two versions", "m c@v1\nc@v1 c@v2\n",
         "c@v1 \"c\" [file] version=v1\nc@v2 \"c\" [file] version=v2\nm \"m\" [file]\n"
         "0000000 c@v1 -> c@v2 [depends]\n0000001 m -> c@v1 [depends]\n"},
        {"data as networkx writes them",
         "a b {}\nb a {'type': \"it's\", 'upstream_component': 'f\\\\g#'} # x\n",
         "a \"a\" [file]\nb \"b\" [file]\n0000000 a -> b [depends]\n"
         "0000001 b/f\\g# -> a [it's]\n"},
        {"one pair of words may be anything", "hello world\n",
         R"(in: fits no format; it begins with "hello world"; --list-formats explains what can be read)"},
    });
    EXPECT_EQ(readAs("list", "a b t\na a\na a u"),
              "a \"a\" [file]\nb \"b\" [file]\n0000000 a -> b [t]\n0000001 a -> a [u]\n");
    EXPECT_EQ(readAs("list", "a b\n\na b c d\n"),
              "in:3: 4 words on a line of an edge list, expected 2 or 3");
}

TEST(Formats, membersThatAFormatOfJsonDoesNotHaveAreWarnedOf) {
    EXPECT_EQ(test::load(R"({"graph": {"nodes": {"a": {}}, "x": {}}, "y": 1})").warnings,
              (std::vector<std::string>{"ignored members that this format does not have: \"y\"",
                                        "ignored members of the graph that this format does not "
                                        "have: \"x\""}));
}

}  // namespace
}  // namespace depcompare
