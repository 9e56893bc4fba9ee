#pragma once
// Named properties of graphs and of files, paired: what the detail comparisons of both share.
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <comparisons/stateful_edit.h>
#include <dependency/comparisons/export.h>

namespace dependency::comparisons {

/// One displayed property of an `Owner`: a graph or a node.
template <class Owner>
struct DEPENDENCY_COMPARISONS_EXPORT Property {
    std::u16string name;  ///< localized; the raw key if the catalog has no message for it
    std::u16string value;

    friend bool operator==(const Property&, const Property&) = default;
};

template <class Owner>
using PropertyEdit = ::comparisons::StatefulEdit<std::optional<Property<Owner>>, 2>;

/// The paired properties of two owners.
template <class Owner>
class DEPENDENCY_COMPARISONS_EXPORT PropertyComparison {
  public:
    explicit PropertyComparison(std::vector<PropertyEdit<Owner>> edits)
        : edits_(std::move(edits)) {}

    /// Order: by name; no name occurs twice.
    [[nodiscard]] const std::vector<PropertyEdit<Owner>>& edits() const noexcept { return edits_; }

  private:
    std::vector<PropertyEdit<Owner>> edits_;
};

}  // namespace dependency::comparisons
