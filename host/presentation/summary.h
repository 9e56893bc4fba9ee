#pragma once
// How much differs between two graphs, in numbers.
#include <array>
#include <cstddef>
#include <string_view>

#include <comparisons/edit_type.h>
#include <dependency/comparisons/compare_graphs.h>

namespace depcompare {

struct EditCounts {
    std::size_t added = 0;
    std::size_t removed = 0;
    std::size_t changed = 0;
    std::size_t unchanged = 0;

    void count(::comparisons::EditType type);
    EditCounts& operator+=(const EditCounts& other);
    [[nodiscard]] std::size_t all() const { return added + removed + changed + unchanged; }
    [[nodiscard]] bool showsDifference() const { return added + removed + changed != 0; }

    friend bool operator==(const EditCounts&, const EditCounts&) = default;
};

struct NamedCounts {
    std::string_view name;   ///< for programs
    std::string_view title;  ///< for people
    EditCounts counts;
};

/// Files and groups count as entries of the tree, the others as rows of the detail comparisons.
struct Summary {
    EditCounts files;
    EditCounts groups;
    EditCounts dependencies;
    EditCounts fileProperties;
    EditCounts graphProperties;
    bool showsDifference = false;  ///< anywhere, the root included

    /// Returns: the counts in the order in which tables list them.
    [[nodiscard]] std::array<NamedCounts, 5> byKind() const;
};

[[nodiscard]] Summary summarize(const dependency::comparisons::GraphComparison& comparison);

}  // namespace depcompare
