#pragma once
// The errors of the object model. An operation that is refused changes nothing.
#include <stdexcept>
#include <string>
#include <typeinfo>

#include <boost/exception/exception.hpp>

#include <tessel/core/export.h>

namespace tessel::core {

/// The base of all refusals; its diagnostic information says where it was thrown.
class TESSEL_CORE_EXPORT Error : public std::logic_error, public boost::exception {
  public:
    using std::logic_error::logic_error;
    Error(const Error&) = default;
    Error& operator=(const Error&) = default;
    ~Error() override;
};

/// A write, or the creation of an element, while its model has no open transaction.
class TESSEL_CORE_EXPORT NoTransaction : public Error {
  public:
    using Error::Error;
    NoTransaction(const NoTransaction&) = default;
    NoTransaction& operator=(const NoTransaction&) = default;
    ~NoTransaction() override;
};

/// A second transaction on a model whose first is still open.
class TESSEL_CORE_EXPORT TransactionOpen : public Error {
  public:
    using Error::Error;
    TransactionOpen(const TransactionOpen&) = default;
    TransactionOpen& operator=(const TransactionOpen&) = default;
    ~TransactionOpen() override;
};

/// The commit of a transaction that was committed or moved from before.
class TESSEL_CORE_EXPORT TransactionEnded : public Error {
  public:
    using Error::Error;
    TransactionEnded(const TransactionEnded&) = default;
    TransactionEnded& operator=(const TransactionEnded&) = default;
    ~TransactionEnded() override;
};

/// A write to an element whose creation was rolled back, or a reference to such an element.
class TESSEL_CORE_EXPORT DetachedElement : public Error {
  public:
    using Error::Error;
    DetachedElement(const DetachedElement&) = default;
    DetachedElement& operator=(const DetachedElement&) = default;
    ~DetachedElement() override;
};

/// A reference to an element of another model.
class TESSEL_CORE_EXPORT ForeignElement : public Error {
  public:
    using Error::Error;
    ForeignElement(const ForeignElement&) = default;
    ForeignElement& operator=(const ForeignElement&) = default;
    ~ForeignElement() override;
};

/// A cast of an element to a type other than its own. `what()` names both types.
class TESSEL_CORE_EXPORT CannotCastIncompatibleTypes : public Error {
  public:
    CannotCastIncompatibleTypes(const std::type_info& from, const std::type_info& to);
    CannotCastIncompatibleTypes(const CannotCastIncompatibleTypes&) = default;
    CannotCastIncompatibleTypes& operator=(const CannotCastIncompatibleTypes&) = default;
    ~CannotCastIncompatibleTypes() override;
};

}  // namespace tessel::core
