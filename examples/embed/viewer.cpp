// A viewer: compares two graphs, prints the rows that the filters leave, and switches filters.
#include <cstddef>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include <comparisons/viewmodel/parameter_view_model.h>
#include <depcompare/messages/messages.h>
#include <dependency/comparisons/compare_graphs.h>
#include <dependency/comparisons/graph_tree_filter.h>
#include <dependency/comparisons/node_subcomparator.h>
#include <dependency/comparisons/view_model_factories.h>
#include <dependency/graph/graph_builder.h>
#include <fl/i18n/ustring.h>

namespace dc = dependency::comparisons;
namespace dg = dependency::graph;
using fl::i18n::ustring_to_utf8;

std::shared_ptr<const dg::Graph> makeGraph(const std::u16string& lines,
                                           const std::u16string& header) {
    dg::GraphBuilder builder;
    const auto file = dg::Type::FILE();
    const auto include = builder.type(u"include", u"include");
    const auto whole = builder.component(u"", include);
    const auto app = builder.addNode(u"app.c", u"app.c", file, {{u"lines", lines}});
    const auto list = builder.addNode(u"list.h", u"list.h", file);
    const auto other = builder.addNode(header, header, file);
    builder.addDependency(u"1", app, list, include, whole, whole);
    builder.addDependency(u"2", app, other, include, whole, whole);
    return builder.finish();
}

struct Title {
    std::u16string operator()(const std::shared_ptr<const dg::Graph>&) { return u"graph"; }
    std::u16string operator()(const std::shared_ptr<dg::Node>& file) { return file->getName(); }
    std::u16string operator()(const dc::ParallelDependencies& group) {
        return group.upstream->getName() + u" -> " + group.downstream->getName();
    }
};

char mark(comparisons::EditType type) {
    return "+-~="[static_cast<std::size_t>(type)];
}

void print(const dc::FilteredViewModel& detail) {
    using Combined = comparisons::FilteredCombinedViewModel<dc::Filters, 2>;
    if (const auto* combined = dynamic_cast<const Combined*>(&detail)) {
        for (const auto& member : combined->members()) {
            print(*member);
        }
        return;
    }
    const auto& shown = dynamic_cast<const comparisons::viewmodel::ParameterViewModel&>(detail);
    for (const auto& row : shown.table()->getEntries()) {
        std::cout << "  " << mark(row->getEditTypes()[0]);
        for (const auto& side : row->getParameters()) {
            if (const auto& cell = side->getParameter()) {
                std::cout << "  " << ustring_to_utf8(cell->getName() + u": " + cell->getValue());
            }
        }
        std::cout << '\n';
    }
}

class Viewer : public dc::FilteredGraphTree {
  public:
    explicit Viewer(const dc::GraphComparison& comparison) : dc::FilteredGraphTree(comparison) {
        const auto registry = dc::getTwoFilteredVMFactoryRegistry();
        for (const Entry& entry : entries()) {
            details_.push_back(registry.create(comparison[vertex(entry.match)].detail.get()));
        }
    }

    using Metrics = std::optional<comparisons::DiffMetrics<2>>;
    Metrics metrics(comparisons::viewmodel::tree::Match match) const override {
        return details_[match->getIndex()]->metrics();
    }

    void show(const std::vector<dc::Filters>& filters) {
        const dc::FilteredViewModel::FilterRange range(filters);
        for (const auto& detail : details_) {
            detail->resetVisibility();
            detail->applyFilters(&range);
            detail->commit();
        }
        resetVisibility();
        for (const auto& filter : filters) {
            applyFilter(filter);
        }
        for (const Entry& entry : entries()) {
            if (entry.visible != 0) {
                const auto title = std::visit(Title(), anySide(*edit(entry.match)));
                std::cout << mark(entry.match->getEditTypes()[0]) << ' ' << ustring_to_utf8(title)
                          << '\n';
                print(*details_[entry.match->getIndex()]);
            }
        }
    }

  private:
    std::vector<std::unique_ptr<dc::FilteredViewModel>> details_;  // by the entry's index
};

int main() {
    depcompare::messages::registerMessages();
    const auto old = makeGraph(u"120", u"log.h");
    const auto comparison = dc::compareGraphs(old, makeGraph(u"90", u"net.h"));

    Viewer viewer(*comparison);
    viewer.show(dc::getDefaultEnabledFilters());
    std::cout << "With properties:\n";
    viewer.show({comparisons::UnchangedFilter()});

    const auto app = comparison->children(comparison->root()).front().vertex;
    const auto& detail = (*comparison)[app].detail.get();
    const auto& compared = boost::type_erasure::any_cast<const dc::NodePropertyComparison&>(detail);
    std::cout << "Properties of app.c: " << compared.edits().size() << '\n';

    try {
        (void)dc::compareGraphs(old, makeGraph(u"90", u"app.clist.h"));
    } catch (const dc::UnmatchedItemError& error) {
        std::cout << "Not compared: " << error.what() << '\n';
    }
}
