#include <gtest/gtest.h>

#include "host_texts.h"

namespace depcompare {
namespace {

using test::expectRead;
using test::graphML;
using test::readPair;

TEST(GraphMLReader, nodesHaveNameTypeAndSortedProperties) {
    expectRead({
        {"everything",
         graphML("<node id='a'><data key='z'>1</data><data key='type'>lib</data>"
                 "<data key='b'>2</data><data key='name'>A</data></node>"),
         "a \"A\" [lib] b=2 z=1\n"},
        {"text is taken verbatim",
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
    expectRead({
        {"parallel ones, whose ends are declared later",
         graphML("<edge id='x' source='b' target='a'/>"
                 "<edge id='x' source='a' target='b'><data key='upstream_component'>f</data>"
                 "<data key='upstream_component_type'>function</data>"
                 "<data key='downstream_component'>g</data>"
                 "<data key='downstream_component_type'>class</data><data key='weight'>3</data>"
                 "</edge><edge source='a' target='b'><data key='type'>call</data></edge>"
                 "<edge source='a' target='b'/><edge source='a' target='b'/>"
                 "<node id='a'/><node id='b'/>"),
         "a \"a\" [file]\nb \"b\" [file]\n0000000 a -> b [call]\n0000001 a -> b [depends]\n"
         "0000002 a -> b [depends]\n0000003 a/f:function -> b/g:class [depends]\n"
         "0000004 b -> a [depends]\n"},
        {"ports are components, unless data name them",
         graphML("<node id='a'/><edge source='a' target='a' sourceport='p' targetport='q'/>"
                 "<edge source='a' target='a' sourceport='p'>"
                 "<data key='upstream_component'>c</data></edge>"),
         "a \"a\" [file]\n0000000 a/c -> a [depends]\n0000001 a/p -> a/q [depends]\n"},
        {"a directed edge among undirected ones",
         "<graphml><graph edgedefault='undirected'><node id='a'/>"
         "<edge source='a' target='a' directed='true'/></graph></graphml>",
         "a \"a\" [file]\n0000000 a -> a [depends]\n"},
    });
}

TEST(GraphMLReader, keysAreFoundByElementAndIDAndHaveDefaults) {
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
        {"defaults",
         "<graphml><key id='t' for='node' attr.name='type'><desc>d</desc><default>lib</default>"
         "</key><key id='n' for='node' attr.name='name'><default>N</default></key>"
         "<key id='k' for='node' attr.name='k'><default> 1</default></key>"
         "<key id='t' for='edge' attr.name='type'><default>call</default></key>"
         "<key id='u' for='edge' attr.name='upstream_component'><default>f</default></key>"
         "<key id='g' for='graph' attr.name='timestamp'><default>2024-07-29</default></key>"
         "<graph><node id='a'/><node id='b'><data key='t'>file</data><data key='n'>B</data>"
         "<data key='k'/></node><edge source='a' target='a'/>"
         "<edge source='a' target='a'><data key='t'>use</data></edge></graph></graphml>",
         "timestamp=2024-07-29\n@ 2024-07-29 00:00:00\na \"N\" [lib] k= 1\nb \"B\" [file] k=\n"
         "0000000 a/f -> a [call]\n0000001 a/f -> a [use]\n"},
        {"only the last time counts",
         graphML("<data key='timestamp'>soon</data>"
                 "<data key='timestamp'>2024-07-29T07:31:59+02:00</data>"),
         "timestamp=2024-07-29T07:31:59+02:00\n@ 2024-07-29 05:31:59\n"},
    });
}

TEST(GraphMLReader, whatOtherToolsAddIsIgnored) {
    expectRead({
        {"nested graphs are flat, without their data",
         graphML("<node id='a'><graph edgedefault='directed'><data key='k'>1</data>"
                 "<node id='b'><data key='name'>B</data></node><edge source='b' target='c'/>"
                 "</graph><data key='name'>A</data></node><node id='c'/>"),
         "a \"A\" [file]\nb \"B\" [file]\nc \"c\" [file]\n0000000 b -> c [depends]\n"},
        {"data that contain elements, and a key for graphics",
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
    });
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
    expectRead({{"other files may contain its words",
                 "<graphml><graph><node id='n0'><data key='id'>None</data></node>"
                 "<!-- Created by igraph --></graph></graphml>",
                 "n0 \"n0\" [file] id=None\n"}});
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

}  // namespace
}  // namespace depcompare
