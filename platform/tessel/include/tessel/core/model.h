#pragma once
// Models: they hold elements and own transactions.
#include <tessel/core/export.h>
#include <tessel/core/handle.h>
#include <tessel/core/transaction.h>

namespace tessel::core {

/// The models that a model is created together with; here none, since models share nothing.
struct ModelConstellation {};

class TESSEL_CORE_EXPORT ModelImpl final : public ReferenceCounted {
  public:
    /// Throws: `TransactionOpen` while another transaction on this model is open.
    [[nodiscard]] Transaction beginTransaction();

    [[nodiscard]] bool isInTransaction() const noexcept { return open_ != nullptr; }

  private:
    friend class Model;
    friend class Creation;
    friend class detail::TransactionState;

    ModelImpl() noexcept = default;
    ~ModelImpl() override;

    detail::TransactionState* open_ = nullptr;
};

/// A model's handle.
///
/// Lifetime: elements keep their model alive; the model does not keep its elements.
/// Threads: a model, its elements and their handles belong to one thread at a time; different
///          models share nothing.
class TESSEL_CORE_EXPORT Model : public Handle<ModelImpl> {
  public:
    using Handle::Handle;

    [[nodiscard]] static Model create(const ModelConstellation& constellation);
};

}  // namespace tessel::core
