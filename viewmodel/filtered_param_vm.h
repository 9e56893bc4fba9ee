#pragma once
// A filter-aware parameter table over the edits of one detail comparison.
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include <boost/multi_index/hashed_index.hpp>
#include <boost/multi_index/member.hpp>
#include <boost/multi_index_container.hpp>

#include <comparisons/diff_metrics.h>
#include <comparisons/edit_type.h>
#include <comparisons/side.h>
#include <comparisons/unchanged_filter.h>
#include <comparisons/view_model.h>
#include <comparisons/view_model_factory.h>
#include <comparisons/viewmodel/parameter_table.h>
#include <comparisons/viewmodel/parameter_view_model.h>
#include <comparisons/viewmodel/transaction.h>

namespace comparisons {

/// A row rule is a callable of an edit and the metrics of its nested view model (null without one)
/// that returns whether the row stays. Each filter has its rules as overloads of `rowRule` in its
/// own namespace; one is made per application of the filter.
template <class Edit>
[[nodiscard]] auto rowRule(const UnchangedFilter& /*filter*/, std::type_identity<Edit> /*rows*/) {
    return [](const Edit& edit, const DiffMetrics<2>* nested) {
        return !hasBothSides(edit) || edit.isChanged() || (nested != nullptr && !nested->areZero());
    };
}

namespace viewmodel {

namespace detail {

template <class Side, class MakeParam>
[[nodiscard]] parameter::tessel::OptionalParameter makeOptionalParameter(
    const std::optional<Side>& side, const MakeParam& makeParam, ::tessel::core::Model& model) {
    auto optional = parameter::tessel::OptionalParameter::create(model);
    if (side) {
        auto [name, value] = makeParam(*side);
        auto parameter = parameter::tessel::Parameter::create(model);
        parameter->setName(std::move(name));
        parameter->setValue(std::move(value));
        optional->setParameter(parameter);
    }
    return optional;
}

/// Replaces the entries of `table` by one per edit of `edits`, a range of pointers to edits: a
/// parameter per side, left first, empty if the side is absent, and one edit type. Each entry is
/// given to `onEntry(entry, edit)` before it joins the table.
///
/// Requires: inside a transaction of `model`.
template <class Range, class MakeParam, class OnEntry>
void generateParamEntries(const Range& edits, const MakeParam& makeParam,
                          ::tessel::core::Model& model, parameter::tessel::ParameterTable& table,
                          OnEntry&& onEntry) {
    auto& entries = table->getEntriesMutable();
    entries.clear();
    entries.reserve(edits.size());
    for (const auto* edit : edits) {
        auto entry = parameter::tessel::Entry::create(model);
        for (const Side side : sides) {  // NOLINT(clang-analyzer-cplusplus*): the model owns all.
            entry->getParametersMutable().push_back(
                makeOptionalParameter((*edit)[side], makeParam, model));
        }
        entry->getEditTypesMutable().push_back(editType(*edit));
        onEntry(entry, *edit);
        entries.push_back(entry);
    }
}

}  // namespace detail

namespace vm_detail {

[[nodiscard]] const std::string& parameterViewModelType();

/// Makes a table without entries, headed by the default column labels in the global locale.
///
/// Throws: what the catalog throws for a missing label.
[[nodiscard]] parameter::tessel::ParameterTable initTable(::tessel::core::Model& model);

void setColumnLabels(::tessel::core::Model& model, parameter::tessel::ParameterTable& table,
                     std::u16string_view name, std::u16string_view value);

template <class Key, class Value>
struct KeyValue {
    Key key;
    Value value;
};

template <class Key, class Value, class Hash>
using HashedIndex = boost::multi_index_container<
    KeyValue<Key, Value>,
    boost::multi_index::indexed_by<boost::multi_index::hashed_unique<
        boost::multi_index::member<KeyValue<Key, Value>, Key, &KeyValue<Key, Value>::key>, Hash>>>;

/// The part of a view model that knows which rows are visible and writes them to its table.
template <class Filters, class Edit, class MakeParam, std::size_t Sides>
class VisibilityAwareParamVM {
  public:
    using Child = FilteredViewModel<Filters, Sides>;
    using MakeChild =
        std::function<std::unique_ptr<Child>(const Edit&, const CreationContext& context)>;
    /// An edit and whether its row is visible.
    using Row = std::pair<const Edit*, bool>;

    VisibilityAwareParamVM(const std::vector<Edit>& edits, const CreationContext& context,
                           const MakeChild& makeChild)
        : model_(::tessel::core::Model::create(::tessel::core::ModelConstellation())),
          table_(initTable(model_)) {
        rows_.reserve(edits.size());
        for (const Edit& edit : edits) {
            rows_.emplace_back(&edit, true);
            if (auto child = makeChild ? makeChild(edit, context) : nullptr) {
                children_.insert({&edit, std::move(child)});
            }
        }
    }

    [[nodiscard]] ::tessel::core::Model& model() noexcept { return model_; }
    [[nodiscard]] parameter::tessel::ParameterTable& table() noexcept { return table_; }
    [[nodiscard]] const parameter::tessel::ParameterTable& table() const noexcept { return table_; }
    [[nodiscard]] std::vector<Row>& rows() noexcept { return rows_; }
    [[nodiscard]] const std::vector<Row>& rows() const noexcept { return rows_; }

    /// Returns: the view model of the edit's nested comparison, null without one.
    [[nodiscard]] Child* child(const Edit& edit) const {
        const auto found = children_.find(&edit);
        return found == children_.end() ? nullptr : found->value.get();
    }
    /// Returns: null also for an entry that the last commit did not make.
    [[nodiscard]] Child* child(const parameter::tessel::Entry& entry) const {
        const auto found = edits_.find(entry.get());
        return found == edits_.end() ? nullptr : child(*found->value);
    }

    void commit() {
        std::vector<const Edit*> visibleEdits;
        for (const auto& [edit, visible] : rows_) {
            if (visible) {
                visibleEdits.push_back(edit);
                if (Child* nested = child(*edit)) {
                    nested->commit();
                }
            }
        }
        EditIndex edits;
        utils::executeTesselTransaction(model_, [&] {
            viewmodel::detail::generateParamEntries(
                visibleEdits, MakeParam(), model_, table_,
                [&](parameter::tessel::Entry& entry, const Edit& edit) {
                    if (const Child* nested = child(edit)) {
                        entry->setSubmetrics(
                            utils::tessel::makeTesselMetrics(nested->metrics(), model_));
                    }
                    edits.insert({entry.get(), &edit});
                });
        });
        edits_.swap(edits);
    }

  private:
    using EditIndex = HashedIndex<const parameter::tessel::Entry::Impl*, const Edit*,
                                  std::hash<const parameter::tessel::Entry::Impl*>>;
    using ChildIndex = HashedIndex<const Edit*, std::unique_ptr<Child>, std::hash<const Edit*>>;

    ::tessel::core::Model model_;
    parameter::tessel::ParameterTable table_;
    std::vector<Row> rows_;
    ChildIndex children_;
    EditIndex edits_;  // by the table's entries, which live as long as the table shows them
};

/// What every parameter view model does with its rows.
template <class Filters, class Edit, class MakeParam, std::size_t Sides>
class FilteredParamVMBase : public ParameterViewModel, public FilteredViewModel<Filters, Sides> {
  public:
    using State = VisibilityAwareParamVM<Filters, Edit, MakeParam, Sides>;
    using Child = typename State::Child;
    using MakeChild = typename State::MakeChild;

    [[nodiscard]] std::string type() const override { return parameterViewModelType(); }

    [[nodiscard]] DiffMetrics<Sides> metrics() const override {
        DiffMetrics<Sides> metrics;
        for (const auto& [edit, visible] : state_.rows()) {
            if (visible) {
                metrics += metricsOf(*edit);
            }
        }
        return metrics;
    }

    void resetVisibility() override {
        for (auto& [edit, visible] : state_.rows()) {
            visible = true;
            if (Child* nested = state_.child(*edit)) {
                nested->resetVisibility();
            }
        }
    }

    void applyFilter(const Filters& filter) override {
        std::visit(
            [&](const auto& active) {
                const auto stays = rowRule(active, std::type_identity<Edit>());
                for (auto& [edit, visible] : state_.rows()) {
                    if (visible) {
                        visible = staysUnder(stays, *edit);
                    }
                }
            },
            filter);
    }

    void commit() override { state_.commit(); }

    [[nodiscard]] RowCount rowCount() const override {
        RowCount count{.all = state_.rows().size()};
        for (const auto& [edit, visible] : state_.rows()) {
            count.visible += visible ? 1U : 0U;
        }
        return count;
    }

    /// Returns: the view model nested in the edit that `entry` shows, null without one.
    [[nodiscard]] virtual Child* child(const parameter::tessel::Entry& entry) const {
        return state_.child(entry);
    }

    /// The rows and the table, for the framework.
    [[nodiscard]] virtual State& state() noexcept { return state_; }

    void setColumnLabels(std::u16string_view name, std::u16string_view value) override {
        vm_detail::setColumnLabels(state_.model(), state_.table(), name, value);
    }

    [[nodiscard]] const parameter::tessel::ParameterTable& table() const override {
        return state_.table();
    }

  protected:
    FilteredParamVMBase(const std::vector<Edit>& edits, const CreationContext& context,
                        const MakeChild& makeChild)
        : state_(edits, context, makeChild) {}

  private:
    [[nodiscard]] DiffMetrics<Sides> metricsOf(const Edit& edit) const {
        DiffMetrics<Sides> metrics;
        switch (editType(edit)) {
            case EditType::leftOnly:
                metrics.leftOnly = 1;
                break;
            case EditType::rightOnly:
                metrics.rightOnly = 1;
                break;
            case EditType::changed:
                metrics.changed = 1;
                break;
            case EditType::unchanged:
                break;
        }
        if (const Child* nested = state_.child(edit)) {
            metrics += nested->metrics();
        }
        return metrics;
    }

    template <class Rule>
    [[nodiscard]] bool staysUnder(const Rule& stays, const Edit& edit) const {
        const Child* nested = state_.child(edit);
        if (nested == nullptr) {
            return stays(edit, nullptr);
        }
        const DiffMetrics<Sides> metrics = nested->metrics();
        return stays(edit, &metrics);
    }

    State state_;
};

}  // namespace vm_detail

/// A parameter view model over the edits of one detail comparison, one row each, all visible at
/// first. `MakeParam` turns a present side into a name and a value. An edit may have a nested view
/// model, made by `makeChild`, which is given the context.
///
/// Lifetime: `edits` must outlive the view model.
template <class Filters, class Edit, class MakeParam, std::size_t Sides>
class FilteredParamVM : public vm_detail::FilteredParamVMBase<Filters, Edit, MakeParam, Sides> {
    using Base = vm_detail::FilteredParamVMBase<Filters, Edit, MakeParam, Sides>;

  public:
    FilteredParamVM(const std::vector<Edit>& edits, const CreationContext& context,
                    const typename Base::MakeChild& makeChild = {})
        : Base(edits, context, makeChild) {}
};

}  // namespace viewmodel

}  // namespace comparisons
