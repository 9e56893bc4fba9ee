#include <tessel/core/element.h>

#include <string>

#include <boost/throw_exception.hpp>
#include <boost/uuid/random_generator.hpp>

#include <tessel/core/errors.h>

#include "transaction_state.h"

namespace tessel::core {

namespace {

boost::uuids::uuid freshUuid() {
    // Seeding costs as much as the creation of thousands of elements.
    thread_local boost::uuids::random_generator_mt19937 generator;
    return generator();
}

detail::TransactionState& openTransaction(detail::TransactionState* transaction) {
    if (transaction == nullptr) {
        BOOST_THROW_EXCEPTION(NoTransaction("cannot create an element outside of a transaction"));
    }
    return *transaction;
}

}  // namespace

Creation::Creation(const Model& model) : transaction_(openTransaction(model->open_)) {}

ElementImpl::ElementImpl(const Creation& creation)
    : origin_(&creation.transaction_), uuid_(freshUuid()) {}

ElementImpl::~ElementImpl() = default;

Model ElementImpl::getModel() const noexcept {
    return origin_->model();
}

bool ElementImpl::isDetached() const noexcept {
    return origin_->outcome() == detail::TransactionState::Outcome::abandoned;
}

void detail::throwCannotCast(const std::type_info& from, const std::type_info& to) {
    BOOST_THROW_EXCEPTION(CannotCastIncompatibleTypes(from, to));
}

}  // namespace tessel::core
