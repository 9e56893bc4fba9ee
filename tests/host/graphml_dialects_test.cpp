#include <gtest/gtest.h>

#include "host_texts.h"

namespace depcompare {
namespace {

using test::readPair;

std::string igraph(const std::string& nodes) {
    return "<graphml>\n<!-- Created by igraph -->\n<key id='v_name' for='node' attr.name='name'/>"
           "<key id='v_id' for='node' attr.name='id'/><key id='v_k' for='node' attr.name='k'/>"
           "<graph edgedefault='directed'>" +
           nodes + "</graph></graphml>";
}

std::string yEd(const std::string& nodes) {
    return "<graphml xmlns:y='y'><key id='d6' for='node' yfiles.type='nodegraphics'/>"
           "<key id='d10' for='edge' yfiles.type='edgegraphics'/><graph edgedefault='directed'>" +
           nodes + "</graph></graphml>";
}

std::string node(const std::string& id, const std::string& label) {
    return "<node id='" + id + "'><data key='d6'>\n<y:ShapeNode><y:Fill/><y:NodeLabel>" + label +
           "</y:NodeLabel><y:NodeLabel>other</y:NodeLabel></y:ShapeNode></data></node>";
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

TEST(GraphMLOfIgraph, otherFilesMayHoldItsWords) {
    EXPECT_EQ(readPair("<graphml><graph><node id='n0'><data key='id'>None</data></node>"
                       "<!-- Created by igraph --></graph></graphml>",
                       test::graphML("")),
              "n0 \"n0\" [file] id=None\n");
}

TEST(GraphMLOfYEd, theLabelIsTheNameAndTheIDWhereItIsUnique) {
    EXPECT_EQ(readPair(yEd(node("n0", "\n a.c <y:LabelModel>m</y:LabelModel> ") +
                           node("n1", "b.c") + node("n2", "twin") +
                           "<edge source='n0' target='n1' sourceport='p'><data key='d10'>"
                           "<y:PolyLineEdge><y:EdgeLabel>calls</y:EdgeLabel></y:PolyLineEdge>"
                           "</data></edge><edge source='n0' target='n2'><data key='d10'>"
                           "<y:PolyLineEdge/></data></edge>"),
                       yEd(node("n0", "twin") + node("n1", "twin") + node("n2", ""))),
              "a.c \"a.c\" [file]\nb.c \"b.c\" [file]\nn2 \"twin\" [file]\n"
              "0000000 a.c/p -> b.c [calls]\n0000001 a.c -> n2 [depends]\n"
              "n0 \"twin\" [file]\nn1 \"twin\" [file]\nother \"other\" [file]\n");
}

}  // namespace
}  // namespace depcompare
