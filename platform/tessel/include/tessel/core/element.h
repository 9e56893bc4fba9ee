#pragma once
// Elements of a model, identified by their UUIDs and held through handles.
//
// An element type is a class derived from `ElementImpl`, whose members are of `Property` and
// `Sequence`, and a handle type:
//
//     class PersonImpl : public ElementImpl {
//       public:
//         using ElementImpl::ElementImpl;
//         const std::u16string& getName() const noexcept { return name_.get(); }
//         void setName(std::u16string name) { name_.set(std::move(name)); }
//
//       private:
//         Property<std::u16string> name_{*this};
//     };
//
//     class Person : public Handle<PersonImpl> {
//       public:
//         using Handle::Handle;
//         static Person create(Model& model) { return createElement<Person>(model); }
//     };
#include <concepts>
#include <typeinfo>

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <boost/uuid/uuid.hpp>

#include <tessel/core/export.h>
#include <tessel/core/handle.h>
#include <tessel/core/model.h>

namespace tessel::core {

namespace detail {
class Slot;
class TransactionState;
[[noreturn]] TESSEL_CORE_EXPORT void throwCannotCast(const std::type_info& from,
                                                     const std::type_info& to);
}  // namespace detail

/// Creates an element of a handle type in the model, with a fresh UUID.
///
/// Requires: the model non-null.
/// Throws:   `NoTransaction`.
template <class ElementHandle>
[[nodiscard]] ElementHandle createElement(const Model& model);

/// The right to construct an element; only `createElement` has it.
class TESSEL_CORE_EXPORT Creation {
  private:
    friend class ElementImpl;
    template <class ElementHandle>
    friend ElementHandle createElement(const Model& model);

    explicit Creation(const Model& model);

    detail::TransactionState& transaction_;
};

/// The base of every element type.
///
/// Lifetime: an element lives as long as a handle holds it, also one within another element, and
///           keeps its model alive. So a cycle of references keeps itself and its model alive until
///           a transaction clears one of them: a design of element types avoids cycles.
///           Destruction recurses through references: keep chains short.
class TESSEL_CORE_EXPORT ElementImpl : public ReferenceCounted {
  public:
    explicit ElementImpl(const Creation& creation);

    [[nodiscard]] const boost::uuids::uuid& getUuid() const noexcept { return uuid_; }
    [[nodiscard]] Model getModel() const noexcept;

    /// Returns: whether the transaction that created it was rolled back.
    [[nodiscard]] bool isDetached() const noexcept;

  protected:
    ~ElementImpl() override;

  private:
    friend class detail::Slot;

    boost::intrusive_ptr<detail::TransactionState> origin_;
    boost::uuids::uuid uuid_;
};

/// The handle of an element of any type.
class Element : public Handle<ElementImpl> {
  public:
    using Handle::Handle;
};

template <class ElementHandle>
ElementHandle createElement(const Model& model) {
    return ElementHandle(new typename ElementHandle::Impl(Creation(model)));
}

/// Throws: `CannotCastIncompatibleTypes`.
template <std::derived_from<ElementImpl> Target>
[[nodiscard]] Target& cast(ElementImpl& element) {
    auto* const target = dynamic_cast<Target*>(&element);
    if (target == nullptr) {
        detail::throwCannotCast(typeid(element), typeid(Target));
    }
    return *target;
}

/// Returns: null for null.
/// Throws:  `CannotCastIncompatibleTypes`.
template <HandleType Target, std::derived_from<ElementImpl> Source>
[[nodiscard]] Target cast(const Handle<Source>& element) {
    return element ? Target(&cast<typename Target::Impl>(*element)) : Target();
}

}  // namespace tessel::core
