#pragma once
// Two columns of text: the entries of a tree on the left; the rows of their tables on the right, or
// below if they need the room.
#include <cstddef>
#include <string>
#include <string_view>

#include <comparisons/edit_type.h>

#include "output/output.h"
#include "presentation/entry_label.h"
#include "presentation/entry_table.h"
#include "reports/text/text_style.h"

namespace depcompare {

struct RowLayout;

/// Returns: how wide the entry is beside its rows.
[[nodiscard]] std::size_t widthOf(const EntryLabel& label);

/// Returns: whether there is nothing but the caption.
[[nodiscard]] bool isWithoutCells(const TableRow& row);

/// Headings are written unless the previous ones of their column say as much.
class TextLines {
  public:
    /// `leftColumns`: the width of the entries, which get no more than half of the whole.
    TextLines(const TextStyle& style, std::size_t leftColumns, Output& output);

    /// Begins a line. A hidden entry, there only for what is below it, has no sign.
    void entry(const EntryLabel& label, bool isVisible);
    /// Heads the rows of `rowsBeside`; goes beside the last entry if nothing else is there.
    void headingBeside(const TableRow& heading);
    /// Short rows of one part share a line.
    void rowsBeside(const EntryTable& table);
    void tableBelow(const EntryTable& table);
    /// Says something of what is below a file, on the open line if `beside` and if it fits there.
    void remark(::comparisons::EditType edit, const std::u16string& text, bool beside);
    void finishLine();

  private:
    [[nodiscard]] RowLayout layoutBeside() const;
    void writeColoured(std::string_view colour, const std::u16string& text);
    void writeBeside(std::string_view colour, const std::u16string& text);
    [[nodiscard]] bool joinsLine(const TableRow& row, const RowLayout& layout);

    const TextStyle& style_;
    Output& output_;
    std::size_t leftColumns_;
    std::size_t column_ = 0;  // at the end of the open line; 0: no line is open
    std::size_t captionColumns_ = 0;
    TableRow headingBeside_;
    TableRow headingBelow_;
};

}  // namespace depcompare
