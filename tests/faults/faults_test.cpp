// Lets every call fail that an operation of the libraries makes: each allocation, each call into the
// object model and, if the host's can fail, each call into graph model and catalog.
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <initializer_list>
#include <iostream>
#include <limits>
#include <memory>
#include <new>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <boost/algorithm/string/replace.hpp>

#include <comparisons/combined_view_model.h>
#include <depcompare/messages/messages.h>
#include <dependency/comparisons/compare_graphs.h>
#include <dependency/comparisons/dependency_subcomparator.h>
#include <dependency/comparisons/graph_subcomparator.h>
#include <dependency/comparisons/graph_traversal_model.h>
#include <dependency/comparisons/graph_tree_filter.h>
#include <dependency/comparisons/match_graphs.h>
#include <dependency/comparisons/node_subcomparator.h>
#include <dependency/comparisons/view_model_factories.h>
#include <dependency/insight/areas.h>
#include <dependency/insight/causes.h>
#include <dependency/insight/cycles.h>
#include <dependency/insight/paths.h>
#include <dependency/insight/reach.h>
#include <dependency/insight/renames.h>
#include <fl/i18n/locale.h>
#include <fl/i18n/message_catalog.h>
#include <fl/i18n/message_id.h>
#include <foundation/log/logger.h>

#include "support/catalogs.h"
#include "support/comparison_text.h"
#include "support/faults.h"
#include "support/table_text.h"
#include "support/text_graph.h"
#include "viewmodel/filtered_subcomparison_vm.h"

namespace dependency::comparisons {
namespace {

using ::comparisons::ComparisonValue;
using testing_faults::CallFailed;
using testing_faults::Failing;
using testing_faults::Kind;
using testing_faults::Then;
using Combined = ::comparisons::FilteredCombinedViewModel<Filters, 2>;
using NodeTable = FilteredSubcomparisonVM<NodePropertyEdit>;
using Texts = std::vector<std::string>;

constexpr const char* leftText =
    "A -> B [from=a-component-name-that-needs-memory]\n"
    "A -> B [from=x type=call]\n"
    "A -> C\n"
    "B -> external-library-with-long-id\n"
    "C -> old/D\n"
    "A [checksum=1 z-key-that-needs-memory=1]\n"
    "old/D [size=7]\n"
    "external-library-with-long-id [type=external]\n"
    "graph [timestamp=x license=MIT]\n"
    "@ 2024-05-06 07:08:09\n";
constexpr const char* rightText =
    "A -> B [from=a-component-name-that-needs-memory]\n"
    "A -> B [from=y type=include]\n"
    "A -> C\n"
    "C -> A\n"
    "C -> new/D\n"
    "A [checksum=2 z-key-that-needs-memory=1]\n"
    "new/D [size=7]\n"
    "graph [timestamp=y z-key-that-needs-memory=1]\n"
    "@ 2024-05-07 07:08:09\n";

// Whether an operation may go on after a failure: one that looks up the names of properties does, and
// takes the keys for names; so does one that gives back spare memory.
enum class Failures : std::uint8_t { arrive, mayBeSwallowed };

// With keys for the names that look-ups find, unless they fail.
std::string rowsOf(const ComparisonValue& detail) {
    return boost::replace_all_copy(test::rowsOf(detail), "Checksum", "checksum");
}

std::string entriesOf(const GraphComparison& comparison) {
    std::string text = test::treeOf(comparison);
    for (const auto vertex : comparison.entries()) {
        text += rowsOf(comparison[vertex].detail.get());
    }
    return text;
}

// One text per table, with its metrics.
Texts tablesOf(const FilteredViewModel& viewModel) {
    const auto* const combined = dynamic_cast<const Combined*>(&viewModel);
    if (combined == nullptr) {
        return {test::tablesOf(viewModel) + test::textOf(viewModel.metrics())};
    }
    Texts texts;
    for (const auto& member : combined->members()) {
        texts.push_back(tablesOf(*member).at(0));
    }
    return texts;
}

// Whether a failed run may leave `now`: of several tables each as it was, or already as it was to be.
template <class T>
bool mayBeLeft(const std::vector<T>& now, const std::vector<T>& before,
               const std::vector<T>& after) {
    bool known = now != after || before == after;
    for (std::size_t i = 0; i < now.size(); ++i) {
        known = known && (now[i] == before[i] || now[i] == after[i]);
    }
    return known;
}

std::string everythingShown() {
    const auto comparison =
        compareGraphs(test::graphOf("A -> B\nA -> x [type=t]\nA [checksum=1]\n"),
                      test::graphOf("A -> B\nA [checksum=2]\n"));
    const auto registry = getTwoFilteredVMFactoryRegistry();
    std::string text = entriesOf(*comparison);
    for (const auto vertex : comparison->entries()) {
        const auto viewModel = registry.create((*comparison)[vertex].detail.get());
        for (const std::string& table : tablesOf(*viewModel)) {
            text += table;
        }
    }
    return text;
}

// In new processes, since one makes what is made once per process only once.
TEST(FirstUse, thatFailsLeavesNothingHalfMade) {
    const std::string path = testing::TempDir() + "first_use";
    const auto inNewProcess = [&](std::size_t successes) {
        EXPECT_EXIT(
            {
                bool failed = false;
                depcompare::messages::registerMessages();
                try {
                    const Failing failing(Kind::allocation, successes);
                    everythingShown();
                    failed = failing.happened();
                } catch (const std::bad_alloc&) {
                    failed = true;
                }
                std::ofstream(path) << failed << everythingShown();
                std::_Exit(0);
            },
            testing::ExitedWithCode(0), "");
        std::ostringstream text;
        text << std::ifstream(path).rdbuf();
        return text.str();
    };
    const std::string undisturbed = inNewProcess(std::numeric_limits<std::size_t>::max());
    ASSERT_GT(undisturbed.size(), 300U);
    for (std::size_t successes = 0; !HasFailure(); ++successes) {
        const std::string now = inNewProcess(successes);
        EXPECT_EQ(now.substr(1), undisturbed.substr(1)) << successes;
        if (now == undisturbed) {
            break;
        }
    }
}

class FaultsTest : public testing::Test {
  protected:
    FaultsTest() {
        foundation::log::Logger::setThreshold("comparisons::viewmodel::utils",
                                              foundation::log::Severity::fatal);
    }

    static void TearDownTestSuite() {
        std::cout << "Calls that were made to fail: allocations " << tried(Kind::allocation)
                  << ", graph model " << tried(Kind::graph) << ", catalog " << tried(Kind::catalog)
                  << ", object model " << tried(Kind::objectModel) << '\n';
    }

    /// How many calls of the kind were made to fail, alone or with all that follow.
    static std::size_t& tried(Kind kind) {
        static std::array<std::size_t, testing_faults::kindCount> counts = {};
        return counts.at(static_cast<std::size_t>(kind));
    }
    static void expectTried(std::initializer_list<Kind> kinds) {
        for (const Kind kind : kinds) {
            const bool isQuery = kind == Kind::graph || kind == Kind::catalog;
            EXPECT_EQ(tried(kind) > 0, !isQuery || QUERIES_MAY_FAIL != 0);
        }
    }

    /// Runs `run` on what `make` makes, undisturbed, and then anew with each of its calls failing.
    /// `show` returns a list of what a run changes, which a failed one leaves and another completes.
    template <class Make, class Run, class Show>
    void failEverywhere(const char* name, Make make, Run run, Show show,
                        Failures failures = Failures::arrive) {
        auto undisturbed = make();
        const auto before = show(undisturbed);
        run(undisturbed);  // makes what is made once per process, too
        const auto after = show(undisturbed);

        const auto isReached = [&](Kind kind, std::size_t number, Then then) {
            auto subject = make();
            std::optional<Kind> thrown;
            bool failed = false;
            {
                const Failing failing(kind, number, then);
                try {
                    run(subject);
                } catch (const std::bad_alloc&) {
                    thrown = Kind::allocation;
                } catch (const CallFailed& error) {
                    thrown = error.kind;
                }
                failed = failing.happened();
            }
            const auto now = show(subject);
            EXPECT_TRUE(failed ? thrown == kind || failures == Failures::mayBeSwallowed : !thrown);
            EXPECT_TRUE(thrown ? mayBeLeft(now, before, after) : now == after);
            run(subject);
            EXPECT_TRUE(show(subject) == after);
            return failed;
        };
        for (const Kind kind : {Kind::allocation, Kind::graph, Kind::catalog, Kind::objectModel}) {
            for (const Then then : {Then::succeed, Then::fail}) {
                bool failed = true;
                for (std::size_t number = 0; failed && !HasFailure(); ++number) {
                    SCOPED_TRACE(testing::Message()
                                 << name << ": call " << number << " of kind "
                                 << static_cast<int>(kind) << (then == Then::fail ? " on" : ""));
                    const auto usesBefore = uses();
                    const auto blocksBefore = testing_faults::blocks();
                    failed = isReached(kind, number, then);
                    EXPECT_EQ(testing_faults::blocks(), blocksBefore);
                    EXPECT_EQ(uses(), usesBefore);
                    tried(kind) += failed ? 1U : 0U;
                }
            }
        }
    }

    /// ... of a run that makes a result of the inputs, which `show` makes comparable.
    template <class Compute, class Show = std::identity>
    void failEverywhere(const char* name, Compute compute, Show show = {},
                        Failures failures = Failures::arrive) {
        using Result = std::optional<decltype(compute())>;
        failEverywhere(
            name, [] { return Result(); },
            [&](Result& result) {
                result.reset();
                result.emplace(compute());
            },
            [&](const Result& result) {
                return std::vector{result ? std::optional(std::invoke(show, *result))
                                          : std::nullopt};
            },
            failures);
    }

    [[nodiscard]] const ::comparisons::TreeEntry<ItemEdit>& entry(const char* label) const {
        for (const auto vertex : comparison->entries()) {
            if (test::labelOf((*comparison)[vertex].edit) == label) {
                return (*comparison)[vertex];
            }
        }
        throw std::out_of_range(label);
    }

    const test::Catalogs catalogs;
    const std::shared_ptr<const graph::Graph> left = test::graphOf(leftText);
    const std::shared_ptr<const graph::Graph> right = test::graphOf(rightText);
    const std::shared_ptr<GraphComparison> comparison = compareGraphs(left, right);

  private:
    [[nodiscard]] std::vector<long> uses() const {
        std::vector<long> counts;
        for (const auto& graph : {left, right}) {
            counts.push_back(graph.use_count());
            for (const auto& node : graph->getNodes()) {
                counts.push_back(node.use_count());
            }
        }
        return counts;
    }
};

TEST_F(FaultsTest, ofAComparisonLeaveItAndNothingBehind) {
    failEverywhere(
        "match", [&] { return matchGraphs(left, right); },
        [](const std::vector<ItemEdit>& edits) {
            Texts texts;
            for (const ItemEdit& edit : edits) {
                texts.push_back(test::textOf(edit));
            }
            return texts;
        });
    failEverywhere(
        "compare", [&] { return compareGraphs(left, right); },
        [](const auto& made) { return entriesOf(*made); }, Failures::mayBeSwallowed);
    GraphSubcomparator graphs;
    NodeSubcomparator nodes;
    DependencySubcomparator groups;
    const std::pair<const char*, ::comparisons::Subcomparator<ItemEdit>*> subcomparators[] = {
        {"graph", &graphs}, {"A", &nodes}, {"A -> B", &groups}};
    for (const auto& tried : subcomparators) {
        const char* const label = tried.first;
        auto* const subcomparator = tried.second;
        const ItemEdit& edit = entry(label).edit;
        failEverywhere(
            label, [&] { return subcomparator->compare(edit).share(); },
            [](const auto& detail) { return rowsOf(detail.get()); },
            subcomparator == &groups ? Failures::arrive : Failures::mayBeSwallowed);
        failEverywhere(
            label, [&] { return GraphTraversalModel(left)(*edit[::comparisons::Side::left]); },
            [](const auto& children) { return children.size(); });
    }
    expectTried({Kind::allocation, Kind::graph, Kind::catalog});
}

// The reservation of room for all texts is the last call that can fail.
TEST_F(FaultsTest, ofARegistrationLeaveTheTextsThereWere) {
    if (QUERIES_MAY_FAIL != 0) {
        GTEST_SKIP() << "the host has a catalog of its own";
    }
    using fl::i18n::MessageCatalog;
    failEverywhere(
        "add",
        [] {
            MessageCatalog::clear();
            MessageCatalog::add("en", R"({"c": {"a": "1", "b": "1", "c": "1"}})");
            return 0;
        },
        [](int) {
            MessageCatalog::add("en", R"({"c": {"b": "2", "d": "2", "e": "2", "f": "2", "g": "2",
                "h": "2", "i": "2", "j": "2", "k": "2", "l": "2", "m": "2", "n": "2"}})");
        },
        [](int) {
            std::u16string texts;
            for (const char* id : {"c:a", "c:b", "c:c", "c:n"}) {
                try {
                    texts +=
                        MessageCatalog::get_message(fl::i18n::MessageID(id), fl::i18n::Locale());
                } catch (const fl::i18n::MessageNotFound&) {
                    texts += u'-';
                }
            }
            return std::vector{texts};
        });
    expectTried({Kind::allocation});
}

TEST_F(FaultsTest, ofAViewModelLeaveTablesAsCommitted) {
    failEverywhere(
        "tree",
        [&] {
            auto tree = std::make_unique<FilteredGraphTree>(*comparison);
            tree->applyFilter(NonstructuralFilter());
            return tree;
        },
        [](const auto& tree) { return tree->entryCount(); });
    const auto registry = getTwoFilteredVMFactoryRegistry();
    const struct {
        const char* name;
        const char* before;
        std::function<void(FilteredViewModel&)> run;
    } operations[] = {
        {"unchanged filter", "", [](auto& shown) { test::applySteps(shown, "U"); }},
        {"nonstructural filter", "", [](auto& shown) { test::applySteps(shown, "N"); }},
        {"reset", "N", [](auto& shown) { test::applySteps(shown, "R"); }},
        {"commit", "N", [](auto& shown) { shown.commit(); }},
    };
    for (const char* label : {"graph", "A", "A -> B"}) {
        SCOPED_TRACE(label);
        const ComparisonValue& detail = entry(label).detail.get();
        failEverywhere(
            "create", [&] { return registry.create(detail); },
            [](const auto& viewModel) { return tablesOf(*viewModel); });
        for (const auto& operation : operations) {
            failEverywhere(
                operation.name,
                [&] {
                    auto viewModel = registry.create(detail);
                    viewModel->commit();
                    test::applySteps(*viewModel, operation.before);
                    return viewModel;
                },
                [&](const auto& viewModel) { operation.run(*viewModel); },
                [](const auto& viewModel) { return tablesOf(*viewModel); });
        }
    }
    expectTried({Kind::allocation, Kind::graph, Kind::catalog, Kind::objectModel});
}

TEST_F(FaultsTest, ofNestedViewModelsLeaveEachTableAsCommitted) {
    const auto& edits =
        boost::type_erasure::any_cast<const NodePropertyComparison&>(entry("A").detail.get())
            .edits();
    struct Nested {
        std::unique_ptr<NodeTable> outer;
        NodeTable* inner = nullptr;
    };
    const auto create = [&] {
        Nested made;
        made.outer = std::make_unique<NodeTable>(
            edits, ::comparisons::CreationContext{},
            [&](const NodePropertyEdit& edit, const ::comparisons::CreationContext& context) {
                auto inner =
                    edit.isChanged() ? std::make_unique<NodeTable>(edits, context) : nullptr;
                made.inner = inner ? inner.get() : made.inner;
                return inner;
            });
        return made;
    };
    // Each row of the outer table finds its view model as long as the table shows it.
    const auto show = [](const Nested& made) {
        std::string outer = test::tablesOf(*made.outer);
        for (const auto& row : made.outer->table()->getEntries()) {
            outer += made.outer->child(row) == nullptr ? "plain " : "nested ";
        }
        return Texts{outer, tablesOf(*made.inner).at(0)};
    };
    failEverywhere("create", create, show);
    failEverywhere(
        "first commit", create, [](const Nested& made) { made.outer->commit(); }, show);
    failEverywhere(
        "commit",
        [&] {
            auto made = create();
            made.outer->commit();
            test::applySteps(*made.outer, "U");
            test::applySteps(*made.inner, "N");
            return made;
        },
        [](const Nested& made) { made.outer->commit(); }, show);
    expectTried({Kind::objectModel});
}

TEST_F(FaultsTest, ofAnInsightLeaveItAndNothingBehind) {
    using namespace insight;
    failEverywhere(
        "link graph", [&] { return LinkGraph(left, right); },
        [](const LinkGraph& links) { return std::pair(findAreas(links), findCauses(links)); },
        Failures::mayBeSwallowed);
    const LinkGraph links(left, right);
    const auto number = [&](std::u16string_view id) { return links.find(id).value(); };
    const std::vector<NodePair> renames{{.left = number(u"old/D"), .right = number(u"new/D")}};
    failEverywhere("cycles", [&] { return findCycles(links); });
    failEverywhere("reach", [&] { return findReach(links).value(); });
    failEverywhere("areas", [&] { return findAreas(links); });
    failEverywhere("areas by property", [&] { return findAreas(links, {.property = u"size"}); });
    failEverywhere("other nodes", [&] { return findOtherNodes(links); });
    failEverywhere("nodes", [&] { return findNodes(links, u"D"); });
    failEverywhere("path", [&] {
        return findPath(links, insight::Side::left, number(u"A"), number(u"old/D"));
    });
    failEverywhere("causes", [&] { return findCauses(links, renames); });
    failEverywhere("renames", [&] { return findRenames(links); });
    failEverywhere("stated renames", [&] { return findRenames(links, {.stated = renames}); });
    expectTried({Kind::allocation, Kind::graph});
}

}  // namespace
}  // namespace dependency::comparisons
