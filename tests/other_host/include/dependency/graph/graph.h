#pragma once
// Another graph model with the same names, as unlike the platform's as its promises allow: ranges are
// made on demand and walked once, equality is coarse, IDs of dependencies may repeat, and any
// query may fail.
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <boost/range/any_range.hpp>

namespace dependency::graph {

/// What a query throws that was told to fail.
struct QueryFailed : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Lets the query after the next `successes` of this process fail, until destroyed.
class FailingQuery {
  public:
    explicit FailingQuery(long successes) noexcept;
    ~FailingQuery();
    FailingQuery(const FailingQuery&) = delete;
    FailingQuery& operator=(const FailingQuery&) = delete;

    [[nodiscard]] static bool happened() noexcept;
};

using Property = std::pair<std::u16string, std::u16string>;

class Type {
  public:
    Type(std::u16string id, std::u16string name) : id_(std::move(id)), name_(std::move(name)) {}

    [[nodiscard]] const std::u16string& getID() const;
    [[nodiscard]] const std::u16string& getName() const;
    [[nodiscard]] static const std::shared_ptr<const Type>& FILE();

  private:
    std::u16string id_;
    std::u16string name_;
};

class Component {
  public:
    Component(std::u16string name, std::shared_ptr<const Type> type)
        : name_(std::move(name)), type_(std::move(type)) {}

    [[nodiscard]] std::u16string getName() const;
    [[nodiscard]] std::shared_ptr<const Type> getType() const;

  private:
    std::u16string name_;
    std::shared_ptr<const Type> type_;
};

class Node {
  public:
    Node(std::u16string id, std::u16string name, std::shared_ptr<const Type> type,
         std::vector<Property> properties)
        : id_(std::move(id)),
          name_(std::move(name)),
          type_(std::move(type)),
          properties_(std::move(properties)) {}

    [[nodiscard]] const std::u16string& getID() const;
    [[nodiscard]] std::u16string getName() const;
    [[nodiscard]] std::shared_ptr<const Type> getType() const;
    [[nodiscard]] std::vector<std::u16string> getPropertyKeys() const;
    [[nodiscard]] std::u16string getProperty(const std::u16string& key) const;

  private:
    std::u16string id_;
    std::u16string name_;
    std::shared_ptr<const Type> type_;
    std::vector<Property> properties_;
};

class Dependency {
  public:
    Dependency(std::u16string id, std::shared_ptr<Node> upstream, std::shared_ptr<Node> downstream,
               std::shared_ptr<const Type> type, std::shared_ptr<const Component> from,
               std::shared_ptr<const Component> to)
        : id_(std::move(id)),
          nodes_(std::move(upstream), std::move(downstream)),
          type_(std::move(type)),
          components_(std::move(from), std::move(to)) {}

    [[nodiscard]] const std::u16string& getID() const;
    [[nodiscard]] std::shared_ptr<Node> getUpstreamNode() const;
    [[nodiscard]] std::shared_ptr<Node> getDownstreamNode() const;
    [[nodiscard]] std::shared_ptr<const Type> getType() const;
    [[nodiscard]] std::shared_ptr<const Component> getUpstreamComponent() const;
    [[nodiscard]] std::shared_ptr<const Component> getDownstreamComponent() const;

  private:
    std::u16string id_;
    std::pair<std::shared_ptr<Node>, std::shared_ptr<Node>> nodes_;
    std::shared_ptr<const Type> type_;
    std::pair<std::shared_ptr<const Component>, std::shared_ptr<const Component>> components_;
};

struct CompareByID {
    [[nodiscard]] bool operator()(const std::shared_ptr<Dependency>& a,
                                  const std::shared_ptr<Dependency>& b) const {
        return a->getID() < b->getID();
    }
};

/// Types are the same when their IDs are; nodes are equal when their names are, whatever their IDs
/// and types; dependencies, when the IDs of their types and of their components' types are.
[[nodiscard]] bool operator==(const Type& a, const Type& b);
[[nodiscard]] bool operator==(const Node& a, const Node& b);
[[nodiscard]] bool operator==(const Dependency& a, const Dependency& b);
[[nodiscard]] bool operator<(const Dependency& a, const Dependency& b);

/// Their elements live as long as an iterator of the range, and may be walked over once.
using NodeRange = boost::any_range<const std::shared_ptr<Node>, boost::forward_traversal_tag>;
using DependencyRange =
    boost::any_range<const std::shared_ptr<Dependency>, boost::forward_traversal_tag>;

class Graph {
  public:
    [[nodiscard]] NodeRange getNodes() const;
    [[nodiscard]] DependencyRange getDownstreamDependencies(
        const std::shared_ptr<Node>& upstream) const;
    [[nodiscard]] std::vector<std::u16string> getPropertyKeys() const;
    [[nodiscard]] std::u16string getProperty(const std::u16string& key) const;

  private:
    friend class GraphBuilder;
    friend boost::posix_time::ptime getTimeStamp(const Graph& graph);

    std::vector<std::shared_ptr<Node>> nodes_;
    std::map<std::shared_ptr<Node>, std::vector<std::shared_ptr<Dependency>>> dependencies_;
    std::vector<Property> properties_;
    boost::posix_time::ptime timeStamp_;
};

[[nodiscard]] boost::posix_time::ptime getTimeStamp(const Graph& graph);

}  // namespace dependency::graph
