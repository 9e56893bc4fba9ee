#pragma once
// Tables as text for spreadsheets and programs.
#include <initializer_list>
#include <string_view>

#include "output/output.h"

namespace depcompare {

struct TableForm {
    char separator = ',';
    std::string_view endOfLine = "\r\n";
    /// Whether cells are changed that a spreadsheet may take for a formula, or a terminal for a command.
    bool guarded = false;
};

/// Writes rows as RFC 4180 has them. A cell that begins with `#` or `::` is quoted too, since readers
/// may take its line for a comment, and CI systems for a command.
///
/// In a guarded cell unsafe characters are escapes, as `visible` writes them; and it begins with an
/// apostrophe if it began with one, or as a formula may: with = + - @ or their full-width forms.
/// Without the first apostrophe of each cell that begins with one, the other cells are as they were.
class TableWriter {
  public:
    TableWriter(Output& output, const TableForm& form) : output_(output), form_(form) {}

    void row(std::initializer_list<std::u16string_view> cells);

  private:
    void cell(std::u16string_view text);

    Output& output_;
    TableForm form_;
};

}  // namespace depcompare
