#include <tessel/core/element.h>

#include <atomic>
#include <memory>
#include <new>

#include <pthread.h>
#include <boost/throw_exception.hpp>
#include <boost/uuid/random_generator.hpp>

#include <tessel/core/errors.h>

#include "transaction_state.h"

namespace tessel::core {

namespace {

// How many forks lie between this process and the first one that counted.
unsigned generation() {
    static std::atomic<unsigned> forks = 0;
    static const int failure = pthread_atfork(nullptr, nullptr, [] { ++forks; });
    if (failure != 0) {
        throw std::bad_alloc();
    }
    return forks.load(std::memory_order_relaxed);
}

boost::uuids::uuid freshUuid() {
    // Seeding costs as much as the creation of thousands of elements, so it is done once per thread,
    // and once more in a forked process, which would repeat its parent's UUIDs otherwise.
    thread_local std::unique_ptr<boost::uuids::random_generator_mt19937> generator;
    thread_local unsigned seededIn = 0;
    if (const unsigned current = generation(); !generator || seededIn != current) {
        generator = std::make_unique<boost::uuids::random_generator_mt19937>();
        seededIn = current;
    }
    return (*generator)();
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
