#include <algorithm>
#include <stdexcept>
#include <tuple>

#include <boost/iterator/iterator_facade.hpp>

#include <dependency/graph/graph.h>

namespace dependency::graph {
namespace {

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
        return query(list_->elements.at(index_));
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

}  // namespace

[[gnu::weak]] void beforeQuery() {}

std::vector<std::u16string> WithProperties::getPropertyKeys() const {
    std::vector<std::u16string> keys;
    for (const auto& [key, value] : properties) {
        keys.push_back(key);
    }
    return query(keys);
}
std::u16string WithProperties::getProperty(const std::u16string& key) const {
    return query(std::ranges::find(properties, key, &Property::first)->second);
}

const std::shared_ptr<const Type>& Type::FILE() {
    static const TypePointer file = std::make_shared<Type>(Type{u"file", u"file"});
    return query(file);
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
    return query(madeOnDemand<NodeRange>(nodes));
}
DependencyRange Graph::getDownstreamDependencies(const std::shared_ptr<Node>& upstream) const {
    const auto found = dependencies.find(upstream);
    return query(madeOnDemand<DependencyRange>(
        found == dependencies.end() ? std::vector<std::shared_ptr<Dependency>>() : found->second));
}

}  // namespace dependency::graph
