// Compares small graphs, made in memory, through the installed package, and does what needs type
// information on both sides of the libraries' boundaries: casts and catches.
#include <cstdio>
#include <memory>
#include <string>

#include <comparisons/viewmodel/parameter_view_model.h>
#include <depcompare/messages/messages.h>
#include <dependency/comparisons/compare_graphs.h>
#include <dependency/comparisons/node_subcomparator.h>
#include <dependency/comparisons/view_model_factories.h>
#include <dependency/graph/graph_builder.h>

namespace {

namespace dc = dependency::comparisons;

std::shared_ptr<const dependency::graph::Graph> graphWithFile(const std::u16string& id) {
    dependency::graph::GraphBuilder builder;
    builder.addNode(id, u"a file", dependency::graph::Type::FILE());
    return builder.finish();
}

bool leftOut() {
    dependency::graph::GraphBuilder builder;
    const auto file = dependency::graph::Type::FILE();
    const auto type = builder.type(u"use", u"use");
    const auto whole = builder.component(u"", type);
    const auto a = builder.addNode(u"a", u"a", file);
    const auto bc = builder.addNode(u"bc", u"bc", file);
    builder.addNode(u"abc", u"abc", file);
    builder.addDependency(u"1", a, bc, type, whole, whole);
    try {
        (void)dc::compareGraphs(builder.finish(), graphWithFile(u"a"));
    } catch (const dc::UnmatchedItemError&) {
        return true;
    }
    return false;
}

}  // namespace

int main() {
    depcompare::messages::registerMessages();
    const auto comparison = dc::compareGraphs(graphWithFile(u"old.c"), graphWithFile(u"new.c"));
    const auto files = comparison->children(comparison->root());
    if (files.size() != 2) {
        std::printf("expected a removed and an added file, found %zu entries\n", files.size());
        return 1;
    }
    const auto& detail = (*comparison)[files[0].vertex].detail.get();
    (void)boost::type_erasure::any_cast<const dc::NodePropertyComparison&>(detail);
    const auto table = dc::getTwoFilteredVMFactoryRegistry().create(detail);
    if (dynamic_cast<comparisons::viewmodel::ParameterViewModel*>(table.get()) == nullptr) {
        std::puts("the view model of a file is not a table of parameters");
        return 1;
    }
    if (!leftOut()) {
        std::puts("expected an item that the matching leaves out");
        return 1;
    }
    return 0;
}
