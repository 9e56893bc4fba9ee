// One program per reader; READER is its function.
#include "formats/cyclonedx/cyclonedx_reader.h"
#include "formats/dependency_cruiser/dependency_cruiser_reader.h"
#include "formats/dot/dot_reader.h"
#include "formats/formats.h"
#include "formats/graphml/graphml_reader.h"
#include "formats/jgf/jgf_reader.h"
#include "reader_fuzzing.h"

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    depcompare::fuzz::prepare();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    depcompare::fuzz::tryReader(depcompare::READER, data, size);
    return 0;
}
