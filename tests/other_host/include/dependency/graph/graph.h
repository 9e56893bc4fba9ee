#pragma once
// Another graph model with the same names, as unlike the platform's as its promises allow: ranges are
// made on demand and walked once, equality is coarse, IDs of dependencies may repeat, and a program
// can let any query fail.
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <boost/range/any_range.hpp>

namespace dependency::graph {

/// Every query passes here, with its answer. `beforeQuery` does nothing, unless a program defines it.
void beforeQuery();
template <class Answer>
const Answer& query(const Answer& answer) {
    beforeQuery();
    return answer;
}

using Property = std::pair<std::u16string, std::u16string>;

struct WithProperties {
    std::vector<Property> properties;

    [[nodiscard]] std::vector<std::u16string> getPropertyKeys() const;
    [[nodiscard]] std::u16string getProperty(const std::u16string& key) const;
};

struct Type {
    std::u16string id;
    std::u16string name;

    [[nodiscard]] const std::u16string& getID() const { return query(id); }
    [[nodiscard]] const std::u16string& getName() const { return query(name); }
    [[nodiscard]] static const std::shared_ptr<const Type>& FILE();
};
using TypePointer = std::shared_ptr<const Type>;

struct Component {
    std::u16string name;
    TypePointer type;

    [[nodiscard]] std::u16string getName() const { return query(name); }
    [[nodiscard]] TypePointer getType() const { return query(type); }
};
using ComponentPointer = std::shared_ptr<const Component>;

struct Node : WithProperties {
    std::u16string id;
    std::u16string name;
    TypePointer type;

    [[nodiscard]] const std::u16string& getID() const { return query(id); }
    [[nodiscard]] std::u16string getName() const { return query(name); }
    [[nodiscard]] TypePointer getType() const { return query(type); }
};

struct Dependency {
    std::u16string id;
    std::shared_ptr<Node> upstream;
    std::shared_ptr<Node> downstream;
    TypePointer type;
    ComponentPointer from;
    ComponentPointer to;

    [[nodiscard]] const std::u16string& getID() const { return query(id); }
    [[nodiscard]] std::shared_ptr<Node> getUpstreamNode() const { return query(upstream); }
    [[nodiscard]] std::shared_ptr<Node> getDownstreamNode() const { return query(downstream); }
    [[nodiscard]] TypePointer getType() const { return query(type); }
    [[nodiscard]] ComponentPointer getUpstreamComponent() const { return query(from); }
    [[nodiscard]] ComponentPointer getDownstreamComponent() const { return query(to); }
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

struct Graph : WithProperties {
    std::vector<std::shared_ptr<Node>> nodes;
    std::map<std::shared_ptr<Node>, std::vector<std::shared_ptr<Dependency>>> dependencies;
    boost::posix_time::ptime timeStamp;

    [[nodiscard]] NodeRange getNodes() const;
    [[nodiscard]] DependencyRange getDownstreamDependencies(
        const std::shared_ptr<Node>& upstream) const;
};

[[nodiscard]] inline boost::posix_time::ptime getTimeStamp(const Graph& graph) {
    return query(graph.timeStamp);
}

}  // namespace dependency::graph
