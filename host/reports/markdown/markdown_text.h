#pragma once
// Texts of a graph as Markdown in which nothing is markup.
#include <string>
#include <string_view>

#include "presentation/at_large.h"
#include "presentation/entry_label.h"
#include "presentation/entry_table.h"

namespace depcompare {

/// Returns: a code span in UTF-8, in which nothing is markup, a mention or a link, and that stays on
///          its line; see `visible`. Very long text is shortened.
[[nodiscard]] std::string codeOf(std::u16string_view text);

/// Returns: the ID of the node that a group leads to, with its type unless it is a file, and remarks.
[[nodiscard]] std::string targetOf(const EntryLabel& group);

/// Returns: the ID of a file, with its old one if it was renamed, or "The graph itself"; with remarks.
[[nodiscard]] std::string titleOf(const EntryLabel& label);

/// Returns: the dependency types in the table of a group, with numbers above 1.
[[nodiscard]] std::string typesIn(const EntryTable& table);

/// Returns: a list of the rows that differ, each on a line that begins with `indent`.
[[nodiscard]] std::string rowsIn(const EntryTable& table, bool ofGroup, std::string_view indent);

/// Returns: a statement on one line.
[[nodiscard]] std::string textOf(const Statement& statement);

}  // namespace depcompare
