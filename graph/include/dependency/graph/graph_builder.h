#pragma once
// The way to make a graph: add everything, then finish.
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <boost/date_time/posix_time/posix_time_types.hpp>

#include <dependency/graph/graph.h>

namespace dependency::graph {

/// Something was added that a graph cannot hold. `what()` names the ID of the culprit.
class DEPENDENCY_GRAPH_EXPORT GraphBuildError : public std::invalid_argument {
  public:
    GraphBuildError(std::string_view problem, std::u16string id);
    ~GraphBuildError() override;

    /// The ID of the node or dependency that was refused.
    [[nodiscard]] const std::u16string& id() const noexcept { return id_; }

  private:
    std::u16string id_;
};

/// Collects nodes and dependencies, checks them, and ends in an immutable graph.
///
/// What an add operation refuses leaves the builder as it was. Types, components and nodes belong
/// to the builder that made them until it finishes; the pointers stay valid afterwards.
class DEPENDENCY_GRAPH_EXPORT GraphBuilder {
  public:
    GraphBuilder();
    ~GraphBuilder();
    GraphBuilder(GraphBuilder&&) noexcept;
    GraphBuilder& operator=(GraphBuilder&&) noexcept;

    /// Returns: the type with this ID and name, the same object for equal arguments;
    ///          `Type::FILE()` for its ID and name.
    std::shared_ptr<const Type> type(std::u16string_view id, std::u16string_view name);

    /// Returns: the component with this name and type, the same object for equal arguments.
    /// Throws:  `GraphBuildError` for a null type or one of another builder.
    std::shared_ptr<const Component> component(std::u16string_view name,
                                               const std::shared_ptr<const Type>& type);

    /// A node whose type has the ID of `Type::FILE()` gets that type, whatever the name.
    ///
    /// Throws: `GraphBuildError` for an ID already used by a node, a null type or one of another
    ///         builder, a property key given twice.
    std::shared_ptr<Node> addNode(std::u16string id, std::u16string name,
                                  const std::shared_ptr<const Type>& type,
                                  std::vector<Property> properties = {});

    /// Throws: `GraphBuildError` for an ID already used by a dependency, and for a null pointer or
    ///         anything of another builder among the rest.
    std::shared_ptr<Dependency> addDependency(
        std::u16string id, const std::shared_ptr<Node>& upstream,
        const std::shared_ptr<Node>& downstream, const std::shared_ptr<const Type>& type,
        const std::shared_ptr<const Component>& upstreamComponent,
        const std::shared_ptr<const Component>& downstreamComponent);

    /// Appends a property of the graph, or replaces its value in place.
    ///
    /// Complexity: logarithmic in the number of properties.
    void setProperty(std::u16string_view key, std::u16string value);
    void setTimeStamp(const boost::posix_time::ptime& timeStamp);

    /// Ends the building; the builder is then as new.
    ///
    /// Returns: never null; with every node and dependency in the order in which it was added.
    [[nodiscard]] std::shared_ptr<const Graph> finish();

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace dependency::graph
