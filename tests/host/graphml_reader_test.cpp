#include "formats/graphml/graphml_reader.h"

#include <gtest/gtest.h>

#include "host_texts.h"

namespace depcompare {
namespace {

using test::expectRead;
using test::graphML;
using test::read;

TEST(GraphMLReader, nodesHaveNameTypeAndSortedProperties) {
    expectRead({
        {"everything",
         graphML("<node id='a'><data key='z'>1</data><data key='type'>lib</data>"
                 "<data key='b'>2</data><data key='name'>A</data></node>"),
         "a \"A\" [lib] b=2 z=1\n"},
        {"text as it stands",
         graphML("<node id=' a '><data key='name'></data><data key='type'/><data key='k'> x\ty "
                 "<!-- z --><![CDATA[<&]]>&lt;</data></node>"),
         " a  \"\" [] k= x\ty <&<\n"},
        {"the last value holds",
         graphML("<node id='a'><data key='k'>1</data><data key='name'>x</data>"
                 "<data key='k'>2</data><data key='name'>y</data></node>"),
         "a \"y\" [file] k=2\n"},
        {"IDs in code-unit order",
         graphML("<node id='\xEF\xBD\x81'/><node id='\xF0\x9F\x98\x80'/>"
                 "<node id='b'/><node id=''/><node id='a'/><node id='ab'/>"),
         " \"\" [file]\na \"a\" [file]\nab \"ab\" [file]\nb \"b\" [file]\n"
         "\xF0\x9F\x98\x80 \"\xF0\x9F\x98\x80\" [file]\n\xEF\xBD\x81 \"\xEF\xBD\x81\" [file]\n"},
    });
}

TEST(GraphMLReader, dependenciesAreNumberedByContent) {
    const std::string edges =
        "<edge id='x' source='b' target='a'/>"
        "<edge id='x' source='a' target='b'><data key='upstream_component'>f</data>"
        "<data key='upstream_component_type'>function</data>"
        "<data key='downstream_component'>g</data>"
        "<data key='downstream_component_type'>class</data><data key='weight'>3</data></edge>"
        "<edge source='a' target='b'><data key='type'>call</data></edge>"
        "<edge source='a' target='b'/><edge source='a' target='b'/><node id='a'/><node id='b'/>";
    EXPECT_EQ(read(graphML(edges)),
              "a \"a\" [file]\n"
              "b \"b\" [file]\n"
              "0000000 a -> b [call]\n"
              "0000001 a -> b [depends]\n"
              "0000002 a -> b [depends]\n"
              "0000003 a/f:function -> b/g:class [depends]\n"
              "0000004 b -> a [depends]\n");
}

TEST(GraphMLReader, graphDataAreItsPropertiesAndItsTime) {
    expectRead({
        {"a time", graphML("<data key='timestamp'>2024-07-29T07:31:59+02:00</data>"),
         "timestamp=2024-07-29T07:31:59+02:00\n@ 2024-07-29 05:31:59\n"},
        {"only the last time counts",
         graphML("<data key='timestamp'>soon</data><data key='timestamp'>2024-07-29</data>"),
         "timestamp=2024-07-29\n@ 2024-07-29 00:00:00\n"},
    });
}

TEST(GraphMLReader, keysAreFoundByElementAndID) {
    const std::string data = "<data key='d0'>x</data>";
    const std::string graph = "<graph>" + data + "<node id='n'>" + data +
                              "</node><edge source='n' target='n'>" + data +
                              "</edge></graph></graphml>";
    expectRead({
        {"one ID for several keys",
         "<graphml><key id='d0' for='node' attr.name='name'/>"
         "<key id='d0' for='edge' attr.name='type'/><key id='d0' for='graph' attr.name='g'/>" +
             graph,
         "g=x\nn \"x\" [file]\n0000000 n -> n [x]\n"},
        {"one key for everything", "<graphml><key id='d0' for='all' attr.name='type'/>" + graph,
         "type=x\nn \"n\" [x]\n0000000 n -> n [x]\n"},
        {"no name", "<graphml><key id='d0' for='node'/>" + graph,
         "d0=x\nn \"n\" [file] d0=x\n0000000 n -> n [depends]\n"},
    });
}

TEST(GraphMLReader, defaultsStandInForMissingValues) {
    expectRead({
        {"of nodes",
         "<graphml><key id='t' for='node' attr.name='type'><desc>d</desc><default>lib</default>"
         "</key><key id='n' for='node' attr.name='name'><default>N</default></key>"
         "<key id='k' for='node' attr.name='k'><default> 1</default></key><graph>"
         "<node id='a'/><node id='b'><data key='t'>file</data><data key='n'>B</data>"
         "<data key='k'/></node></graph></graphml>",
         "a \"N\" [lib] k= 1\nb \"B\" [file] k=\n"},
        {"of edges and the graph",
         "<graphml><key id='t' for='edge' attr.name='type'><default>call</default></key>"
         "<key id='u' for='edge' attr.name='upstream_component'><default>f</default></key>"
         "<key id='g' for='graph' attr.name='timestamp'><default>2024-07-29</default></key>"
         "<graph><node id='a'/><edge source='a' target='a'/>"
         "<edge source='a' target='a'><data key='t'>use</data></edge></graph></graphml>",
         "timestamp=2024-07-29\n@ 2024-07-29 00:00:00\na \"a\" [file]\n"
         "0000000 a/f -> a [call]\n0000001 a/f -> a [use]\n"},
    });
}

TEST(GraphMLReader, whatOtherToolsAddIsPassedOver) {
    expectRead({
        {"nested graphs are flat, without their data",
         graphML("<node id='a'><graph edgedefault='directed'><data key='k'>1</data>"
                 "<node id='b'><data key='name'>B</data></node><edge source='b' target='c'/>"
                 "</graph><data key='name'>A</data></node><node id='c'/>"),
         "a \"A\" [file]\nb \"B\" [file]\nc \"c\" [file]\n0000000 b -> c [depends]\n"},
        {"data that holds elements, and a key for graphics",
         "<?xml version='1.0' standalone='no'?><graphml xmlns:y='http://y'>"
         "<key id='d5' for='node' yfiles.type='nodegraphics'/>"
         "<key id='d6' for='node' attr.name='k'/><data key='d7'><y:Resources/></data><graph>"
         "<node id='a'><data key='d5'>\n<y:ShapeNode><y:Label>L</y:Label></y:ShapeNode></data>"
         "<data key='d6'><y:x>1</y:x></data></node><node id='b'><data key='d5'> </data></node>"
         "</graph></graphml>",
         "a \"a\" [file]\nb \"b\" [file]\n"},
        {"a prefix for everything",
         "<g:graphml xmlns:g='http://graphml.graphdrawing.org/xmlns'><g:graph>"
         "<g:node id='a'><g:data key='name'>A</g:data></g:node><node "
         "id='b'/></g:graph></g:graphml>",
         "a \"A\" [file]\n"},
        {"a directed edge where undirected ones are the rule",
         "<graphml><graph edgedefault='undirected'><node id='a'/>"
         "<edge source='a' target='a' directed='true'/></graph></graphml>",
         "a \"a\" [file]\n0000000 a -> a [depends]\n"},
    });
}

TEST(GraphMLReader, badInputIsRefusedWithItsLine) {
    std::string tooDeep = "\n";
    for (int i = 0; i < 300; ++i) {
        tooDeep += "<desc>";
    }
    expectRead({
        {"empty", "", "in: neither content nor name tell the format; --input-format can name it"},
        {"cut off", "<graphml>\n<graph><node id='a'/>\n",
         "in:3: not well-formed XML: no element found"},
        {"mismatched", graphML("\n<node id='a'></edge>\n"),
         "in:3: not well-formed XML: mismatched tag"},
        {"another language", "\n<html></html>",
         "in:2: not GraphML: the outermost element is \"html\""},
        {"entities", "<!DOCTYPE graphml [\n<!ENTITY a 'aaaa'>]><graphml/>",
         "in:2: entity declarations are not accepted"},
        {"external entities", "<!DOCTYPE graphml [\n<!ENTITY a SYSTEM 'other'>]><graphml/>",
         "in:2: entity declarations are not accepted"},
        {"undeclared entities",
         "<!DOCTYPE graphml SYSTEM 'x'>\n<graphml><graph><node id='a'><data key='k'>&x;</data>"
         "</node></graph></graphml>",
         "in:2: undefined entity"},
        {"depth", graphML(tooDeep), "in:3: elements nested deeper than 256 (--max-nesting)"},
        {"a second node", graphML("<node id='a'/>\n<node id='b'/>\n<node id='a'/>"),
         "in:4: second node with the ID \"a\""},
        {"the first of several undeclared ends",
         graphML("<node id='a'/>\n<edge source='a' target='y'/>\n<edge source='x' target='y'/>\n"),
         "in:3: the edge's end \"y\" is not declared as a node"},
        {"undirected by rule",
         "<graphml><graph edgedefault='undirected'><node id='a'/>\n"
         "<edge source='a' target='a'/></graph></graphml>",
         "in:2: undirected edge between \"a\" and \"a\""},
        {"undirected by itself",
         graphML("<node id='a'/>\n<edge source='a' target='a' directed='false'/>"),
         "in:3: undirected edge between \"a\" and \"a\""},
        {"a time that is none", graphML("\n<data key='timestamp'>\n2024</data>\n<node id='a'/>"),
         "in:3: the timestamp \"\n2024\" is not a date and time in ISO 8601"},
        {"a default time that is none",
         "<graphml>\n<key id='t' for='graph' attr.name='timestamp'><default>x</default>\n</key>"
         "<graph/></graphml>",
         "in:2: the timestamp \"x\" is not a date and time in ISO 8601"},
        {"a node without an ID", graphML("<node/>"), "in:2: <node> without the attribute \"id\""},
        {"data without a key", graphML("<data/>"), "in:2: <data> without the attribute \"key\""},
        {"a key after its use",
         "<graphml><graph><node id='a'><data key='k'/></node></graph>\n"
         "<key id='k' for='node' attr.name='name'/></graphml>",
         "in:2: key \"k\" is declared twice, or after its use"},
    });
}

TEST(GraphMLReader, portsAreTheComponentsOfAnEdgeUnlessItsDataNameThem) {
    expectRead({{"both",
                 graphML("<node id='a'/><edge source='a' target='a' sourceport='p' "
                         "targetport='q'/><edge source='a' target='a' sourceport='p'>"
                         "<data key='upstream_component'>c</data></edge>"),
                 "a \"a\" [file]\n0000000 a/c -> a [depends]\n0000001 a/p -> a/q [depends]\n"}});
}

TEST(GraphMLReader, aLimitThatIsExceededIsNamed) {
    const std::string file = graphML(
        "<node id='a'/><node id='b'><data key='k'>12345678</data><data key='l'/></node>"
        "<edge source='a' target='b'/><edge source='a' target='b'/>");
    const std::pair<Limits, const char*> cases[] = {
        {{.bytes = 200}, "in: larger than 200 bytes (--max-input-bytes)"},
        {{.nodes = 1}, "in:2: more than 1 nodes (--max-nodes)"},
        {{.edges = 1}, "in:2: more than 1 edges (--max-edges)"},
        {{.properties = 1}, "in:2: more than 1 properties of one node"},
        {{.textBytes = 7}, "in:2: a text of more than 7 bytes (--max-text-bytes)"},
        {{.nestingDepth = 3}, "in:2: elements nested deeper than 3 (--max-nesting)"},
    };
    for (const auto& [limits, expected] : cases) {
        EXPECT_EQ(read(file, limits), expected);
    }
}

}  // namespace
}  // namespace depcompare
