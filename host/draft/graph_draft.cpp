#include "draft/graph_draft.h"

#include <algorithm>

namespace depcompare {

std::string_view TextStore::keep(std::string_view text) {
    auto* const kept = static_cast<char*>(memory_->allocate(text.size(), 1));
    std::ranges::copy(text, kept);
    return {kept, text.size()};
}

TextNumber GraphDraft::textNumber(std::string_view text) {
    const auto found = std::ranges::find(texts, text);
    const auto number = static_cast<TextNumber>(found - texts.begin());
    if (found == texts.end()) {
        texts.push_back(store.keep(text));
    }
    return number;
}

}  // namespace depcompare
