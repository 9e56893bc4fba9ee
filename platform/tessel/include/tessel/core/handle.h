#pragma once
// How models and elements are held: counted references that feel like pointers.
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <tessel/core/export.h>

namespace tessel::core {

/// Carries the count of its handles and ends with the last of them.
///
/// Threads: the count is not atomic: one thread at a time for a model and all that belongs to it.
class TESSEL_CORE_EXPORT ReferenceCounted {
  public:
    ReferenceCounted(const ReferenceCounted&) = delete;
    ReferenceCounted& operator=(const ReferenceCounted&) = delete;

    void addRef() const noexcept { ++references_; }
    void removeRef() const noexcept {
        if (--references_ == 0) {
            delete this;
        }
    }

  protected:
    ReferenceCounted() noexcept = default;
    virtual ~ReferenceCounted();

  private:
    mutable std::uint32_t references_ = 0;
};

inline void intrusive_ptr_add_ref(const ReferenceCounted* counted) noexcept {
    counted->addRef();
}
inline void intrusive_ptr_release(const ReferenceCounted* counted) noexcept {
    counted->removeRef();
}

/// A counted reference to a `Counted`, or null. Handles are equal when they hold the same object.
/// A handle type derives from it, inherits its constructors and adds a static `create`.
///
/// Requires: non-null for `->` and `*`.
template <class Counted>
class Handle {
  public:
    using Impl = Counted;

    Handle() noexcept = default;
    explicit Handle(Impl* impl) noexcept : impl_(impl) {}
    template <class Other>
    requires std::convertible_to<Other*, Impl*> Handle(const Handle<Other>& other)
    noexcept : impl_(other.get()) {}

    [[nodiscard]] Impl* get() const noexcept { return impl_.get(); }
    [[nodiscard]] Impl* operator->() const noexcept { return impl_.operator->(); }
    [[nodiscard]] Impl& operator*() const noexcept { return *impl_; }
    [[nodiscard]] explicit operator bool() const noexcept { return impl_ != nullptr; }

    [[nodiscard]] friend bool operator==(const Handle& a, const Handle& b) noexcept {
        return a.impl_ == b.impl_;
    }
    [[nodiscard]] friend std::size_t hash_value(const Handle& handle) noexcept {
        return std::hash<Impl*>()(handle.get());
    }

  private:
    boost::intrusive_ptr<Impl> impl_;
};

template <class T>
concept HandleType = std::derived_from<T, Handle<typename T::Impl>>;

}  // namespace tessel::core

/// Hashes the object's identity, as `==` compares it.
template <tessel::core::HandleType T>
struct std::hash<T> {
    [[nodiscard]] std::size_t operator()(const T& handle) const noexcept {
        return hash_value(handle);
    }
};
