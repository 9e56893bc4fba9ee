#include <algorithm>
#include <atomic>
#include <tuple>

#include <boost/iterator/iterator_facade.hpp>

#include <dependency/graph/graph_builder.h>

namespace dependency::graph {
namespace {

std::atomic<long> successesLeft = -1;
std::atomic<bool> failed = false;

// Every operation that may be asked for passes here.
template <class Result>
Result&& answer(Result&& result) {
    if (successesLeft >= 0 && successesLeft-- == 0) {
        failed = true;
        throw QueryFailed("the model fails");
    }
    return std::forward<Result>(result);
}

template <class T>
struct List {
    std::vector<std::shared_ptr<T>> elements;
    std::size_t walked = 0;
};

template <class T>
class Iterator : public boost::iterator_facade<Iterator<T>, const std::shared_ptr<T>,
                                               boost::forward_traversal_tag> {
  public:
    Iterator() = default;
    Iterator(std::shared_ptr<List<T>> list, std::size_t index)
        : list_(std::move(list)), index_(index) {}

  private:
    friend class boost::iterator_core_access;

    [[nodiscard]] const std::shared_ptr<T>& dereference() const {
        return answer(list_->elements.at(index_));
    }
    [[nodiscard]] bool equal(const Iterator& other) const { return index_ == other.index_; }
    void increment() {
        if (index_++ != list_->walked++) {
            throw std::logic_error("a range is walked twice");
        }
    }

    std::shared_ptr<List<T>> list_;
    std::size_t index_ = 0;
};

// Handles of its own for every range, so that their addresses say nothing.
template <class Range, class T>
Range madeOnDemand(const std::vector<std::shared_ptr<T>>& elements) {
    const auto list = std::make_shared<List<T>>();
    list->elements = elements;
    return Range(Iterator<T>(list, 0), Iterator<T>(list, elements.size()));
}

std::vector<std::u16string> keysOf(const std::vector<Property>& properties) {
    std::vector<std::u16string> keys;
    for (const auto& [key, value] : properties) {
        keys.push_back(key);
    }
    return keys;
}

std::u16string valueOf(const std::vector<Property>& properties, const std::u16string& key) {
    return std::ranges::find(properties, key, &Property::first)->second;
}

}  // namespace

FailingQuery::FailingQuery(long successes) noexcept {
    failed = false;
    successesLeft = successes;
}
FailingQuery::~FailingQuery() {
    successesLeft = -1;
}
bool FailingQuery::happened() noexcept {
    return failed;
}

const std::u16string& Type::getID() const {
    return answer(id_);
}
const std::u16string& Type::getName() const {
    return answer(name_);
}
const std::shared_ptr<const Type>& Type::FILE() {
    static const auto file = std::make_shared<const Type>(u"file", u"file");
    return answer(file);
}

std::u16string Component::getName() const {
    return answer(name_);
}
std::shared_ptr<const Type> Component::getType() const {
    return answer(type_);
}

const std::u16string& Node::getID() const {
    return answer(id_);
}
std::u16string Node::getName() const {
    return answer(name_);
}
std::shared_ptr<const Type> Node::getType() const {
    return answer(type_);
}
std::vector<std::u16string> Node::getPropertyKeys() const {
    return answer(keysOf(properties_));
}
std::u16string Node::getProperty(const std::u16string& key) const {
    return answer(valueOf(properties_, key));
}

const std::u16string& Dependency::getID() const {
    return answer(id_);
}
std::shared_ptr<Node> Dependency::getUpstreamNode() const {
    return answer(nodes_.first);
}
std::shared_ptr<Node> Dependency::getDownstreamNode() const {
    return answer(nodes_.second);
}
std::shared_ptr<const Type> Dependency::getType() const {
    return answer(type_);
}
std::shared_ptr<const Component> Dependency::getUpstreamComponent() const {
    return answer(components_.first);
}
std::shared_ptr<const Component> Dependency::getDownstreamComponent() const {
    return answer(components_.second);
}

namespace {

auto contentOf(const Dependency& dependency) {
    return std::tuple(dependency.getType()->getID(),
                      dependency.getUpstreamComponent()->getType()->getID(),
                      dependency.getDownstreamComponent()->getType()->getID());
}

}  // namespace

bool operator==(const Type& a, const Type& b) {
    return a.getID() == b.getID();
}
bool operator==(const Node& a, const Node& b) {
    return a.getName() == b.getName();
}
bool operator==(const Dependency& a, const Dependency& b) {
    return contentOf(a) == contentOf(b);
}
bool operator<(const Dependency& a, const Dependency& b) {
    return contentOf(a) < contentOf(b);
}

NodeRange Graph::getNodes() const {
    return answer(madeOnDemand<NodeRange>(nodes_));
}
DependencyRange Graph::getDownstreamDependencies(const std::shared_ptr<Node>& upstream) const {
    const auto found = dependencies_.find(upstream);
    return answer(madeOnDemand<DependencyRange>(
        found == dependencies_.end() ? std::vector<std::shared_ptr<Dependency>>() : found->second));
}
std::vector<std::u16string> Graph::getPropertyKeys() const {
    return answer(keysOf(properties_));
}
std::u16string Graph::getProperty(const std::u16string& key) const {
    return answer(valueOf(properties_, key));
}
boost::posix_time::ptime getTimeStamp(const Graph& graph) {
    return answer(graph.timeStamp_);
}

std::shared_ptr<const Type> GraphBuilder::type(std::u16string_view id, std::u16string_view name) {
    return std::make_shared<const Type>(std::u16string(id), std::u16string(name));
}
std::shared_ptr<const Component> GraphBuilder::component(std::u16string_view name,
                                                         const std::shared_ptr<const Type>& type) {
    return std::make_shared<const Component>(std::u16string(name), type);
}
std::shared_ptr<Node> GraphBuilder::addNode(std::u16string id, std::u16string name,
                                            const std::shared_ptr<const Type>& type,
                                            std::vector<Property> properties) {
    return graph_->nodes_.emplace_back(
        std::make_shared<Node>(std::move(id), std::move(name), type, std::move(properties)));
}
std::shared_ptr<Dependency> GraphBuilder::addDependency(
    std::u16string id, const std::shared_ptr<Node>& upstream,
    const std::shared_ptr<Node>& downstream, const std::shared_ptr<const Type>& type,
    const std::shared_ptr<const Component>& from, const std::shared_ptr<const Component>& to) {
    return graph_->dependencies_[upstream].emplace_back(
        std::make_shared<Dependency>(std::move(id), upstream, downstream, type, from, to));
}
void GraphBuilder::setProperty(std::u16string_view key, std::u16string value) {
    auto& properties = graph_->properties_;
    const auto found = std::ranges::find(properties, key, &Property::first);
    if (found == properties.end()) {
        properties.emplace_back(key, std::move(value));
    } else {
        found->second = std::move(value);
    }
}
void GraphBuilder::setTimeStamp(const boost::posix_time::ptime& timeStamp) {
    graph_->timeStamp_ = timeStamp;
}
std::shared_ptr<const Graph> GraphBuilder::finish() {
    return std::exchange(graph_, std::make_shared<Graph>());
}

}  // namespace dependency::graph
