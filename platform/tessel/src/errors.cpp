#include <tessel/core/errors.h>

#include <boost/core/demangle.hpp>

namespace tessel::core {

Error::~Error() = default;
NoTransaction::~NoTransaction() = default;
TransactionOpen::~TransactionOpen() = default;
TransactionEnded::~TransactionEnded() = default;
DetachedElement::~DetachedElement() = default;
ForeignElement::~ForeignElement() = default;
CannotCastIncompatibleTypes::~CannotCastIncompatibleTypes() = default;

CannotCastIncompatibleTypes::CannotCastIncompatibleTypes(const std::type_info& from,
                                                         const std::type_info& to)
    : Error("cannot cast a " + boost::core::demangle(from.name()) + " to a " +
            boost::core::demangle(to.name())) {}

}  // namespace tessel::core
