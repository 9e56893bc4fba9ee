#pragma once
// One value of an element: a plain value, or a handle that refers to another element.
#include <utility>

#include <tessel/core/slot.h>

namespace tessel::core {

/// Starts with a value-initialised `T`, null for a handle.
///
/// Requires: `T` moves without failing.
template <class T>
class Property : private detail::ContentSlot<T> {
    static_assert(detail::canRollBack<T>);

  public:
    explicit Property(ElementImpl& owner) noexcept : detail::ContentSlot<T>(owner) {}

    [[nodiscard]] const T& get() const noexcept { return this->content_; }

    /// Throws: `NoTransaction`, `DetachedElement`; `ForeignElement` for one of another model.
    void set(T value) {
        this->checkReferable(value);
        this->saveMoved();
        this->content_ = std::move(value);
    }
};

}  // namespace tessel::core
