#pragma once
// Many values of an element, in the order in which they were appended.
#include <cstddef>
#include <utility>

#include <boost/container/small_vector.hpp>

#include <tessel/core/slot.h>

namespace tessel::core {

namespace detail {
// Two handles or four codes stay within the element; `bool` is a plain value type of it.
template <class T>
using SequenceContent = boost::container::small_vector<T, 16 / sizeof(T)>;
}  // namespace detail

/// Every write may throw `NoTransaction` and `DetachedElement`, and then changes nothing.
///
/// Requires: `T` moves without failing.
/// Lifetime: iterators and references hold until the next write, and until the transaction is
///           rolled back.
template <class T>
class Sequence : private detail::ContentSlot<detail::SequenceContent<T>> {
    // Of the values: what the container itself says of its moves is too careful.
    static_assert(detail::canRollBack<T>);

  public:
    using value_type = T;
    using size_type = std::size_t;
    using const_reference = const T&;
    using const_iterator = const T*;
    using iterator = const_iterator;

    explicit Sequence(ElementImpl& owner) noexcept
        : detail::ContentSlot<detail::SequenceContent<T>>(owner) {}

    [[nodiscard]] std::size_t size() const noexcept { return this->content_.size(); }
    [[nodiscard]] bool empty() const noexcept { return this->content_.empty(); }
    [[nodiscard]] const T* begin() const noexcept { return this->content_.data(); }
    [[nodiscard]] const T* end() const noexcept { return begin() + size(); }

    /// Requires: `index < size()`.
    [[nodiscard]] const T& operator[](std::size_t index) const { return this->content_[index]; }

    /// Throws:     also `ForeignElement` for one of another model.
    /// Complexity: constant, amortised; the first in a transaction copies what an older element
    ///             holds.
    void push_back(T value) {
        this->checkReferable(value);
        this->saveCopy();
        this->content_.push_back(std::move(value));
    }

    /// Complexity: the content of an older element is moved away, not copied.
    void clear() {
        this->saveMoved();
        this->content_.clear();
    }

    /// Reserves capacity for `count` values. Not rolled back: capacity is not observable.
    void reserve(std::size_t count) {
        (void)this->mustSave();
        this->content_.reserve(count);
    }
};

template <class T>
using PrimitiveSequence = Sequence<T>;

/// Of element handles.
template <class ElementHandle>
using ElementSequence = Sequence<ElementHandle>;

}  // namespace tessel::core
