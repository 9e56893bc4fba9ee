#include <tessel/core/transaction.h>

#include <utility>

#include <boost/throw_exception.hpp>

#include <tessel/core/errors.h>

#include "transaction_state.h"

namespace tessel::core {

namespace detail {

TransactionState::TransactionState(Model model) noexcept : model_(std::move(model)) {
    model_->open_ = this;
}

TransactionState::~TransactionState() = default;

void TransactionState::keep(std::unique_ptr<SavedContent> saved) noexcept {
    saved->next_ = std::move(saved_);
    saved_ = std::move(saved);
}

void TransactionState::end(Outcome outcome) noexcept {
    outcome_ = outcome;
    model_->open_ = nullptr;
    while (saved_) {
        if (outcome == Outcome::abandoned) {
            saved_->restore();
        }
        saved_->release();
        saved_ = std::move(saved_->next_);
    }
}

}  // namespace detail

Transaction::Transaction(boost::intrusive_ptr<detail::TransactionState> state) noexcept
    : state_(std::move(state)) {}

Transaction::Transaction(Transaction&& other) noexcept = default;

Transaction& Transaction::operator=(Transaction&& other) noexcept {
    Transaction taken(std::move(other));
    state_.swap(taken.state_);
    return *this;
}

Transaction::~Transaction() {
    if (state_) {
        state_->end(detail::TransactionState::Outcome::abandoned);
    }
}

void Transaction::commit() {
    if (!state_) {
        BOOST_THROW_EXCEPTION(TransactionEnded("the transaction has ended before its commit"));
    }
    state_->end(detail::TransactionState::Outcome::committed);
    state_.reset();
}

}  // namespace tessel::core
