// Whatever the bytes are, the reader refuses them with its own error, or what it read can be
// compared and does not differ from itself.
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <utility>

#include <depcompare/messages/messages.h>
#include <dependency/comparisons/compare_graphs.h>

#include "readers/build_graphs.h"
#include "readers/graphml_reader.h"
#include "readers/input.h"
#include "readers/input_error.h"
#include "reports/summary.h"

namespace {

depcompare::GraphDraft read(const std::string& text) {
    auto input = depcompare::Input::fromText("fuzz.graphml", text);
    return depcompare::readGraphML(input);
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    depcompare::messages::registerMessages();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    std::array<depcompare::GraphDraft, 2> drafts;
    try {
        drafts = {read(text), read(text)};
    } catch (const depcompare::InputError&) {
        return 0;
    }
    const auto loaded = depcompare::buildGraphs(std::move(drafts));
    const auto comparison =
        dependency::comparisons::compareGraphs(loaded[0].graph, loaded[1].graph);
    if (depcompare::summarize(*comparison).showsDifference) {
        std::abort();
    }
    return 0;
}
