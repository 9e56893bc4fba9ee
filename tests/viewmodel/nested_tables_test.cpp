// The framework's parameter tables with edits, filters and nested view models of the test's own.
#include <map>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <comparisons/viewmodel/filtered_param_vm.h>
#include <foundation/log/logger.h>

#include "support/catalogs.h"
#include "support/table_text.h"
#include "support/text_graph.h"

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

// A nested view model that counts what it is told to and tells what happens to it.
class Told final : public Child {
  public:
    Told(std::string name, DiffMetrics<2> metrics, std::vector<std::string>& calls)
        : name_(std::move(name)), metrics_(metrics), calls_(calls) {}

    [[nodiscard]] std::string type() const override { return "told " + name_; }
    [[nodiscard]] DiffMetrics<2> metrics() const override { return metrics_; }
    void resetVisibility() override { calls_.push_back("reset " + name_); }
    void applyFilter(const Filters& /*filter*/) override { calls_.push_back("filter " + name_); }
    void commit() override { calls_.push_back("commit " + name_); }
    [[nodiscard]] RowCount rowCount() const override { return {}; }

  private:
    std::string name_;
    DiffMetrics<2> metrics_;
    std::vector<std::string>& calls_;
};

// "<name", ">name", "~name" or "=name".
Edit edit(std::string_view text) {
    const Cell cell{std::string(text.substr(1))};
    return {text[0] != '>' ? std::optional(cell) : std::nullopt,
            text[0] != '<' ? std::optional(cell) : std::nullopt, text[0] == '~'};
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

    // The nested view model of an edit: a table where `nested` has rows for its name, else one that
    // is told its metrics where `told` has them.
    std::unique_ptr<Child> childOf(const Edit& edit) {
        const std::string& name = anySide(edit).name;
        if (const auto rows = nested.find(name); rows != nested.end()) {
            return std::make_unique<Table>(rows->second,
                                           [this](const Edit& inner) { return childOf(inner); });
        }
        if (const auto metrics = told.find(name); metrics != told.end()) {
            return std::make_unique<Told>(name, metrics->second, calls);
        }
        return nullptr;
    }
    [[nodiscard]] Table table(const std::vector<Edit>& rows) {
        return Table(rows, [this](const Edit& edit) { return childOf(edit); });
    }

    static std::string committed(Table& table) {
        table.commit();
        return entriesOf(table);
    }
    static auto entry(const Table& table, std::size_t index) {
        return table.table()->getEntries()[index];
    }

    const dependency::test::Catalogs catalogs;
    std::map<std::string, std::vector<Edit>> nested;
    std::map<std::string, DiffMetrics<2>> told;
    std::vector<std::string> calls;
    std::vector<foundation::log::Record> records;

  private:
    foundation::log::Sink previous_;
};

TEST_F(NestedTablesTest, withoutNestedViewModelsATableHasItsDefaultLabelsAndNoSubmetrics) {
    const std::vector<Edit> rows{edit("<a"), edit("~b")};
    Table plain(rows);
    EXPECT_EQ(tablesOf(plain), "Name | Value\n");
    EXPECT_EQ(plain.type(), "parameter");
    EXPECT_EQ(committed(plain), "1 a=v | -\n2 b=v | b=v\n");
    EXPECT_EQ(plain.child(entry(plain, 0)), nullptr);
    EXPECT_EQ(textOf(plain.metrics()), "1 0 1 0");
    plain.setColumnLabels(u"x\n", u"");
    EXPECT_EQ(textOf(plain.table()), "x\\n | \n1 a=v | -\n2 b=v | b=v\n");
}

TEST_F(NestedTablesTest, metricsAddThoseOfNestedViewModelsOfVisibleRows) {
    told = {{"a", {1, 2, 3, 4}}, {"b", {}}, {"c", {10, 0, 0, 20}}};
    const std::vector<Edit> rows{edit("<a"), edit("=b"), edit(">c"), edit("~d")};
    auto outer = table(rows);
    EXPECT_EQ(textOf(outer.metrics()), "12 3 4 24");
    EXPECT_EQ(committed(outer),
              "1 a=v | - (1 2 3 4)\n"
              "3 b=v | b=v (0 0 0 0)\n"
              "0 - | c=v (10 0 0 20)\n"
              "2 d=v | d=v\n");
    outer.applyFilter(HideNamed{"c"});
    EXPECT_EQ(textOf(outer.metrics()), "2 2 4 4");
}

TEST_F(NestedTablesTest, unchangedFilterKeepsARowWhoseNestedViewModelCountsAnything) {
    told = {{"l", {1, 0, 0, 0}}, {"r", {0, 1, 0, 0}}, {"c", {0, 0, 1, 0}}, {"n", {0, 0, 0, 1}}};
    told["zero"] = {};
    nested["table"] = {edit("=x"), edit("<y")};
    nested["same"] = {edit("=x")};
    const std::vector<Edit> rows{edit("=l"),    edit("=r"),    edit("=c"),    edit("=n"),
                                 edit("=zero"), edit("=none"), edit("=same"), edit("=table")};
    auto outer = table(rows);
    outer.applyFilter(UnchangedFilter());
    EXPECT_EQ(committed(outer),
              "3 l=v | l=v (1 0 0 0)\n"
              "3 r=v | r=v (0 1 0 0)\n"
              "3 c=v | c=v (0 0 1 0)\n"
              "3 n=v | n=v (0 0 0 1)\n"
              "3 table=v | table=v (1 0 0 0)\n");
    EXPECT_THAT(calls, ElementsAre("commit l", "commit r", "commit c", "commit n"))
        << "the filter is for the table's own rows";
}

TEST_F(NestedTablesTest, commitGoesThroughVisibleRowsInnermostFirstAndResetThroughAll) {
    told = {{"in1", {}}, {"in2", {}}, {"last", {}}};
    nested["outer"] = {edit("=in1"), edit("~in2")};
    const std::vector<Edit> rows{edit("~outer"), edit("=last")};
    auto outer = table(rows);
    outer.commit();
    EXPECT_THAT(calls, ElementsAre("commit in1", "commit in2", "commit last"));

    auto* inner = outer.child(entry(outer, 0));
    ASSERT_NE(inner, nullptr);
    EXPECT_EQ(entriesOf(*inner), "3 in1=v | in1=v (0 0 0 0)\n2 in2=v | in2=v (0 0 0 0)\n");
    calls.clear();
    inner->applyFilter(UnchangedFilter());
    outer.applyFilter(HideNamed{"last"});
    EXPECT_EQ(committed(outer), "2 outer=v | outer=v (0 0 1 0)\n");
    EXPECT_THAT(calls, ElementsAre("commit in2"));
    EXPECT_EQ(entriesOf(*inner), "2 in2=v | in2=v (0 0 0 0)\n");

    calls.clear();
    outer.resetVisibility();
    EXPECT_THAT(calls, ElementsAre("reset in1", "reset in2", "reset last"));
    EXPECT_EQ(inner->rowCount().visible, 2U);
    EXPECT_EQ(outer.rowCount().visible, 2U);
}

TEST_F(NestedTablesTest, entriesOfTheLastCommitFindTheirNestedViewModelAndOldOnesNone) {
    told = {{"a", {}}, {"b", {}}};
    const std::vector<Edit> rows{edit("=a"), edit("=none"), edit("=b")};
    auto outer = table(rows);
    const auto typesOfChildren = [&] {
        std::string types;
        for (const auto& entry : outer.table()->getEntries()) {
            const auto* child = outer.child(entry);
            types += (child != nullptr ? child->type() : "none") + ", ";
        }
        return types;
    };
    outer.commit();
    EXPECT_EQ(typesOfChildren(), "told a, none, told b, ");
    const auto old = entry(outer, 2);
    outer.applyFilter(HideNamed{"a"});
    EXPECT_EQ(typesOfChildren(), "told a, none, told b, ");
    outer.commit();
    EXPECT_EQ(typesOfChildren(), "none, told b, ");
    EXPECT_EQ(outer.child(old), nullptr);
}

TEST_F(NestedTablesTest, commitThatFailsHalfwayLeavesTheTableAndOneRecord) {
    told = {{"a", {1, 0, 0, 0}}};
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
    ASSERT_NE(outer.child(first), nullptr);
    EXPECT_EQ(outer.child(first)->type(), "told a");

    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(records[0].name, "comparisons::viewmodel::utils");
    EXPECT_THAT(records[0].message, StartsWith("Exception caught: "));
    EXPECT_THAT(records[0].message, HasSubstr("std::runtime_error"));
    EXPECT_THAT(records[0].message, HasSubstr("cannot show bad"));
    ASSERT_EQ(records[0].scopes.size(), 1U);
    EXPECT_THAT(records[0].scopes[0], HasSubstr("executeTesselTransaction"));
    EXPECT_THAT(records[0].scopes[0], HasSubstr("VisibilityAwareParamVM"));

    MakeParam::failing.clear();
    EXPECT_EQ(committed(outer),
              "3 gone=v | gone=v\n"
              "3 a=v | a=v (1 0 0 0)\n"
              "3 bad=v | bad=v\n"
              "3 c=v | c=v\n");
    EXPECT_EQ(records.size(), 1U);
}

TEST_F(NestedTablesTest, failureOfANestedCommitIsToldOnceAndLeavesTheOuterTable) {
    nested["outer"] = {edit("<bad")};
    const std::vector<Edit> rows{edit("=outer")};
    auto outer = table(rows);
    MakeParam::failing = "bad";
    EXPECT_THROW(outer.commit(), std::runtime_error);
    EXPECT_EQ(tablesOf(outer), "Name | Value\n");
    EXPECT_EQ(records.size(), 1U);
}

TEST(ExecuteTesselTransaction, returnsWhatTheCallableReturnsAfterTheCommit) {
    auto model = ::tessel::core::Model::create({});
    int value = 1;
    static_assert(std::is_same_v<int&, decltype(utils::executeTesselTransaction(
                                           model, [&]() -> int& { return value; }))>);
    auto owned = utils::executeTesselTransaction(model, [] { return std::make_unique<int>(7); });
    EXPECT_EQ(*owned, 7);
    const auto table = utils::executeTesselTransaction(
        model, [&] { return parameter::tessel::ParameterTable::create(model); });
    EXPECT_FALSE(table->isDetached());
    EXPECT_EQ(&utils::executeTesselTransaction(model, [&]() -> int& { return value; }), &value);
    EXPECT_FALSE(model->isInTransaction());
}

TEST_F(NestedTablesTest, valuelessFilterIsRefusedAfterThoseBeforeIt) {
    struct Thrower {
        operator HideNamed() const { throw 0; }
    };
    std::vector<Filters> filters{UnchangedFilter(), UnchangedFilter(), HideNamed{"c"}};
    EXPECT_THROW(filters[1].emplace<HideNamed>(Thrower()), int);
    ASSERT_TRUE(filters[1].valueless_by_exception());
    const std::vector<Edit> rows{edit("=b"), edit("<c")};
    auto outer = table(rows);
    const Child::FilterRange range(filters);
    try {
        outer.applyFilters(&range);
        ADD_FAILURE() << "the filter was accepted";
    } catch (const std::bad_variant_access& error) {
        EXPECT_STREQ(error.what(), "std::visit: variant is valueless");
    }
    EXPECT_EQ(committed(outer), "1 c=v | -\n");
}

}  // namespace
}  // namespace comparisons::viewmodel
