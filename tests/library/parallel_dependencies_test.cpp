#include <dependency/comparisons/parallel_dependencies.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/catalogs.h"
#include "support/text_graph.h"

namespace dependency::comparisons {
namespace {

using test::graphOf;
using test::groupOf;
using test::nodeOf;
using testing::UnorderedElementsAre;

TEST(ParallelDependencies, groupsTheDependenciesOfAnUpstreamNodeByDownstreamNode) {
    const auto graph = graphOf(
        "x -> y [id=b]\nx -> z [id=c]\ny -> x [id=e]\nx -> y [id=ab]\nx -> x [id=d]\n"
        "lib [type=external]\nx -> lib [id=f]\nlib -> x [id=g]");
    std::vector<std::string> texts;
    for (const auto& group :
         ParallelDependencies::createParallelDependencies(graph, nodeOf(graph, "x"))) {
        EXPECT_EQ(group.upstream, nodeOf(graph, "x"));
        std::string text = test::utf8(group.downstream->getID() + u" (" + group.id + u")");
        for (const auto& dependency : group.dependencies) {
            text += ' ' + test::utf8(dependency->getID());
        }
        texts.push_back(text);
    }
    EXPECT_THAT(texts, UnorderedElementsAre("y (xy) ab b", "z (xz) c", "x (xx) d", "lib (xlib) f"));
}

TEST(ParallelDependencies, areEqualByTheirObjectsAndNotByTheirId) {
    const auto graph = graphOf("A -> B\nA -> B\nA -> C\nB -> A");
    const auto group = groupOf(graph, "A", "B");
    auto renamed = group;
    renamed.id = u"other";
    EXPECT_TRUE(renamed == group);
    EXPECT_EQ(std::hash<ParallelDependencies>{}(renamed), std::hash<ParallelDependencies>{}(group));

    auto fewer = group;
    fewer.dependencies.erase(fewer.dependencies.begin());
    EXPECT_FALSE(fewer == group);
    for (auto node : {&ParallelDependencies::upstream, &ParallelDependencies::downstream}) {
        auto otherEnd = group;
        otherEnd.*node = nodeOf(graph, "C");
        EXPECT_FALSE(otherEnd == group);
    }
    EXPECT_FALSE(groupOf(graphOf("A -> B\nA -> B"), "A", "B") == group);
}

TEST(ParallelDependencies, orderByTypeIdThenByLowerCasedNameInTheGlobalLocale) {
    const test::Catalogs catalogs;
    const struct {
        const char* locale;
        std::string nodes[2];
        bool less;
        bool greater;
    } cases[] = {
        {"en", {"type=T1 name=z", "type=T2 name=a"}, true, false},
        {"en", {"type=B name=2", "type=a name=1"}, true, false},
        {"en", {"type=T:zzz name=b", "type=T:aaa name=c"}, true, false},
        {"en", {"name=alpha", "name=Beta"}, true, false},
        {"en", {"name=X", "name=x"}, false, false},
        {"en", {"name=z", "name=Ä"}, true, false},
        {"en", {"name=IB", "name=jA"}, true, false},
        {"tr", {"name=IB", "name=jA"}, false, true},
    };
    for (const auto& [locale, nodes, less, greater] : cases) {
        fl::i18n::Locale::setGlobal(fl::i18n::Locale(locale));
        const auto graph = graphOf("u -> a\nu -> b\na [" + nodes[0] + "]\nb [" + nodes[1] + "]");
        const auto a = groupOf(graph, "u", "a");
        const auto b = groupOf(graph, "u", "b");
        EXPECT_EQ(a < b, less) << nodes[0];
        EXPECT_EQ(b < a, greater) << nodes[0];
    }
}

}  // namespace
}  // namespace dependency::comparisons
