#pragma once
// A model changes only inside a transaction, atomically.
#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <tessel/core/export.h>

namespace tessel::core {

namespace detail {
class TransactionState;
}

/// An open transaction on one model, made by `Model::Impl::beginTransaction`.
///
/// Destroyed before `commit`, it restores every property, sequence and reference of the model to
/// what it was at the beginning; the elements created in it are then detached: their last content
/// can still be read, but they can be neither written nor referred to.
///
/// Lifetime: keeps its model alive.
/// Complexity: its end is linear in the properties and sequences of older elements that were written.
class TESSEL_CORE_EXPORT Transaction {
  public:
    Transaction(Transaction&& other) noexcept;
    /// The transaction held before, if still open, is rolled back.
    Transaction& operator=(Transaction&& other) noexcept;
    ~Transaction();

    /// Ends the transaction and keeps its changes.
    ///
    /// Throws: `TransactionEnded` when committed or moved from before; else it cannot fail.
    void commit();

  private:
    friend class ModelImpl;
    explicit Transaction(boost::intrusive_ptr<detail::TransactionState> state) noexcept;

    boost::intrusive_ptr<detail::TransactionState> state_;  // null once ended
};

}  // namespace tessel::core
