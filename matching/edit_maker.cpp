#include "matching/edit_maker.h"

namespace dependency::comparisons {

using ::comparisons::Side;

ItemEdit EditMaker::ofGraphs() const {
    return {index_[Side::left].graph, index_[Side::right].graph, !equal_.ofGraphs()};
}

void EditMaker::fill(ItemEdit& edit, const Pairing& pairing) const {
    for (const Side side : ::comparisons::sides) {
        const Number item = pairing.items[indexOf(side)];
        if (item != none) {
            index_.makeItem(side, item, edit[side]);
        }
    }
    edit.setChanged(hasBothSides(edit) && !equal_(pairing));
}

}  // namespace dependency::comparisons
