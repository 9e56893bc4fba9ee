// A definition in the program takes the place of a library's.
#include <dependency/graph/graph.h>
#include <fl/i18n/message_catalog.h>

#include "support/faults.h"

void dependency::graph::beforeQuery() {
    testing_faults::mayFail(testing_faults::Kind::graph);
}

void fl::i18n::beforeCall() {
    testing_faults::mayFail(testing_faults::Kind::catalog);
}
