#include "formats/cyclonedx/cyclonedx_reader.h"
#include "reader_fuzzing.h"

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    depcompare::fuzz::prepare();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    depcompare::fuzz::tryReader(depcompare::readCycloneDX, data, size);
    return 0;
}
