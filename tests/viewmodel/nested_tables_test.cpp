// Parameter tables with edits, filters and nested view models of the test's own.
#include <map>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <foundation/log/logger.h>

#include "support/catalogs.h"
#include "support/table_text.h"
#include "support/text_graph.h"
#include "viewmodel/filtered_param_vm.h"

namespace comparisons::viewmodel {
namespace {

using dependency::test::entriesOf;
using dependency::test::tablesOf;
using dependency::test::textOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

struct Cell {
    std::string name;
};

using Edit = StatefulEdit<std::optional<Cell>, 2>;

struct HideNamed {
    std::string name;
};

auto rowRule(const HideNamed& filter, std::type_identity<Edit> /*rows*/) {
    return [name = filter.name](const Edit& edit, const DiffMetrics<2>* /*nested*/) {
        return anySide(edit).name != name;
    };
}

using Filters = std::variant<UnchangedFilter, HideNamed>;
using Child = FilteredViewModel<Filters, 2>;

struct MakeParam {
    std::pair<std::u16string, std::u16string> operator()(const Cell& cell) const {
        if (cell.name == failing) {
            throw std::runtime_error("cannot show " + cell.name);
        }
        return {dependency::test::utf16(cell.name), u"v"};
    }
    static inline std::string failing;
};

using Table = FilteredParamVM<Filters, Edit, MakeParam, 2>;

// "<name", ">name", "~name" or "=name".
Edit edit(std::string_view text) {
    const Cell cell{std::string(text.substr(1))};
    return dependency::test::markedEdit(text[0], cell, cell);
}

class NestedTablesTest : public testing::Test {
  protected:
    NestedTablesTest() {
        previous_ = foundation::log::Logger::setSink(
            [this](const foundation::log::Record& record) { records.push_back(record); });
    }
    ~NestedTablesTest() override {
        foundation::log::Logger::setSink(previous_);
        MakeParam::failing.clear();
    }

    // The nested view model of an edit: a table if `nested` has rows for its name.
    std::unique_ptr<Child> childOf(const Edit& edit, const CreationContext& given) {
        EXPECT_EQ(&given, &context);
        const auto rows = nested.find(anySide(edit).name);
        if (rows == nested.end()) {
            return nullptr;
        }
        return std::make_unique<Table>(rows->second, context, children);
    }
    [[nodiscard]] Table table(const std::vector<Edit>& rows) {
        return Table(rows, context, children);
    }

    static std::string committed(Table& table) {
        table.commit();
        return entriesOf(table);
    }
    static auto entry(const Table& table, std::size_t index) {
        return table.table()->getEntries()[index];
    }

    const dependency::test::Catalogs catalogs;
    const CreationContext context{};
    const Table::MakeChild children = [this](const Edit& edit, const CreationContext& given) {
        return childOf(edit, given);
    };
    std::map<std::string, std::vector<Edit>> nested;
    std::vector<foundation::log::Record> records;

  private:
    foundation::log::Sink previous_;
};

TEST_F(NestedTablesTest, metricsAddThoseOfNestedViewModelsOfVisibleRows) {
    nested = {{"a", {edit("<x"), edit("~y")}}, {"b", {edit("=x")}}, {"c", {edit(">x")}}};
    const std::vector<Edit> rows{edit("<a"), edit("=b"), edit(">c"), edit("~d"), edit("=c")};
    auto outer = table(rows);
    EXPECT_EQ(textOf(outer.metrics()), "2 3 2 0");
    const std::vector<Filters> filters{UnchangedFilter()};
    const Child::FilterRange range(filters);
    outer.applyFilters(&range);
    outer.applyFilters(nullptr);
    EXPECT_EQ(committed(outer),
              "1 a=v | - (1 0 1 0)\n"
              "0 - | c=v (0 1 0 0)\n"
              "2 d=v | d=v\n"
              "3 c=v | c=v (0 1 0 0)\n");
    outer.applyFilter(HideNamed{"c"});
    EXPECT_EQ(textOf(outer.metrics()), "2 0 2 0");
    EXPECT_EQ(tablesOf(table({})), "Name | Value\n");
}

TEST_F(NestedTablesTest, filtersAreForATablesOwnRowsAndCommitAndResetForNestedOnesToo) {
    nested = {{"outer", {edit("=in1"), edit("~in2")}}};
    const std::vector<Edit> rows{edit("~last"), edit("~outer")};
    auto outer = table(rows);
    outer.commit();
    auto* inner = outer.child(entry(outer, 1));
    ASSERT_NE(inner, nullptr);
    EXPECT_EQ(entriesOf(*inner), "3 in1=v | in1=v\n2 in2=v | in2=v\n");
    inner->applyFilter(UnchangedFilter());
    outer.applyFilter(UnchangedFilter());
    EXPECT_EQ(inner->rowCount().visible, 1U);

    const auto old = entry(outer, 1);
    outer.applyFilter(HideNamed{"last"});
    EXPECT_EQ(outer.child(old), inner) << "until the next commit";
    EXPECT_EQ(committed(outer), "2 outer=v | outer=v (0 0 1 0)\n");
    EXPECT_EQ(entriesOf(*inner), "2 in2=v | in2=v\n");
    EXPECT_EQ(outer.child(old), nullptr);
    EXPECT_EQ(outer.child(entry(outer, 0)), inner);

    outer.applyFilter(HideNamed{"outer"});
    outer.resetVisibility();
    EXPECT_EQ(inner->rowCount().visible, 2U);
    EXPECT_EQ(outer.rowCount().visible, 2U);
}

TEST_F(NestedTablesTest, commitThatFailsHalfwayLeavesTheTableAndOneRecord) {
    nested = {{"a", {edit("<x")}}};
    const std::vector<Edit> rows{edit("=gone"), edit("=a"), edit("=bad"), edit("=c")};
    auto outer = table(rows);
    outer.applyFilter(HideNamed{"gone"});
    outer.commit();
    const std::string before = tablesOf(outer);
    const auto first = entry(outer, 0);

    outer.resetVisibility();
    MakeParam::failing = "bad";
    EXPECT_THROW(outer.commit(), std::runtime_error);
    EXPECT_EQ(tablesOf(outer), before);
    EXPECT_EQ(entry(outer, 0), first);
    EXPECT_NE(outer.child(first), nullptr);

    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(records[0].name, "comparisons::viewmodel::utils");
    EXPECT_EQ(records[0].severity, foundation::log::Severity::error);
    EXPECT_THAT(records[0].message, StartsWith("Exception caught: "));
    EXPECT_THAT(records[0].message, HasSubstr("std::runtime_error"));
    EXPECT_THAT(records[0].message, HasSubstr("cannot show bad"));
    EXPECT_THAT(records[0].scopes, ElementsAre(HasSubstr("VisibilityAwareParamVM")));

    MakeParam::failing.clear();
    outer.commit();
    EXPECT_EQ(outer.rowCount().visible, 4U);
}

}  // namespace
}  // namespace comparisons::viewmodel
