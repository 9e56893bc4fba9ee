#include "presentation/presented_tree.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <type_traits>
#include <utility>

#include <comparisons/comparison_value.h>

#include "draft/marked_id.h"
#include "presentation/detail_edits.h"
#include "presentation/shown_names.h"

namespace depcompare {

using ::comparisons::DiffMetrics;
using ::comparisons::EditType;
using dependency::comparisons::FilteredGraphTree;
using dependency::comparisons::GraphComparison;
using dependency::comparisons::Item;
using dependency::comparisons::NodePropertyComparison;
using dependency::comparisons::NodePropertyEdit;
using dependency::comparisons::NonstructuralFilter;
using dependency::comparisons::ParallelDependencies;

namespace {

std::uint32_t differencesIn(const DiffMetrics<2>& metrics) {
    return metrics.leftOnly + metrics.rightOnly + metrics.changed;
}

bool hidesProperties(const Filters& filter) {
    return std::holds_alternative<NonstructuralFilter>(filter);
}

}  // namespace

EntryKind kindOf(const Item& item) {
    return std::holds_alternative<ParallelDependencies>(item) ? EntryKind::group
           : std::holds_alternative<std::shared_ptr<dependency::graph::Node>>(item)
               ? EntryKind::file
               : EntryKind::graph;
}

void EntryCounts::count(const Item& item) {
    switch (kindOf(item)) {
        case EntryKind::graph:
            ++graphs;
            break;
        case EntryKind::file:
            ++files;
            break;
        case EntryKind::group:
            ++groups;
            break;
    }
}

PresentedTree::PresentedTree(std::shared_ptr<const GraphComparison> comparison,
                             EnabledFilters filters, OldIDs oldIDs, TellingKeys telling)
    : FilteredGraphTree(*comparison),
      comparison_(std::move(comparison)),
      filters_(std::move(filters)),
      oldIDs_(std::move(oldIDs)),
      telling_(std::move(telling)),
      keptToTell_(entries().size()),
      numbers_(entries().size()) {
    if (filters_.size() > maxFilters) {
        throw std::logic_error("a filter is enabled twice");
    }
    std::ranges::transform(telling_, std::back_inserter(tellingNames_), shownNameOfFileProperty);
    std::ranges::sort(tellingNames_);
    findEntriesThatTell();
    hideEntries();
}

bool PresentedTree::isMoved(Match match) {
    return match->getIsOrderMove().any() || match->getIsHierMove().any();
}

std::optional<std::u16string> PresentedTree::oldID(Match match) const {
    if (oldIDs_.empty()) {
        return std::nullopt;
    }
    const auto* const file =
        std::get_if<std::shared_ptr<dependency::graph::Node>>(&anySide(compared(match).edit));
    const auto found = file == nullptr ? oldIDs_.end() : oldIDs_.find(idAsRead((*file)->getID()));
    return found == oldIDs_.end() ? std::nullopt : std::optional(found->second);
}

std::optional<DiffMetrics<2>> PresentedTree::metrics(Match match) const {
    return numbers(match).metrics;
}

::comparisons::RowCount PresentedTree::rowCount(Match match) const {
    const auto& rows = numbers(match).rows;
    return {.all = rows[0], .visible = rows[filters_.size()]};
}

bool PresentedTree::changedWithoutRow(Match match) const {
    if (match->getEditTypes().front() != EditType::changed) {
        return false;
    }
    const auto metrics = this->metrics(match);
    return metrics && metrics->areZero();
}

std::vector<NodePropertyEdit> PresentedTree::tellingEdits(Match match) const {
    std::vector<NodePropertyEdit> telling;
    const ComparedEntry& entry = compared(match);
    if (!hasBothSides(entry.edit) || kindOf(anySide(entry.edit)) != EntryKind::file ||
        !entry.detail.valid()) {
        return telling;
    }
    forEachEdit(entry.detail.get(), [&](const auto& row) {
        if constexpr (std::is_same_v<decltype(row), const NodePropertyEdit&>) {
            if (::comparisons::editType(row) != EditType::unchanged &&
                std::ranges::binary_search(tellingNames_, anySide(row).name)) {
                telling.push_back(row);
            }
        }
    });
    return telling;
}

std::shared_ptr<PresentedTree::ViewModel> PresentedTree::wholeDetail(Match match) const {
    auto viewModel = makeViewModel(match);
    if (viewModel) {
        viewModel->commit();
    }
    return viewModel;
}

std::shared_ptr<PresentedTree::ViewModel> PresentedTree::shownDetail(Match match) const {
    if (isKeptToTell(match)) {
        return tellingDetail(match);
    }
    auto viewModel = makeViewModel(match);
    if (viewModel) {
        const ViewModel::FilterRange filters(filters_);
        viewModel->applyFilters(&filters);
        viewModel->commit();
    }
    return viewModel;
}

bool PresentedTree::showsDifference() const {
    return std::ranges::any_of(entries(),
                               [&](const Entry& entry) { return showsDifference(entry); });
}

bool PresentedTree::showsStructuralDifference() const {
    return std::ranges::any_of(entries(), [&](const Entry& entry) {
        const auto& edit = compared(entry.match).edit;
        const bool ownsProperties = hasBothSides(edit) && kindOf(anySide(edit)) != EntryKind::group;
        return !ownsProperties && showsDifference(entry);
    });
}

std::vector<bool> PresentedTree::leadsToVisible() const {
    std::vector<bool> leads(entries().size());
    for (std::size_t i = leads.size(); i-- != 0;) {
        const Entry& entry = entries()[i];
        leads[i] = leads[i] || entry.visible != 0;
        if (leads[i] && entry.parent != noParent) {
            leads[entry.parent] = true;
        }
    }
    return leads;
}

Visibility PresentedTree::visibility() const {
    Visibility counts{.entries = entryCount(), .rows = {}, .hidden = {}};
    for (const Filters& filter : filters_) {
        counts.hidden.push_back({.filter = filter, .entries = {}, .differingEntries = {}});
    }
    for (const Entry& entry : entries()) {
        const auto& [metrics, rows, differing] = numbers(entry.match);
        const std::size_t hiddenBy = hiddenBy_[entry.match->getIndex()];
        for (std::size_t i = 0; i < std::min(hiddenBy, filters_.size()); ++i) {
            counts.hidden[i].rows += rows[i] - rows[i + 1];
            counts.hidden[i].differingRows += differing[i] - differing[i + 1];
        }
        if (hiddenBy < filters_.size()) {
            HiddenByFilter& hidden = counts.hidden[hiddenBy];
            const Item& item = anySide(compared(entry.match).edit);
            hidden.rows += rows[hiddenBy];
            hidden.differingRows += differing[hiddenBy];
            hidden.entries.count(item);
            if (entry.match->getEditTypes().front() != EditType::unchanged) {
                hidden.differingEntries.count(item);
            }
        }
        counts.rows += {.all = rows[0], .visible = entry.visible != 0 ? rows[filters_.size()] : 0};
    }
    return counts;
}

std::unique_ptr<PresentedTree::ViewModel> PresentedTree::makeViewModel(Match match) const {
    const auto& detail = compared(match).detail;
    if (!detail.valid()) {
        return nullptr;
    }
    return registry_.create(detail.get());
}

const PresentedTree::Numbers& PresentedTree::numbers(Match match) const {
    auto& known = numbers_[match->getIndex()];
    if (!known) {
        known = countNumbers(match);
    }
    return *known;
}

PresentedTree::Numbers PresentedTree::countNumbers(Match match) const {
    Numbers numbers;
    const auto viewModel = makeViewModel(match);
    if (!viewModel) {
        return numbers;
    }
    const auto count = [&](std::size_t filters) {
        numbers.metrics = viewModel->metrics();
        numbers.rows[filters] = static_cast<std::uint32_t>(viewModel->rowCount().visible);
        numbers.differingRows[filters] = differencesIn(*numbers.metrics);
    };
    count(0);
    for (std::size_t i = 0; i < filters_.size(); ++i) {
        viewModel->applyFilter(filters_[i]);
        count(i + 1);
    }
    if (isKeptToTell(match)) {
        const auto shown = tellingDetail(match);
        const auto from = std::ranges::find_if(filters_, hidesProperties) - filters_.begin();
        std::fill(numbers.rows.begin() + from + 1, numbers.rows.end(),
                  static_cast<std::uint32_t>(shown->rowCount().visible));
        numbers.metrics = shown->metrics();
        std::fill(numbers.differingRows.begin() + from + 1, numbers.differingRows.end(),
                  differencesIn(*numbers.metrics));
    }
    return numbers;
}

std::shared_ptr<PresentedTree::ViewModel> PresentedTree::tellingDetail(Match match) const {
    struct Detail {
        explicit Detail(std::vector<NodePropertyEdit> edits)
            : comparison(NodePropertyComparison(std::move(edits))) {}

        ::comparisons::ComparisonValue comparison;
        std::unique_ptr<ViewModel> viewModel;  // of the comparison
    };
    const auto detail = std::make_shared<Detail>(tellingEdits(match));
    detail->viewModel = registry_.create(detail->comparison);
    detail->viewModel->commit();
    return {detail, detail->viewModel.get()};
}

bool PresentedTree::showsDifference(const Entry& entry) const {
    if (entry.visible == 0) {
        return false;
    }
    if (entry.match->getEditTypes().front() != EditType::unchanged) {
        return true;
    }
    const auto metrics = this->metrics(entry.match);
    return metrics && differencesIn(*metrics) != 0;
}

void PresentedTree::findEntriesThatTell() {
    if (tellingNames_.empty() || std::ranges::none_of(filters_, hidesProperties)) {
        return;
    }
    for (const Entry& entry : entries()) {
        keptToTell_[entry.match->getIndex()] = !tellingEdits(entry.match).empty();
    }
}

void PresentedTree::hideEntries() {
    hiddenBy_.assign(entries().size(), static_cast<std::uint8_t>(filters_.size()));
    for (std::size_t i = 0; i < filters_.size(); ++i) {
        applyFilter(filters_[i]);
        for (Entry& entry : entries()) {
            auto& hiddenBy = hiddenBy_[entry.match->getIndex()];
            if (hidesProperties(filters_[i]) && isKeptToTell(entry.match) &&
                hiddenBy == filters_.size()) {
                entry.visible = 1;
            }
            if (entry.visible == 0 && hiddenBy == filters_.size()) {
                hiddenBy = static_cast<std::uint8_t>(i);
            }
        }
    }
}

}  // namespace depcompare
