#include <algorithm>
#include <cstdlib>
#include <functional>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <boost/date_time/posix_time/posix_time.hpp>

#include <dependency/graph/graph_builder.h>

#include "support/faults.h"
#include "support/text_graph.h"

namespace dependency::graph {
namespace {

using test::dependencyOf;
using test::graphOf;
using test::nodeOf;

// The file type is there in destructors of static objects.
const struct AtExit {
    ~AtExit() {
        if (Type::FILE()->getID() != u"file") {
            std::abort();
        }
    }
} atExit;

// "node:dependencies " of every node.
std::u16string idsOf(const Graph& graph) {
    std::u16string ids;
    for (const auto& node : graph.getNodes()) {
        ids += node->getID() + u':';
        for (const auto& dependency : graph.getDownstreamDependencies(node)) {
            ids += dependency->getID();
        }
        ids += u' ';
    }
    return ids;
}

class GraphBuilderTest : public testing::Test {
  protected:
    GraphBuilder builder;
    GraphBuilder other;
    std::shared_ptr<const Type> file = Type::FILE();
    std::shared_ptr<const Type> call = builder.type(u"call", u"Call");
    std::shared_ptr<const Component> whole = builder.component(u"", call);
    std::shared_ptr<Node> a = builder.addNode(u"a", u"A", file);
    std::shared_ptr<Dependency> loop = builder.addDependency(u"1", a, a, call, whole, whole);
};

TEST_F(GraphBuilderTest, refusalsNameTheIdAndLeaveTheBuilderUsable) {
    const auto strange = other.type(u"call", u"Call");
    const auto strangePart = other.component(u"", strange);
    const auto strangeNode = other.addNode(u"a", u"A", file);
    const auto node = [this](auto id, auto type, const std::vector<Property>& properties = {}) {
        return [=, this] { builder.addNode(id, u"", type, properties); };
    };
    const auto edge = [this](auto id, auto up, auto down, auto type, auto from, auto to) {
        return [=, this] { builder.addDependency(id, up, down, type, from, to); };
    };
    const std::pair<const char*, std::function<void()>> cases[] = {
        {"a", node(u"a", call)},
        {"n", node(u"n", nullptr)},
        {"n", node(u"n", strange)},
        {"n", node(u"n", file, {{u"k", u"1"}, {u"k", u"2"}})},
        {"1", edge(u"1", a, a, call, whole, whole)},
        {"2", edge(u"2", nullptr, a, call, whole, whole)},
        {"2", edge(u"2", a, strangeNode, call, whole, whole)},
        {"2", edge(u"2", a, a, nullptr, whole, whole)},
        {"2", edge(u"2", a, a, strange, whole, whole)},
        {"2", edge(u"2", a, a, call, nullptr, whole)},
        {"2", edge(u"2", a, a, call, whole, strangePart)},
    };
    for (const auto& [id, refused] : cases) {
        EXPECT_THAT(refused, testing::ThrowsMessage<GraphBuildError>(
                                 testing::EndsWith(std::string("(\"") + id + "\")")))
            << id;
    }
    edge(u"2", builder.addNode(u"n", u"", file), a, call, whole, builder.component(u"c", call))();
    EXPECT_EQ(idsOf(*builder.finish()), u"a:1 n:2 ");
}

TEST_F(GraphBuilderTest, refusesARepeatedIdWhateverTheOrderOfIds) {
    std::vector<std::u16string> known{u"a"};
    for (const std::u16string id : {u"c", u"e", u"b", u"f", u"d"}) {
        builder.addDependency(id, builder.addNode(id, u"", file), a, call, whole, whole);
        known.push_back(id);
        for (const auto& again : known) {
            EXPECT_THROW(builder.addNode(again, u"", file), GraphBuildError);
            EXPECT_THROW(
                builder.addDependency(again == u"a" ? u"1" : again, a, a, call, whole, whole),
                GraphBuildError);
        }
    }
    EXPECT_EQ(idsOf(*builder.finish()), u"a:1 c:c e:e b:b f:f d:d ");
}

TEST_F(GraphBuilderTest, keepsNoSecondCopyOfIdsThatAscend) {
    const auto spent = [this](bool ascending) {
        GraphBuilder fresh;
        const auto before = testing_faults::allocations();
        for (char16_t i = 0; i < 100; ++i) {
            fresh.addNode(std::u16string(1, ascending ? i : 100 - i), u"", file);
        }
        return testing_faults::allocations() - before;
    };
    EXPECT_LE(spent(true) + 100, spent(false));
}

TEST_F(GraphBuilderTest, startsAnewAfterFinishing) {
    builder.setProperty(u"k", u"1");
    builder.setProperty(u"b", u"2");
    builder.setProperty(u"k", u"3");
    builder.setTimeStamp(boost::posix_time::time_from_string("2024-05-06 07:08:09"));
    const auto first = builder.finish();
    EXPECT_THROW(builder.addDependency(u"2", a, a, call, whole, whole), GraphBuildError);
    builder.addNode(u"a", u"again", file);
    const auto second = builder.finish();
    EXPECT_EQ(idsOf(*first) + idsOf(*second) + idsOf(*builder.finish()), u"a:1 a: ");

    EXPECT_EQ(first->getPropertyKeys(), (std::vector<std::u16string>{u"k", u"b"}));
    EXPECT_EQ(first->getProperty(u"k"), u"3");
    EXPECT_THROW((void)first->getProperty(u"K"), std::out_of_range);
    EXPECT_EQ(getTimeStamp(*first), boost::posix_time::time_from_string("2024-05-06 07:08:09"));
    EXPECT_TRUE(second->getPropertyKeys().empty());
    EXPECT_TRUE(getTimeStamp(*second).is_not_a_date_time());
}

TEST_F(GraphBuilderTest, makesOneObjectOfEqualTypesAndComponentsAndOneFileTypeOfNodes) {
    EXPECT_EQ(builder.type(u"call", u"Call"), call);
    EXPECT_NE(builder.type(u"call", u"Invocation"), call);
    EXPECT_EQ(builder.component(u"", call), whole);
    EXPECT_NE(builder.component(u"", file), whole);
    EXPECT_NE(builder.component(u"c", call), whole);
    EXPECT_EQ(builder.type(u"file", u"file"), file);
    const auto include = builder.type(u"file", u"Include");
    EXPECT_EQ(include->getName(), u"Include");
    EXPECT_TRUE(*include == *file);
    EXPECT_EQ(builder.addNode(u"n", u"", include)->getType(), file);
    EXPECT_EQ(builder.addDependency(u"2", a, a, include, whole, whole)->getType(), include);
}

// Each line but the first two differs from the first in one thing and orders after it.
TEST(Dependency, isEqualAndOrderedByEverythingButItsOwnId) {
    const auto a = dependencyOf("A -> B [id=5 type=t from=f to=g fromType=p toType=q]");
    const char* lines[] = {
        "A -> B [id=1 type=t:T from=f to=g fromType=p:P toType=q]",
        "A -> B [id=5 type=ta from=f to=g fromType=p toType=q]",
        "Aa -> B [id=5 type=t from=f to=g fromType=p toType=q]",
        "A -> Ba [id=5 type=t from=f to=g fromType=p toType=q]",
        "A -> B [id=5 type=t from=fa to=g fromType=p toType=q]",
        "A -> B [id=5 type=t from=f to=ga fromType=p toType=q]",
        "A -> B [id=5 type=t from=f to=g fromType=pa toType=q]",
        "A -> B [id=5 type=t from=f to=g fromType=p toType=qa]",
    };
    for (const char* line : lines) {
        const bool equal = line == lines[0];
        const auto b = dependencyOf(line);
        EXPECT_EQ(*a == *b, equal) << line;
        EXPECT_EQ(*a < *b, !equal) << line;
        EXPECT_FALSE(*b < *a) << line;
    }
}

TEST_F(GraphBuilderTest, parallelDependenciesAreOrderedByTypesBeforeComponents) {
    const auto before =
        builder.addDependency(u"2", a, a, call, builder.component(u"z", file), whole);
    const auto after = builder.addDependency(u"3", a, a, builder.type(u"calm", u""), whole, whole);
    EXPECT_TRUE(*before < *after);
    EXPECT_FALSE(*after < *before);
}

// So many that a search through all of them, for each, would take a minute.
TEST(Graph, findsEachOfManyPropertiesWhateverTheirOrder) {
    for (const int count : {3, 50'000}) {
        for (const int step : {1, -1, 7}) {
            GraphBuilder builder;
            std::vector<Property> properties;
            for (int i = 0; i < count; ++i) {
                const auto number = std::to_string(10'000'000 + i * step % count);
                properties.emplace_back(std::u16string(number.begin(), number.end()),
                                        std::u16string(number.rbegin(), number.rend()));
                builder.setProperty(properties.back().first, u"");
                builder.setProperty(properties.back().first, properties.back().second);
            }
            const auto node = builder.addNode(u"n", u"", Type::FILE(), properties);
            const auto graph = builder.finish();
            const auto keys = graph->getPropertyKeys();
            EXPECT_EQ(node->getPropertyKeys(), keys);
            ASSERT_TRUE(std::ranges::equal(keys, properties, {}, {}, &Property::first));
            for (const auto& [key, value] : properties) {
                ASSERT_EQ(node->getProperty(key), value);
                ASSERT_EQ(graph->getProperty(key), value);
            }
            EXPECT_THROW((void)node->getProperty(u"10"), std::out_of_range);
            EXPECT_THROW((void)graph->getProperty(u"9"), std::out_of_range);
            properties.push_back(properties.front());
            EXPECT_THROW(builder.addNode(u"n", u"", Type::FILE(), properties), GraphBuildError);
        }
    }
}

TEST(Graph, givesTheOutgoingDependenciesOfItsOwnNodesOnly) {
    const auto graph = graphOf("A -> B\nA -> A\nB");
    const auto twin = graphOf("A -> B\nA -> A\nB");
    EXPECT_EQ(idsOf(*graph), u"A:12 B: ");
    EXPECT_TRUE(graph->getDownstreamDependencies(nodeOf(twin, "A")).empty());
    EXPECT_TRUE(graphOf("")->getNodes().empty());
}

TEST(Graph, partsOutliveItTogetherWithAllThatTheyReferTo) {
    const char* line = "A -> B [type=call from=x fromType=block]";
    EXPECT_EQ(dependencyOf(line)->getUpstreamComponent()->getType()->getID(), u"block");
    EXPECT_EQ(dependencyOf(line)->getDownstreamNode()->getType(), Type::FILE());
    EXPECT_EQ(dependencyOf(line)->getType()->getID(), u"call");
}

}  // namespace
}  // namespace dependency::graph
