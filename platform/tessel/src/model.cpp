#include <tessel/core/model.h>

#include <boost/throw_exception.hpp>

#include <tessel/core/errors.h>

#include "transaction_state.h"

namespace tessel::core {

ReferenceCounted::~ReferenceCounted() = default;

ModelImpl::~ModelImpl() = default;

Transaction ModelImpl::beginTransaction() {
    if (isInTransaction()) {
        BOOST_THROW_EXCEPTION(TransactionOpen("transactions do not nest"));
    }
    return Transaction(new detail::TransactionState(Model(this)));
}

Model Model::create(const ModelConstellation& /*constellation*/) {
    return Model(new ModelImpl);
}

}  // namespace tessel::core
