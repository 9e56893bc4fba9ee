#include <dependency/graph/type.h>

namespace dependency::graph {

const std::shared_ptr<const Type>& Type::FILE() {
    static const std::shared_ptr<const Type> file(new Type(u"file", u"file", nullptr));
    return file;
}

bool operator==(const Type& a, const Type& b) noexcept {
    return &a == &b || a.getID() == b.getID();
}

}  // namespace dependency::graph
