#include "core/sort_key.h"

#include <fl/i18n/locale.h>
#include <fl/i18n/ustring.h>

namespace dependency::comparisons {

SortKey sortKeyOf(const graph::Node& downstream) {
    return {.typeID = downstream.getType()->getID(),
            .name = fl::i18n::to_lower(downstream.getName(), fl::i18n::Locale::global())};
}

}  // namespace dependency::comparisons
