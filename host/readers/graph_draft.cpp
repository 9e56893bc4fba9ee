#include "readers/graph_draft.h"

#include <algorithm>

namespace depcompare {

std::string_view TextStore::keep(std::string_view text) {
    auto* const kept = static_cast<char*>(memory_->allocate(text.size(), 1));
    std::ranges::copy(text, kept);
    return {kept, text.size()};
}

}  // namespace depcompare
