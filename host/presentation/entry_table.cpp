#include "presentation/entry_table.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

#include <comparisons/combined_view_model.h>
#include <comparisons/side.h>
#include <comparisons/viewmodel/parameter_view_model.h>

#include "output/visible_text.h"

namespace depcompare {

namespace {

using ::comparisons::EditType;
using ::comparisons::indexOf;
using ::comparisons::Side;
using ::comparisons::sides;
using ::comparisons::viewmodel::ParameterViewModel;
using ::comparisons::viewmodel::parameter::tessel::Entry;
using ::comparisons::viewmodel::parameter::tessel::ParameterTable;
using dependency::comparisons::ItemEdit;
using dependency::comparisons::ParallelDependencies;
using CombinedViewModel = ::comparisons::FilteredCombinedViewModel<Filters, 2>;

/// By side; nothing if the side is absent.
using Texts = std::array<std::optional<std::u16string>, 2>;

/// A label of several lines: what is above the column ("introduction: caption"), and what heads it.
struct Label {
    std::u16string introduction;
    std::u16string caption;
    std::u16string heading;
};

Label partsOf(std::u16string_view text) {
    Label label;
    const auto lastLine = text.rfind(u'\n');
    label.heading = visible(lastLine == text.npos ? text : text.substr(lastLine + 1));
    if (lastLine == text.npos) {
        return label;
    }
    const std::u16string_view firstLine = text.substr(0, text.find(u'\n'));
    constexpr std::u16string_view colon = u": ";
    if (const auto end = firstLine.find(colon); end != firstLine.npos) {
        label.introduction = visible(firstLine.substr(0, end));
        label.caption = visible(firstLine.substr(end + colon.size()));
    }
    return label;
}

std::array<Texts, 2> namesOfEnds(const ItemEdit& edit) {
    std::array<Texts, 2> names;
    for (const Side side : sides) {
        if (const auto& item = edit[side]) {
            if (const auto* group = std::get_if<ParallelDependencies>(&*item)) {
                names[0][indexOf(side)] = group->upstream->getName();
                names[1][indexOf(side)] = group->downstream->getName();
            }
        }
    }
    return names;
}

bool repeats(const Texts& texts, const Texts& names) {
    for (const Side side : sides) {
        if (const auto& text = texts[indexOf(side)]; text && text != names[indexOf(side)]) {
            return false;
        }
    }
    return true;
}

TableCell cellOf(const Texts& texts, const Texts& names) {
    if (repeats(texts, names)) {
        return {};
    }
    const auto& [left, right] = texts;
    if (left && right && left != right) {
        return {.before = visible(*left), .after = visible(*right), .changed = true};
    }
    return {.before = visible(left ? *left : right.value_or(u"")), .after = {}};
}

class TableReader {
  public:
    explicit TableReader(const ItemEdit& edit)
        : isGroup_(kindOf(anySide(edit)) == EntryKind::group), names_(namesOfEnds(edit)) {}

    void add(const ParameterTable& table) {
        const auto& labels = table->getViewOptions()->getColumnLabels();
        const Label name = partsOf(labels[0]);
        table_.heading.caption = name.introduction;
        table_.heading.name.before = name.heading;
        table_.heading.value.before = partsOf(labels[1]).heading;
        const std::size_t begin = table_.rows.size();
        for (const Entry& entry : table->getEntries()) {
            table_.rows.push_back(rowOf(entry, name.caption));
        }
        if (isGroup_) {
            // A dependency that got another component is a removed and an added one.
            std::stable_partition(
                table_.rows.begin() + static_cast<std::ptrdiff_t>(begin), table_.rows.end(),
                [](const TableRow& row) { return row.edit == EditType::leftOnly; });
        }
    }

    [[nodiscard]] EntryTable take() { return std::move(table_); }

  private:
    [[nodiscard]] TableRow rowOf(const Entry& entry, const std::u16string& caption) const {
        std::array<Texts, 2> cells;  // name, value
        for (const Side side : sides) {
            if (const auto& shown = entry->getParameters()[indexOf(side)]->getParameter()) {
                cells[0][indexOf(side)] = shown->getName();
                cells[1][indexOf(side)] = shown->getValue();
            }
        }
        return {.edit = entry->getEditTypes()[0],
                .caption = caption,
                .name = cellOf(cells[0], names_[0]),
                .value = cellOf(cells[1], names_[1])};
    }

    bool isGroup_;
    std::array<Texts, 2> names_;  // of the upstream and the downstream end
    EntryTable table_;
};

void addTables(const PresentedTree::ViewModel& viewModel, std::vector<ParameterTable>& tables) {
    if (const auto* table = dynamic_cast<const ParameterViewModel*>(&viewModel)) {
        tables.push_back(table->table());
    } else if (const auto* combined = dynamic_cast<const CombinedViewModel*>(&viewModel)) {
        for (const auto& part : combined->members()) {
            addTables(*part, tables);
        }
    }
}

EntryTable readTable(const PresentedTree& tree, PresentedTree::Match match) {
    const auto detail = tree.shownDetail(match);
    if (!detail) {
        return {};
    }
    TableReader reader(tree.compared(match).edit);
    for (const ParameterTable& table : tablesOf(*detail)) {
        reader.add(table);
    }
    return reader.take();
}

}  // namespace

std::u16string TableCell::text() const {
    return changed ? before + u" \u2192 " + after : before;
}

std::vector<ParameterTable> tablesOf(const PresentedTree::ViewModel& viewModel) {
    std::vector<ParameterTable> tables;
    addTables(viewModel, tables);
    return tables;
}

std::vector<TableRow> rowsInLabel(const PresentedTree& tree, PresentedTree::Match match) {
    constexpr std::size_t mostColumns = 60;
    if (!tree.isKeptToTell(match)) {
        return {};
    }
    std::vector<TableRow> rows = readTable(tree, match).rows;
    std::size_t columns = 0;
    for (const TableRow& row : rows) {
        columns += displayWidth(row.value.text());
    }
    return columns <= mostColumns ? rows : std::vector<TableRow>();
}

EntryTable tableOf(const PresentedTree& tree, PresentedTree::Match match) {
    return rowsInLabel(tree, match).empty() ? readTable(tree, match) : EntryTable();
}

}  // namespace depcompare
