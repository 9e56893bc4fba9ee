#include <dependency/graph/type.h>

namespace dependency::graph {

const std::shared_ptr<const Type>& Type::FILE() {
    // Never destroyed: it is compared with in destructors that run while the process ends.
    static const auto& file = *new std::shared_ptr<const Type>(new Type(u"file", u"file", nullptr));
    return file;
}

bool operator==(const Type& a, const Type& b) noexcept {
    return &a == &b || a.getID() == b.getID();
}

}  // namespace dependency::graph
