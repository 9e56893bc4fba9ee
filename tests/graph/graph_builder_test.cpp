#include <dependency/graph/graph_builder.h>

#include <functional>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace dependency::graph {
namespace {

using testing::HasSubstr;

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
    const auto strangeType = other.type(u"call", u"Call");
    const auto strangeComponent = other.component(u"", strangeType);
    const auto strangeNode = other.addNode(u"a", u"A", file);
    const struct {
        const char* what;
        std::u16string id;
        std::function<void()> add;
    } cases[] = {
        {"second node", u"a", [&] { builder.addNode(u"a", u"other", call); }},
        {"null type", u"n", [&] { builder.addNode(u"n", u"", nullptr); }},
        {"type of another builder", u"n", [&] { builder.addNode(u"n", u"", strangeType); }},
        {"key twice", u"n",
         [&] {
             builder.addNode(u"n", u"", file, {{u"k", u"1"}, {u"k", u"2"}});
         }},
        {"second dependency", u"1", [&] { builder.addDependency(u"1", a, a, call, whole, whole); }},
        {"null upstream", u"2", [&] { builder.addDependency(u"2", {}, a, call, whole, whole); }},
        {"downstream of another", u"2",
         [&] { builder.addDependency(u"2", a, strangeNode, call, whole, whole); }},
        {"null dependency type", u"2",
         [&] { builder.addDependency(u"2", a, a, {}, whole, whole); }},
        {"dependency type of another", u"2",
         [&] { builder.addDependency(u"2", a, a, strangeType, whole, whole); }},
        {"null upstream component", u"2",
         [&] { builder.addDependency(u"2", a, a, call, {}, whole); }},
        {"downstream component of another", u"2",
         [&] { builder.addDependency(u"2", a, a, call, whole, strangeComponent); }},
    };
    for (const auto& [what, id, add] : cases) {
        SCOPED_TRACE(what);
        try {
            add();
            ADD_FAILURE() << "not refused";
        } catch (const GraphBuildError& error) {
            EXPECT_EQ(error.id(), id);
            EXPECT_THAT(error.what(), HasSubstr('"' + std::string(id.begin(), id.end()) + '"'));
        }
    }
    const auto n = builder.addNode(u"n", u"", file, {{u"k", u"1"}});
    builder.addDependency(u"2", n, a, call, whole, builder.component(u"c", call));
    EXPECT_EQ(idsOf(*builder.finish()), u"a:1 n:2 ");
}

TEST_F(GraphBuilderTest, refusesARepeatedIdWhateverTheOrderOfIds) {
    for (const std::u16string id : {u"c", u"e", u"b", u"f", u"d"}) {
        const auto node = builder.addNode(id, u"", file);
        builder.addDependency(id, node, a, call, whole, whole);
        for (const std::u16string known : {u"a", u"c", u"e", u"b", u"f", u"d"}) {
            EXPECT_THROW(builder.addNode(known, u"", file), GraphBuildError);
            const std::u16string dependency = known == u"a" ? u"1" : known;
            EXPECT_THROW(builder.addDependency(dependency, a, a, call, whole, whole),
                         GraphBuildError);
            if (known == id) {
                break;
            }
        }
    }
    EXPECT_EQ(idsOf(*builder.finish()), u"a:1 c:c e:e b:b f:f d:d ");
}

TEST_F(GraphBuilderTest, startsAnewAfterFinishing) {
    builder.setProperty(u"k", u"1");
    builder.setProperty(u"l", u"2");
    builder.setProperty(u"k", u"3");
    const auto first = builder.finish();
    EXPECT_THROW(builder.addDependency(u"2", a, a, call, whole, whole), GraphBuildError);
    builder.addNode(u"a", u"again", file);
    const auto second = builder.finish();

    EXPECT_EQ(idsOf(*first), u"a:1 ");
    EXPECT_EQ(idsOf(*second), u"a: ");
    EXPECT_EQ(first->getPropertyKeys(), (std::vector<std::u16string>{u"k", u"l"}));
    EXPECT_EQ(first->getProperty(u"k"), u"3");
    EXPECT_TRUE(second->getPropertyKeys().empty());
    EXPECT_EQ(idsOf(*builder.finish()), u"");
}

TEST_F(GraphBuilderTest, makesOneObjectOfEqualTypesAndComponents) {
    EXPECT_EQ(builder.type(u"call", u"Call"), call);
    EXPECT_NE(builder.type(u"call", u"Invocation"), call);
    EXPECT_EQ(builder.type(u"file", u"any name"), Type::FILE());
    EXPECT_EQ(builder.component(u"", call), whole);
    EXPECT_NE(builder.component(u"", file), whole);
    EXPECT_NE(builder.component(u"c", call), whole);
}

}  // namespace
}  // namespace dependency::graph
