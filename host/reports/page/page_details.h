#pragma once
// The tables of all entries, in blocks that the page unpacks one at a time.
#include <cstddef>
#include <memory>
#include <vector>

#include "output/output.h"
#include "presentation/switched_trees.h"
#include "reports/page/packed_bytes.h"

namespace depcompare {

/// Writes an element of packed bytes, which the page finds by name.
void writePacked(std::string_view name, PackedBytes& bytes, Output& output);

/// Writes a block as soon as it is full. A block is a JSON array with one element per entry; see
/// `docs/page.md`.
class PageDetails {
  public:
    PageDetails(const SwitchedTrees& trees, Output& output) : trees_(trees), output_(output) {}

    /// Requires: every entry in turn, from 0.
    void add(std::size_t entry);
    void finish();

    /// Returns: the first entry of each block.
    [[nodiscard]] const std::vector<std::size_t>& firstEntries() const { return firstEntries_; }

  private:
    const SwitchedTrees& trees_;
    Output& output_;
    std::vector<std::size_t> firstEntries_;
    std::unique_ptr<PackedBytes> block_;
};

}  // namespace depcompare
