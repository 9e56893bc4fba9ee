#pragma once
// The state of a transaction, which outlives it: elements refer to the one that created them, and so
// know their model and whether they are new, part of the model, or detached.
#include <memory>

#include <tessel/core/handle.h>
#include <tessel/core/model.h>
#include <tessel/core/slot.h>

namespace tessel::core::detail {

class TransactionState final : public ReferenceCounted {
  public:
    enum class Outcome : unsigned char { open, committed, abandoned };

    /// Requires: no open transaction in the model.
    explicit TransactionState(Model model) noexcept;

    [[nodiscard]] const Model& model() const noexcept { return model_; }
    [[nodiscard]] Outcome outcome() const noexcept { return outcome_; }

    /// Returns: the model's open transaction, null for none.
    [[nodiscard]] TransactionState* current() const noexcept { return model_->open_; }

    void keep(std::unique_ptr<SavedContent> saved) noexcept;

    /// Requires: open; a holder other than the elements.
    void end(Outcome outcome) noexcept;

  private:
    ~TransactionState() override;

    Outcome outcome_ = Outcome::open;
    Model model_;
    std::unique_ptr<SavedContent> saved_;
};

}  // namespace tessel::core::detail
