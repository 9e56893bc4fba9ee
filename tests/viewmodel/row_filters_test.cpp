// Which rows of the library's tables the filters hide, and what the counters then count.
#include <gtest/gtest.h>

#include <dependency/comparisons/dependency_subcomparator.h>
#include <dependency/comparisons/graph_subcomparator.h>
#include <dependency/comparisons/node_subcomparator.h>
#include <dependency/comparisons/view_model_factories.h>

#include "support/catalogs.h"
#include "support/table_text.h"
#include "support/text_graph.h"

namespace dependency::comparisons {
namespace {

using ::comparisons::ComparisonValue;
using ::comparisons::RowCount;
using test::applySteps;
using test::entriesOf;
using test::textOf;

template <class Comparison>
class RowFilters : public testing::Test {
  protected:
    using Edits = std::decay_t<decltype(std::declval<Comparison>().edits())>;
    using Edit = typename Edits::value_type;

    static typename Edit::value_type::value_type side(const std::string& name) {
        if constexpr (std::is_same_v<Comparison, DependencyComparison>) {
            return test::dependencyOf("A -> B [from=\"" + name + "\" to=v]");
        } else {
            return {test::utf16(name), u"v"};
        }
    }
    // An edit of a row: "<name", ">name", "=name", "~name"; with "!" in front, its changed flag is
    // the other one. "-" has no side.
    static Edit edit(std::string text) {
        const bool odd = text.starts_with('!');
        text.erase(0, odd ? 1 : 0);
        const auto content = side(text.substr(1));
        auto edit = test::markedEdit(text.at(0), content, content);
        edit.setChanged(edit.isChanged() != odd);
        return edit;
    }

    struct Shown {
        std::unique_ptr<ComparisonValue> comparison;
        std::unique_ptr<FilteredViewModel> viewModel;
    };
    static Shown shown(std::initializer_list<const char*> rows) {
        Edits edits;
        for (const char* row : rows) {
            edits.push_back(edit(row));
        }
        auto comparison = std::make_unique<ComparisonValue>(Comparison(std::move(edits)));
        auto viewModel = getTwoFilteredVMFactoryRegistry().create(*comparison);
        return {std::move(comparison), std::move(viewModel)};
    }

    static std::string committed(FilteredViewModel& viewModel) {
        viewModel.commit();
        return entriesOf(viewModel);
    }

    const test::Catalogs catalogs;
};

using Comparisons =
    testing::Types<DependencyComparison, GraphPropertyComparison, NodePropertyComparison>;
TYPED_TEST_SUITE(RowFilters, Comparisons);

TYPED_TEST(RowFilters, hideRowsByTheirSidesAndTheirFlag) {
    const std::string oneSided = "1 l=v | -\n1 L=v | -\n0 - | r=v\n0 - | R=v\n";
    const std::string empty = "3 - | -\n2 - | -\n";
    const std::string changed = "2 c=v | c=v\n";
    const std::string all = oneSided + changed + "3 u=v | u=v\n" + empty;
    const struct {
        const char* steps;
        std::string rows;
        const char* metrics;
        std::size_t visible;
    } cases[] = {
        {"", all, "2 2 2 0", 8},
        {"U", oneSided + changed + empty, "2 2 2 0", 7},
        {"N", oneSided + empty, "2 2 1 0", 6},
        {"UN", oneSided + empty, "2 2 1 0", 6},
        {"NRU", oneSided + changed + empty, "2 2 2 0", 7},
    };
    for (const auto& [steps, rows, metrics, visible] : cases) {
        SCOPED_TRACE(steps);
        const auto table = TestFixture::shown({"<l", "!<L", ">r", "!>R", "~c", "=u", "-", "!-"});
        applySteps(*table.viewModel, steps);
        EXPECT_EQ(textOf(table.viewModel->metrics()), metrics);
        EXPECT_EQ(table.viewModel->rowCount(), (RowCount{.all = 8, .visible = visible}));
        EXPECT_EQ(entriesOf(*table.viewModel), "") << "before the first commit";
        EXPECT_EQ(TestFixture::committed(*table.viewModel), rows);
        applySteps(*table.viewModel, "R");
        EXPECT_EQ(entriesOf(*table.viewModel), rows) << "until the next commit";
        EXPECT_EQ(TestFixture::committed(*table.viewModel), all);
    }
}

// By the text of the moment, which need not be that of the rows.
TYPED_TEST(RowFilters, nonstructuralFilterHidesTheSpecialRowOfItsTableByName) {
    const bool graph = std::is_same_v<TypeParam, GraphPropertyComparison>;
    const bool node = std::is_same_v<TypeParam, NodePropertyComparison>;
    const auto table = this->shown({"<Analysis time", ">Analysis time", "<Checksum", ">checksum",
                                    "=Checksum", "~Analysis time", ">Prüfsumme"});
    applySteps(*table.viewModel, "N");
    EXPECT_EQ(this->committed(*table.viewModel),
              std::string(graph ? "" : "1 Analysis time=v | -\n0 - | Analysis time=v\n") +
                  (node ? "" : "1 Checksum=v | -\n") + "0 - | checksum=v\n0 - | Prüfsumme=v\n");
    fl::i18n::Locale::setGlobal(fl::i18n::Locale("de"));
    applySteps(*table.viewModel, "RN");
    EXPECT_EQ(this->committed(*table.viewModel),
              std::string("1 Analysis time=v | -\n0 - | Analysis time=v\n1 Checksum=v | -\n"
                          "0 - | checksum=v\n") +
                  (node ? "" : "0 - | Prüfsumme=v\n"));
}

TYPED_TEST(RowFilters, missingNameOfTheSpecialRowLeavesTheRowsAsTheyAre) {
    const auto table = this->shown({"=u", ">r"});
    fl::i18n::MessageCatalog::clear();
    if (std::is_same_v<TypeParam, DependencyComparison>) {
        EXPECT_NO_THROW(applySteps(*table.viewModel, "N"));
        return;
    }
    EXPECT_THROW(applySteps(*table.viewModel, "N"), fl::i18n::MessageNotFound);
    EXPECT_EQ(this->committed(*table.viewModel), "3 u=v | u=v\n0 - | r=v\n");
}

TEST(Filters, onlyTheNonstructuralOneIsOnAtFirst) {
    EXPECT_EQ(getDefaultEnabledFilters(), std::vector<Filters>{NonstructuralFilter()});
    EXPECT_EQ(Filters(NonstructuralFilter()).index(), 1U);
}

}  // namespace
}  // namespace dependency::comparisons
