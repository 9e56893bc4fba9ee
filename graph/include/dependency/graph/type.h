#pragma once
// The kind of a node, a dependency or a component.
#include <memory>
#include <string>

#include <dependency/graph/export.h>

namespace dependency::graph {

struct TypeStorage;

/// A type with a stable ID and a display name. Made by `GraphBuilder::type`.
class DEPENDENCY_GRAPH_EXPORT Type {
  public:
    /// Lifetime: as long as this type.
    [[nodiscard]] const std::u16string& getID() const noexcept { return id_; }
    [[nodiscard]] const std::u16string& getName() const noexcept { return name_; }

    /// The node type of files, with the ID "file".
    ///
    /// Returns: the same object every time, never null.
    [[nodiscard]] static const std::shared_ptr<const Type>& FILE();

  private:
    friend struct TypeStorage;
    friend class GraphBuilder;

    Type(std::u16string id, std::u16string name, const TypeStorage* owner)
        : id_(std::move(id)), name_(std::move(name)), owner_(owner) {}

    std::u16string id_;
    std::u16string name_;
    const TypeStorage* owner_;
};

/// Types are the same when their IDs are.
[[nodiscard]] DEPENDENCY_GRAPH_EXPORT bool operator==(const Type& a, const Type& b) noexcept;

}  // namespace dependency::graph
