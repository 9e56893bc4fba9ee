#pragma once
// The detail comparison of the root entry: its named properties.
#include <future>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <comparisons/subcomparator.h>
#include <dependency/comparisons/export.h>
#include <dependency/comparisons/item.h>

namespace dependency::comparisons {

/// One displayed property of a graph.
struct GraphProperty {
    std::u16string name;  ///< localized; the raw key where the catalog has no message for it
    std::u16string value;

    friend bool operator==(const GraphProperty&, const GraphProperty&) = default;
};

using GraphPropertyEdit = ::comparisons::StatefulEdit<std::optional<GraphProperty>, 2>;

/// The paired properties of two graphs.
class DEPENDENCY_COMPARISONS_EXPORT GraphPropertyComparison {
  public:
    explicit GraphPropertyComparison(std::vector<GraphPropertyEdit> edits)
        : edits_(std::move(edits)) {}

    /// Order: by name; no name occurs twice.
    [[nodiscard]] const std::vector<GraphPropertyEdit>& edits() const noexcept { return edits_; }

  private:
    std::vector<GraphPropertyEdit> edits_;
};

/// Returns: "graph_property_comparison".
[[nodiscard]] DEPENDENCY_COMPARISONS_EXPORT const std::string& get_type(
    const GraphPropertyComparison& comparison);

/// Order:  by name, by code unit; values take no part.
/// Throws: `std::bad_optional_access` for an edit without sides.
[[nodiscard]] DEPENDENCY_COMPARISONS_EXPORT bool operator<(const GraphPropertyEdit& a,
                                                           const GraphPropertyEdit& b);

/// Pairs the properties of two graphs. Stateless; one instance serves any number of threads.
class DEPENDENCY_COMPARISONS_EXPORT GraphSubcomparator
    : public ::comparisons::Subcomparator<ItemEdit> {
  public:
    /// Returns: true when the first present side holds a graph.
    /// Throws:  `std::bad_optional_access` when no side is present.
    [[nodiscard]] bool canCompare(const ItemEdit& edit) const override;

    /// Properties pair by displayed name; of several of one side with one name the last survives.
    /// A property whose displayed name is "timestamp" becomes the analysis time of its graph.
    ///
    /// Returns: a ready future of a `GraphPropertyComparison`.
    /// Throws:  `std::bad_optional_access` for an absent side, `std::bad_variant_access` for one
    ///          that is not a graph, and what the catalog throws for a missing label of the
    ///          analysis time.
    [[nodiscard]] std::future<::comparisons::ComparisonValue> compare(
        const ItemEdit& edit) override;

    ~GraphSubcomparator() override;
};

}  // namespace dependency::comparisons
