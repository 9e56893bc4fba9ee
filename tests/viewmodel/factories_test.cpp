// From detail comparisons to tables: what is accepted, what heads the tables, what the rows show.
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <boost/exception/exception.hpp>

#include <comparisons/combined_view_model.h>
#include <dependency/comparisons/compare_graphs.h>
#include <dependency/comparisons/dependency_subcomparator.h>
#include <dependency/comparisons/graph_subcomparator.h>
#include <dependency/comparisons/node_subcomparator.h>
#include <dependency/comparisons/view_model_factories.h>
#include <foundation/log/logger.h>

#include "support/catalogs.h"
#include "support/comparison_text.h"
#include "support/filter_steps.h"
#include "support/table_text.h"
#include "support/text_graph.h"

namespace dependency::comparisons {
namespace {

using ::comparisons::CombinedComparison;
using ::comparisons::ComparisonValue;
using fl::i18n::Locale;
using fl::i18n::MessageCatalog;
using test::tablesOf;
using test::textOf;

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
    members.push_back(ComparisonValue(ForeignComparison()));
    members.push_back(ComparisonValue(CombinedComparison({})));
    return ComparisonValue(CombinedComparison(std::move(members)));
}

class FactoriesTest : public testing::Test {
  protected:
    // One of each kind, in the order of the registry, and one of no known kind.
    std::vector<ComparisonValue> comparisonsOfAllKinds() {
        std::vector<ComparisonValue> all;
        all.push_back(ComparisonValue(GraphPropertyComparison({})));
        all.push_back(dependencies());
        all.push_back(ComparisonValue(NodePropertyComparison({})));
        all.push_back(combined());
        all.push_back(ComparisonValue(ForeignComparison()));
        return all;
    }

    const test::Catalogs catalogs;
    const ::comparisons::CreationContext context{};
    const std::vector<ComparisonValue> kinds = comparisonsOfAllKinds();
};

TEST_F(FactoriesTest, eachAcceptsItsKindAndRefusesToCastAnyOther) {
    const auto registry = getTwoFilteredVMFactoryRegistry();
    ASSERT_EQ(registry.factories.size(), 4U);
    for (std::size_t i = 0; i < registry.factories.size(); ++i) {
        for (std::size_t kind = 0; kind < kinds.size(); ++kind) {
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
    }
}

TEST_F(FactoriesTest, viewModelsTellTheirTypeAndTheFallbackTakesTheRest) {
    const auto registry = getTwoFilteredVMFactoryRegistry();
    std::string types;
    for (const ComparisonValue& comparison : kinds) {
        EXPECT_TRUE(registry.fallback.accepts(comparison));
        types += registry.create(comparison)->type() + ' ';
    }
    EXPECT_EQ(types, "parameter parameter parameter combined empty ");

    const auto empty = registry.create(kinds[4]);
    test::applySteps(*empty, "UNR");
    empty->commit();
    EXPECT_EQ(textOf(empty->metrics()), "0 0 0 0");
    EXPECT_EQ(empty->rowCount(), ::comparisons::RowCount());
}

TEST_F(FactoriesTest, registryIsFreshOnEveryCallAndOwnsItsFactories) {
    const auto first = getTwoFilteredVMFactoryRegistry();
    const auto second = getTwoFilteredVMFactoryRegistry();
    std::set<const void*> distinct;
    for (const auto& registry : {first, second}) {
        for (const auto& factory : registry.factories) {
            distinct.insert(factory.get());
        }
    }
    EXPECT_EQ(distinct.size(), 8U);
    EXPECT_EQ(getTwoFilteredVMFactoryRegistry().factories[0].use_count(), 1);
}

TEST_F(FactoriesTest, combinedFactoryNeedsNoOtherAndItsViewModelNoFactory) {
    auto registry = getTwoFilteredVMFactoryRegistry();
    registry.factories.erase(registry.factories.begin(), registry.factories.begin() + 3);
    const auto viewModel = registry.create(kinds[3]);
    registry.factories.clear();
    viewModel->commit();
    EXPECT_EQ(tablesOf(*viewModel),
              "Dependency type: calls\\n\\nImpacted component | \\n\\nRequired component\n"
              "1 x=y | -\n"
              "empty\n"
              "empty\n");
}

TEST_F(FactoriesTest, headingsAreThoseOfTheLocaleInWhichTheTableWasMade) {
    const struct {
        const char* locale;
        std::size_t kind;
        const char* labels;
    } cases[] = {
        {"en", 0, "Analysis details | \n"},
        {"en", 1, "Dependency type: calls\\n\\nImpacted component | \\n\\nRequired component\n"},
        {"en", 2, "File property | \n"},
        {"de", 0, "Analysedetails | \n"},
        {"de", 1,
         "Abhängigkeitstyp: calls\\n\\nBetroffene Komponente | "
         "\\n\\nBenötigte Komponente\n"},
        {"de", 2, "Dateieigenschaft | \n"},
    };
    for (const auto& [locale, kind, labels] : cases) {
        SCOPED_TRACE(testing::Message() << locale << kind);
        Locale::setGlobal(Locale(locale));
        const auto viewModel = getTwoFilteredVMFactoryRegistry().create(kinds[kind]);
        EXPECT_EQ(tablesOf(*viewModel), labels);
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
}

TEST_F(FactoriesTest, missingLabelLeavesNoTableAndOfSeveralTheFirstAskedForIsTold) {
    const struct {
        const char* key;
        const char* catalog = "ORBITA:dependency:comparisons";
    } labels[] = {{"DependencyType"},
                  {"ImpactedComponent"},
                  {"RequiredComponent"},
                  {"AnalysisDetails"},
                  {"FileProperty"},
                  {"ParamValue", "comparisons:commonweb"},
                  {"ParamName", "comparisons:commonweb"}};
    const auto missing = [&](std::size_t kind) -> std::string {
        try {
            (void)getTwoFilteredVMFactoryRegistry().create(kinds[kind]);
            return "none";
        } catch (const fl::i18n::MessageNotFound& error) {
            return std::string(error.id().key());
        }
    };
    std::vector<std::string> records;
    auto previous = foundation::log::Logger::setSink(
        [&](const auto& record) { records.push_back(record.message); });
    MessageCatalog::clear();
    // What is missed first, by kind, before each label joins the catalog.
    std::string missed;
    for (std::size_t i = std::size(labels); i-- > 0;) {
        for (const std::size_t kind : {0U, 1U, 2U}) {
            missed += missing(kind) + ' ';
        }
        missed += '\n';
        MessageCatalog::add("en", "{\"" + std::string(labels[i].catalog) + "\": {\"" +
                                      labels[i].key + "\": \"text\"}}");
    }
    EXPECT_EQ(missed,
              "ParamName ParamName ParamName \n"
              "ParamValue ParamValue ParamValue \n"
              "AnalysisDetails RequiredComponent FileProperty \n"
              "AnalysisDetails RequiredComponent none \n"
              "none RequiredComponent none \n"
              "none ImpactedComponent none \n"
              "none DependencyType none \n");
    EXPECT_EQ(missing(1), "none");
    EXPECT_TRUE(records.empty()) << "a label is no part of a transaction";
    foundation::log::Logger::setSink(std::move(previous));
}

// The tables of the entry with this label in the comparison of two graphs, after the filters, and
// its metrics.
std::string tables(std::string_view left, std::string_view right, std::string_view label,
                   std::string_view filters = "") {
    const auto comparison = compareGraphs(test::graphOf(left), test::graphOf(right));
    for (const auto vertex : comparison->entries()) {
        const auto& entry = (*comparison)[vertex];
        if (test::labelOf(entry.edit) == label) {
            const auto viewModel = getTwoFilteredVMFactoryRegistry().create(entry.detail.get());
            test::applySteps(*viewModel, filters);
            viewModel->commit();
            return tablesOf(*viewModel) + textOf(viewModel->metrics()) + '\n';
        }
    }
    return "no entry";
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
    const std::string include =
        "Dependency type: include\\n\\nImpacted component | \\n\\nRequired component\n"
        "1 alpha=beta | -\n";
    const std::string use =
        "Dependency type: use\\n\\nImpacted component | \\n\\nRequired component\n";
    EXPECT_EQ(tables(left, right, "A -> B"), include + use +
                                                 "2 alpha=other | ALPHA=other\n"
                                                 "1 gone=y | -\n"
                                                 "3 same=beta | same=BETA\n"
                                                 "0 - | x=new\n"
                                                 "2 1 1 0\n");
    EXPECT_EQ(tables(left, right, "A -> B", "N"), include + use +
                                                      "1 gone=y | -\n"
                                                      "0 - | x=new\n"
                                                      "2 1 0 0\n");
    EXPECT_EQ(tables(right, right, "A -> B", "U"), use + "0 0 0 0\n");
}

TEST_F(FactoriesTest, propertiesShowNameAndValue) {
    EXPECT_EQ(tables("@ 2024-05-06 07:08:09\ngraph [b=1 a=1 timestamp=x]", "graph [b=2 c=\"\"]",
                     "graph", "N"),
              "Analysis details | \n"
              "1 a=1 | -\n"
              "0 - | c=\n"
              "1 1 0 0\n");
    EXPECT_EQ(tables("A [checksum=1 size=2]", "A [size=3]", "A"),
              "File property | \n"
              "1 Checksum=1 | -\n"
              "2 size=2 | size=3\n"
              "1 0 1 0\n");
    EXPECT_EQ(tables("A", "A", "A"), "File property | \n0 0 0 0\n");
}

}  // namespace
}  // namespace dependency::comparisons
