// Compares two graphs of one file, made in memory, through the installed package.
#include <cstdio>
#include <memory>
#include <string>

#include <depcompare/messages/messages.h>
#include <dependency/comparisons/compare_graphs.h>
#include <dependency/graph/graph_builder.h>

namespace {

std::shared_ptr<const dependency::graph::Graph> graphWithFile(const std::u16string& id) {
    dependency::graph::GraphBuilder builder;
    builder.addNode(id, u"a file", dependency::graph::Type::FILE());
    return builder.finish();
}

}  // namespace

int main() {
    depcompare::messages::registerMessages();
    const auto comparison =
        dependency::comparisons::compareGraphs(graphWithFile(u"old.c"), graphWithFile(u"new.c"));
    const auto files = comparison->children(comparison->root()).size();
    if (files != 2) {
        std::printf("expected a removed and an added file, found %zu entries\n", files);
        return 1;
    }
    return 0;
}
