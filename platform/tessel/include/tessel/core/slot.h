#pragma once
// The place of a property's or sequence's content in its element: it guards every write and first
// saves the content if a rollback would need it.
#include <concepts>
#include <memory>
#include <type_traits>
#include <utility>

#include <boost/intrusive/pointer_plus_bits.hpp>

#include <tessel/core/element.h>
#include <tessel/core/export.h>

namespace tessel::core::detail {

class SavedContent;

class TESSEL_CORE_EXPORT Slot {
  public:
    Slot(const Slot&) = delete;
    Slot& operator=(const Slot&) = delete;

  protected:
    explicit Slot(ElementImpl& owner) noexcept;
    ~Slot() = default;

    /// Returns: whether the content must be saved before it is written: the owner is older than the
    ///          transaction, which writes here for the first time.
    /// Throws:  `NoTransaction`, `DetachedElement`.
    [[nodiscard]] bool mustSave() const;

    /// Requires: `mustSave()`.
    void keep(std::unique_ptr<SavedContent> saved) noexcept;

    /// Throws: `ForeignElement`, `DetachedElement`.
    void checkReferable(const ElementImpl& target) const;
    template <class T>
    void checkReferable(const T& value) const;

  private:
    friend class SavedContent;
    using Owner = boost::intrusive::pointer_plus_bits<ElementImpl*, 1>;

    [[nodiscard]] ElementImpl& owner() const noexcept { return *Owner::get_pointer(owner_); }

    // Its spare bit: whether the open transaction has saved the content. A member of its own would
    // take eight bytes in every slot.
    ElementImpl* owner_;
};

/// A slot's content as it was before the transaction. Keeps the slot's element alive.
class TESSEL_CORE_EXPORT SavedContent {
  public:
    SavedContent(const SavedContent&) = delete;
    SavedContent& operator=(const SavedContent&) = delete;
    virtual ~SavedContent();

    virtual void restore() noexcept = 0;

  protected:
    explicit SavedContent(Slot& slot) noexcept;

  private:
    friend class Slot;
    friend class TransactionState;
    void release() noexcept;

    Slot& slot_;
    boost::intrusive_ptr<ElementImpl> owner_;
    std::unique_ptr<SavedContent> next_;
};

template <class T>
void Slot::checkReferable(const T& value) const {
    if constexpr (HandleType<T>) {
        if (value) {
            checkReferable(static_cast<const ElementImpl&>(*value));
        }
    }
}

/// What a rollback does to values must not fail.
template <class T>
inline constexpr bool canRollBack = std::is_nothrow_move_constructible_v<T>&&
    std::is_nothrow_move_assignable_v<T>&& std::is_nothrow_destructible_v<T>;

/// A slot with its content.
///
/// Requires: `Content` moves and ends without failing.
template <class Content>
class ContentSlot : public Slot {
  protected:
    explicit ContentSlot(ElementImpl& owner) noexcept : Slot(owner) {}
    ~ContentSlot() = default;

    /// For writes that need the content; a failure leaves it as it was.
    void saveCopy() {
        if (mustSave()) {
            keep(std::make_unique<Saved>(*this, std::as_const(content_)));
        }
    }

    /// For writes that replace the content, which may be empty afterwards; a failure leaves it as
    /// it was, since memory comes first.
    void saveMoved() {
        if (mustSave()) {
            keep(std::make_unique<Saved>(*this, std::move(content_)));
        }
    }

    Content content_{};

  private:
    class Saved final : public SavedContent {
      public:
        template <class From>
        Saved(ContentSlot& slot, From&& content)
            : SavedContent(slot), slot_(slot), content_(std::forward<From>(content)) {}
        void restore() noexcept override { slot_.content_ = std::move(content_); }

      private:
        ContentSlot& slot_;
        Content content_;
    };
};

}  // namespace tessel::core::detail
