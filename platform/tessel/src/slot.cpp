#include <tessel/core/slot.h>

#include <string>
#include <typeinfo>

#include <boost/core/demangle.hpp>
#include <boost/throw_exception.hpp>

#include <tessel/core/errors.h>

#include "transaction_state.h"

namespace tessel::core::detail {

namespace {

std::string typeName(const ElementImpl& element) {
    return boost::core::demangle(typeid(element).name());
}

}  // namespace

Slot::Slot(ElementImpl& owner) noexcept : owner_(&owner) {}

bool Slot::mustSave() const {
    const TransactionState& origin = *owner().origin_;
    switch (origin.outcome()) {
        case TransactionState::Outcome::open:
            return false;
        case TransactionState::Outcome::committed:
            break;
        case TransactionState::Outcome::abandoned:
            BOOST_THROW_EXCEPTION(DetachedElement("cannot write to a " + typeName(owner()) +
                                                  " whose creation was rolled back"));
    }
    if (origin.current() == nullptr) {
        BOOST_THROW_EXCEPTION(
            NoTransaction("cannot write to a " + typeName(owner()) + " outside of a transaction"));
    }
    return Owner::get_bits(owner_) == 0;
}

void Slot::keep(std::unique_ptr<SavedContent> saved) noexcept {
    owner().origin_->current()->keep(std::move(saved));
    Owner::set_bits(owner_, 1);
}

void Slot::checkReferable(const ElementImpl& target) const {
    if (target.origin_->model() != owner().origin_->model()) {
        BOOST_THROW_EXCEPTION(
            ForeignElement("cannot refer to a " + typeName(target) + " of another model"));
    }
    if (target.isDetached()) {
        BOOST_THROW_EXCEPTION(DetachedElement("cannot refer to a " + typeName(target) +
                                              " whose creation was rolled back"));
    }
}

SavedContent::SavedContent(Slot& slot) noexcept : slot_(slot), owner_(&slot.owner()) {}

SavedContent::~SavedContent() = default;

void SavedContent::release() noexcept {
    Slot::Owner::set_bits(slot_.owner_, 0);
}

}  // namespace tessel::core::detail
