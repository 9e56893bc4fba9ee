#include <set>

#include <gtest/gtest.h>
#include <boost/date_time/posix_time/posix_time.hpp>

#include <dependency/graph/compare_by_id.h>
#include <dependency/graph/graph_builder.h>

#include "support/text_graph.h"

namespace dependency::graph {
namespace {

using test::dependencyOf;
using test::graphOf;
using test::nodeOf;

// Each line differs from the first in one thing and orders after it.
TEST(Dependency, isEqualAndOrderedByEverythingButItsOwnId) {
    const auto a = dependencyOf("A -> B [id=5 type=t from=f to=g fromType=p toType=q]");
    const auto again = dependencyOf("A -> B [id=1 type=t:T from=f to=g fromType=p:P toType=q]");
    EXPECT_TRUE(*a == *again);
    EXPECT_FALSE(*a < *again || *again < *a);
    for (const char* line : {
             "A -> B [id=5 type=ta from=f to=g fromType=p toType=q]",
             "Aa -> B [id=5 type=t from=f to=g fromType=p toType=q]",
             "A -> Ba [id=5 type=t from=f to=g fromType=p toType=q]",
             "A -> B [id=5 type=t from=fa to=g fromType=p toType=q]",
             "A -> B [id=5 type=t from=f to=ga fromType=p toType=q]",
             "A -> B [id=5 type=t from=f to=g fromType=pa toType=q]",
             "A -> B [id=5 type=t from=f to=g fromType=p toType=qa]",
         }) {
        const auto b = dependencyOf(line);
        EXPECT_FALSE(*a == *b) << line;
        EXPECT_TRUE(*a < *b) << line;
        EXPECT_FALSE(*b < *a) << line;
    }
}

TEST(Dependency, setsHoldOneOfAnIdInOrderOfCodeUnits) {
    std::set<std::shared_ptr<Dependency>, CompareByID> set;
    for (const char* line : {"A -> B [id=b]", "A -> B [id=ab]", "C -> D [id=b]", "A -> B [id=Z]",
                             "A -> B [id=\U0001F600]", "A -> B [id=\uFF41]"}) {
        set.insert(dependencyOf(line));
    }
    std::u16string ids;
    for (const auto& dependency : set) {
        ids += dependency->getID() + u' ';
    }
    // A pair of surrogates orders before U+FF41, though its code point is greater.
    EXPECT_EQ(ids, u"Z ab b \U0001F600 \uFF41 ");
}

TEST(Graph, givesTheOutgoingDependenciesOfItsOwnNodesOnly) {
    const auto graph = graphOf("A -> B\nA -> A\nB");
    const auto twin = graphOf("A -> B\nA -> A\nB");
    const auto count = [](const Graph& in, const std::shared_ptr<Node>& node) {
        return boost::distance(in.getDownstreamDependencies(node));
    };
    EXPECT_EQ(count(*graph, nodeOf(graph, "A")), 2);
    EXPECT_EQ(count(*graph, nodeOf(graph, "B")), 0);
    EXPECT_EQ(count(*graph, nodeOf(twin, "A")), 0);
    EXPECT_TRUE(graphOf("")->getNodes().empty());
}

TEST(Graph, answersOnlyForPropertiesThatItLists) {
    const auto graph = graphOf("graph [b=1 a=2]\n@ 2024-05-06 07:08:09");
    EXPECT_EQ(graph->getPropertyKeys(), (std::vector<std::u16string>{u"b", u"a"}));
    EXPECT_EQ(graph->getProperty(u"a"), u"2");
    EXPECT_THROW((void)graph->getProperty(u"A"), std::out_of_range);
    EXPECT_EQ(getTimeStamp(*graph), boost::posix_time::time_from_string("2024-05-06 07:08:09"));
    EXPECT_TRUE(getTimeStamp(*graphOf("")).is_not_a_date_time());
}

TEST(Graph, partsOutliveTheGraphTogetherWithAllThatTheyReferTo) {
    auto dependency = dependencyOf("A -> B [type=call:Call from=x fromType=block]");
    const auto component = dependency->getUpstreamComponent();
    const auto downstream = dependency->getDownstreamNode();
    const auto type = dependency->getType();
    dependency.reset();
    EXPECT_EQ(component->getType()->getID(), u"block");
    EXPECT_EQ(downstream->getType(), Type::FILE());
    EXPECT_EQ(type->getName(), u"Call");
}

}  // namespace
}  // namespace dependency::graph
