#pragma once
// The detail comparison of a file entry: its named properties.
#include <future>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <comparisons/subcomparator.h>
#include <dependency/comparisons/export.h>
#include <dependency/comparisons/item.h>

namespace dependency::comparisons {

/// One displayed property of a file.
struct NodeProperty {
    std::u16string name;  ///< localized; the raw key where the catalog has no message for it
    std::u16string value;

    friend bool operator==(const NodeProperty&, const NodeProperty&) = default;
};

using NodePropertyEdit = ::comparisons::StatefulEdit<std::optional<NodeProperty>, 2>;

/// The paired properties of two files.
class DEPENDENCY_COMPARISONS_EXPORT NodePropertyComparison {
  public:
    explicit NodePropertyComparison(std::vector<NodePropertyEdit> edits)
        : edits_(std::move(edits)) {}

    /// Order: by name; no name occurs twice.
    [[nodiscard]] const std::vector<NodePropertyEdit>& edits() const noexcept { return edits_; }

  private:
    std::vector<NodePropertyEdit> edits_;
};

/// Returns: "node_comparison".
[[nodiscard]] DEPENDENCY_COMPARISONS_EXPORT const std::string& get_type(
    const NodePropertyComparison& comparison);

/// Order:  by name, by code unit; values take no part.
/// Throws: `std::bad_optional_access` for an edit without sides.
[[nodiscard]] DEPENDENCY_COMPARISONS_EXPORT bool operator<(const NodePropertyEdit& a,
                                                           const NodePropertyEdit& b);

/// Pairs the properties of two files. Stateless; one instance serves any number of threads.
class DEPENDENCY_COMPARISONS_EXPORT NodeSubcomparator
    : public ::comparisons::Subcomparator<ItemEdit> {
  public:
    /// Returns: true when the first present side holds a node.
    /// Throws:  `std::bad_optional_access` when no side is present.
    [[nodiscard]] bool canCompare(const ItemEdit& edit) const override;

    /// Properties pair by displayed name; of several of one side with one name the last survives.
    /// An absent side has none.
    ///
    /// Returns: a ready future of a `NodePropertyComparison`.
    /// Throws:  `std::bad_variant_access` for a present side that is not a node.
    [[nodiscard]] std::future<::comparisons::ComparisonValue> compare(
        const ItemEdit& edit) override;

    ~NodeSubcomparator() override;
};

}  // namespace dependency::comparisons
