// From detail comparisons to tables: what is accepted, what heads the tables, what the rows show.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <boost/exception/exception.hpp>

#include <comparisons/combined_view_model.h>
#include <comparisons/viewmodel/parameter_view_model.h>
#include <dependency/comparisons/compare_graphs.h>
#include <dependency/comparisons/dependency_subcomparator.h>
#include <dependency/comparisons/graph_subcomparator.h>
#include <dependency/comparisons/node_subcomparator.h>
#include <dependency/comparisons/view_model_factories.h>

#include "support/catalogs.h"
#include "support/comparison_text.h"
#include "support/table_text.h"
#include "support/text_graph.h"

namespace dependency::comparisons {
namespace {

using ::comparisons::CombinedComparison;
using ::comparisons::ComparisonValue;
using fl::i18n::Locale;
using test::tablesOf;

struct ForeignComparison {};
const std::string& get_type(const ForeignComparison& /*comparison*/) {
    static const std::string type = "foreign";
    return type;
}

ComparisonValue dependencies() {
    return ComparisonValue(DependencyComparison(
        {{test::dependencyOf("A -> B [from=x to=y type=1:calls]"), std::nullopt, false}}));
}

ComparisonValue combined() {
    std::vector<ComparisonValue> members;
    members.push_back(dependencies());
    members.emplace_back(ForeignComparison());
    members.emplace_back(CombinedComparison({}));
    return ComparisonValue(CombinedComparison(std::move(members)));
}

class FactoriesTest : public testing::Test {
  protected:
    // One of each kind, in the order of the registry, and one of no known kind.
    std::vector<ComparisonValue> comparisonsOfAllKinds() {
        std::vector<ComparisonValue> all;
        all.emplace_back(GraphPropertyComparison({}));
        all.push_back(dependencies());
        all.emplace_back(NodePropertyComparison({}));
        all.push_back(combined());
        all.emplace_back(ForeignComparison());
        return all;
    }

    const test::Catalogs catalogs;
    const ::comparisons::CreationContext context{};
    const std::vector<ComparisonValue> kinds = comparisonsOfAllKinds();
};

TEST_F(FactoriesTest, eachAcceptsItsKindRefusesToCastAnyOtherAndTheFallbackTakesTheRest) {
    const auto registry = getTwoFilteredVMFactoryRegistry();
    ASSERT_EQ(registry.factories.size(), 4U);
    std::string types;
    for (std::size_t kind = 0; kind < kinds.size(); ++kind) {
        for (std::size_t i = 0; i < registry.factories.size(); ++i) {
            SCOPED_TRACE(testing::Message() << "factory " << i << " kind " << kind);
            const auto& factory = *registry.factories[i];
            EXPECT_EQ(factory.accepts(kinds[kind]), i == kind);
            try {
                (void)factory.create(kinds[kind], context);
                EXPECT_EQ(i, kind);
            } catch (const boost::type_erasure::bad_any_cast& error) {
                EXPECT_NE(i, kind);
                EXPECT_NE(dynamic_cast<const boost::exception*>(&error), nullptr);
            }
        }
        EXPECT_TRUE(registry.fallback.accepts(kinds[kind]));
        types += registry.create(kinds[kind])->type() + ' ';
    }
    EXPECT_EQ(types, "parameter parameter parameter combined empty ");
}

TEST_F(FactoriesTest, combinedFactoryPassesTheContextOn) {
    struct Recording final : FilteredViewModelFactory {
        explicit Recording(std::vector<const void*>& seen) : contexts(seen) {}
        [[nodiscard]] bool accepts(const ComparisonValue& /*any*/) const override { return true; }
        [[nodiscard]] std::unique_ptr<FilteredViewModel> create(
            const ComparisonValue& /*any*/,
            const ::comparisons::CreationContext& given) const override {
            contexts.push_back(&given);
            return std::make_unique<::comparisons::EmptyFilteredViewModel<Filters, 2>>();
        }
        std::vector<const void*>& contexts;
    };
    std::vector<const void*> seen;
    std::vector<std::unique_ptr<FilteredViewModelFactory>> one;
    one.push_back(std::make_unique<Recording>(seen));
    const ::comparisons::FilteredCombinedViewModelFactory<Filters, 2> factory(std::move(one));
    (void)factory.create(kinds[3], context);
    EXPECT_EQ(seen, std::vector<const void*>(3, &context));
}

TEST_F(FactoriesTest, combinedFactoryNeedsNoOtherAndItsViewModelNoFactory) {
    auto registry = getTwoFilteredVMFactoryRegistry();
    registry.factories.erase(registry.factories.begin(), registry.factories.begin() + 3);
    const auto viewModel = registry.create(kinds[3]);
    registry.factories.clear();
    viewModel->commit();
    EXPECT_EQ(test::entriesOf(*viewModel), "1 x=y | -\nempty\nempty\n");
}

TEST_F(FactoriesTest, headingsAreThoseOfTheLocaleInWhichTheTableWasMade) {
    const std::pair<std::size_t, const char*> cases[] = {
        {0, "Analysedetails | \n"},
        {1, "Abhängigkeitstyp: calls\\n\\nBetroffene Komponente | \\n\\nBenötigte Komponente\n"},
        {2, "Dateieigenschaft | \n"},
    };
    for (const auto& [kind, labels] : cases) {
        Locale::setGlobal(Locale("de"));
        const auto viewModel = getTwoFilteredVMFactoryRegistry().create(kinds[kind]);
        Locale::setGlobal(Locale("ja"));
        viewModel->commit();
        EXPECT_THAT(tablesOf(*viewModel), testing::StartsWith(labels));
    }
}

TEST_F(FactoriesTest, headingNamesTheTypeOfTheFirstDependencyItsLeftOneIfThere) {
    const auto left = test::dependencyOf("A -> B [type=1:left]");
    const auto right = test::dependencyOf("A -> B [type=1:right]");
    const auto heading = [&](std::vector<DependencyEdit> edits) {
        const ComparisonValue value(DependencyComparison(std::move(edits)));
        const std::string text = tablesOf(*DependencyViewModelFactory().create(value, context));
        return text.substr(0, text.find("\\n"));
    };
    EXPECT_EQ(heading({{left, right, true}}), "Dependency type: left");
    EXPECT_EQ(heading({{std::nullopt, right, false}, {left, right, true}}),
              "Dependency type: right");
    EXPECT_THROW((void)heading({{}, {left, right, true}}), std::bad_optional_access);
    EXPECT_THROW((void)heading({}), std::out_of_range);
}

TEST_F(FactoriesTest, dependenciesShowTheirComponentsOrElseTheirFilesOneTablePerType) {
    const char* left =
        "A [name=alpha]\n"
        "B [name=beta]\n"
        "A -> B [from=gone to=y]\n"
        "A -> B [from=same]\n"
        "A -> B [to=other fromType=1]\n"
        "A -> B [type=t:include]\n";
    const char* right =
        "A [name=ALPHA]\n"
        "B [name=BETA]\n"
        "A -> B [from=same]\n"
        "A -> B [to=other fromType=2]\n"
        "A -> B [from=x to=new]\n";
    const auto comparison = compareGraphs(test::graphOf(left), test::graphOf(right));
    const auto group = comparison->children(comparison->children(comparison->root())[0].vertex)[0];
    const auto viewModel =
        getTwoFilteredVMFactoryRegistry().create((*comparison)[group.vertex].detail.get());
    viewModel->commit();
    EXPECT_EQ(tablesOf(*viewModel),
              "Dependency type: include\\n\\nImpacted component | \\n\\nRequired component\n"
              "1 alpha=beta | -\n"
              "Dependency type: use\\n\\nImpacted component | \\n\\nRequired component\n"
              "2 alpha=other | ALPHA=other\n"
              "1 gone=y | -\n"
              "3 same=beta | same=BETA\n"
              "0 - | x=new\n");
    test::applySteps(*viewModel, "N");
    viewModel->commit();
    EXPECT_EQ(test::entriesOf(*viewModel), "1 alpha=beta | -\n1 gone=y | -\n0 - | x=new\n");
    EXPECT_EQ(test::textOf(viewModel->metrics()), "2 1 0 0");
}

TEST_F(FactoriesTest, tableOutlivesItsViewModelTheComparisonAndTheGraphs) {
    auto comparison =
        compareGraphs(test::graphOf("A [checksum=1]"), test::graphOf("A [checksum=2 a=b]"));
    const auto file = comparison->children(comparison->root())[0];
    auto viewModel =
        getTwoFilteredVMFactoryRegistry().create((*comparison)[file.vertex].detail.get());
    viewModel->commit();
    const auto table =
        dynamic_cast<::comparisons::viewmodel::ParameterViewModel&>(*viewModel).table();
    const auto entry = table->getEntries()[0];
    test::applySteps(*viewModel, "N");
    viewModel->commit();
    const std::string shown = test::textOf(table);
    viewModel.reset();
    comparison.reset();
    EXPECT_EQ(test::textOf(table), shown);
    EXPECT_EQ(shown, "File property | \n0 - | a=b\n");
    // What the last commit took out of the table, too.
    EXPECT_EQ(entry->getParameters()[0]->getParameter()->getValue(), u"1");
    auto transaction = table->getModel()->beginTransaction();
    table->getEntriesMutable().clear();
    transaction.commit();
    EXPECT_EQ(test::textOf(table), "File property | \n");
}

}  // namespace
}  // namespace dependency::comparisons
