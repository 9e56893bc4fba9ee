#include "reader_fuzzing.h"

#include <array>
#include <cstdlib>
#include <string>
#include <utility>

#include <depcompare/messages/messages.h>
#include <dependency/comparisons/compare_graphs.h>

#include "draft/build_graphs.h"
#include "input/input_error.h"
#include "presentation/summary.h"

namespace depcompare::fuzz {

namespace {

GraphDraft draftOf(GraphDraft (*read)(Input& input), const std::string& text) {
    Input input = Input::fromText("fuzz", text, limits);
    return read(input);
}

}  // namespace

void prepare() {
    messages::registerMessages();
}

void tryReader(GraphDraft (*read)(Input& input), const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    std::array<GraphDraft, 2> drafts;
    try {
        drafts = {draftOf(read, text), draftOf(read, text)};
    } catch (const InputError&) {
        return;
    }
    const auto loaded = buildGraphs(std::move(drafts));
    const auto comparison =
        dependency::comparisons::compareGraphs(loaded[0].graph, loaded[1].graph);
    if (summarize(*comparison).showsDifference) {
        std::abort();
    }
}

}  // namespace depcompare::fuzz
