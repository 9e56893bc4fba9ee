// The object model's functions, each of which may fail before it does what it does. A definition in the
// program takes the place of a library's, for other libraries too.
#include <dlfcn.h>

#include <tessel/core/element.h>
#include <tessel/core/model.h>
#include <tessel/core/slot.h>
#include <tessel/core/transaction.h>

#include "support/faults.h"

namespace tessel::core {

namespace {

// Returns: the library's own function of this name, in which case the program may as well fail.
template <class Function>
Function* original(const char* name) {
    testing_faults::mayFail(testing_faults::Kind::objectModel);
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

}  // namespace

Model Model::create(const ModelConstellation& constellation) {
    return original<Model(const ModelConstellation&)>(
        "_ZN6tessel4core5Model6createERKNS0_18ModelConstellationE")(constellation);
}

Transaction ModelImpl::beginTransaction() {
    return original<Transaction(ModelImpl*)>("_ZN6tessel4core9ModelImpl16beginTransactionEv")(this);
}

void Transaction::commit() {
    original<void(Transaction*)>("_ZN6tessel4core11Transaction6commitEv")(this);
}

// Where every element is created.
void create(Creation* creation,
            const Model& model) __asm__("_ZN6tessel4core8CreationC1ERKNS0_5ModelE");
void create(Creation* creation, const Model& model) {
    original<void(Creation*, const Model&)>("_ZN6tessel4core8CreationC1ERKNS0_5ModelE")(creation,
                                                                                        model);
}

// Where every write begins.
bool detail::Slot::mustSave() const {
    return original<bool(const Slot*)>("_ZNK6tessel4core6detail4Slot8mustSaveEv")(this);
}

}  // namespace tessel::core
