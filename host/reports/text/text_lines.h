#pragma once
// Two columns of text: the entries of a tree on the left, and on the right, or below where they
// need the room, the rows of their tables.
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "output/output.h"
#include "presentation/entry_label.h"
#include "presentation/entry_table.h"
#include "presentation/text_style.h"

namespace depcompare {

struct RowLayout;

/// Headings are written where they differ from the last ones of their column.
class TextLines {
  public:
    /// `leftColumns` is what the entries want; they get no more than half the width.
    TextLines(const TextStyle& style, std::size_t leftColumns, Output& output);

    /// Begins a line. `edit` is empty for an entry that stands only for what is below it.
    void entry(std::size_t depth, std::optional<::comparisons::EditType> edit,
               const EntryLabel& label);
    /// Heads what is written with `rowsBeside`; stands beside the last entry if nothing else does.
    void headingBeside(const TextRow& heading);
    /// Short rows of one part share a line.
    void rowsBeside(const TextTable& table);
    void tableBelow(const TextTable& table);
    void finishLine();

  private:
    [[nodiscard]] std::size_t columns() const {
        return style_.columns.value_or(columnsWithoutTerminal);
    }
    [[nodiscard]] RowLayout layoutBeside() const;
    void writeColoured(std::string_view colour, const std::u16string& text);
    void writeBeside(std::string_view colour, const std::u16string& text);
    void writeBelow(const TextRow& row, const RowLayout& layout);
    [[nodiscard]] bool joinsLine(const TextRow& row, const RowLayout& layout);

    const TextStyle& style_;
    Output& output_;
    std::size_t leftColumns_;
    std::size_t column_ = 0;  // where the open line stands; 0: no line is open
    std::size_t captionColumns_ = 0;
    TextRow headingBeside_;
    TextRow headingBelow_;
};

}  // namespace depcompare
