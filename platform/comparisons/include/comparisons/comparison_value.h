#pragma once
// A detail comparison of any kind, told apart by its type string.
#include <string>
#include <type_traits>
#include <utility>

#include <boost/mpl/vector.hpp>
#include <boost/type_erasure/any.hpp>
#include <boost/type_erasure/any_cast.hpp>
#include <boost/type_erasure/builtin.hpp>
#include <boost/type_erasure/free.hpp>
#include <boost/type_erasure/typeid_of.hpp>

BOOST_TYPE_ERASURE_FREE((has_get_type), get_type)

namespace comparisons {

/// What a comparison must offer: it moves, exposes its run-time type, and has a free function
/// `get_type` that returns a constant reference to its type string.
using ComparisonConcept = boost::mpl::vector<
    boost::type_erasure::constructible<boost::type_erasure::_self(boost::type_erasure::_self&&)>,
    boost::type_erasure::destructible<>, boost::type_erasure::typeid_<>,
    has_get_type<const std::string&(const boost::type_erasure::_self&)>>;

/// Holds one comparison. `get_type(value)` gives its type string and
/// `boost::type_erasure::any_cast<const T&>(value)` the comparison itself; a cast to another type
/// throws `boost::type_erasure::bad_any_cast`.
class ComparisonValue : public boost::type_erasure::any<ComparisonConcept> {
    using Any = boost::type_erasure::any<ComparisonConcept>;

  public:
    template <class Comparison>
    requires(!std::is_base_of_v<Any, std::remove_cvref_t<Comparison>>) explicit ComparisonValue(
        Comparison&& comparison)
        : Any(std::forward<Comparison>(comparison)) {}

    ComparisonValue(ComparisonValue&&) = default;
    ComparisonValue(const ComparisonValue&) = delete;
    ComparisonValue& operator=(const ComparisonValue&) = delete;
    ComparisonValue& operator=(ComparisonValue&&) = delete;
    ~ComparisonValue() = default;
};

}  // namespace comparisons
