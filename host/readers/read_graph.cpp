#include "readers/read_graph.h"

#include "readers/graphml_reader.h"
#include "readers/input_error.h"

namespace depcompare {

namespace {

struct InputFormat {
    std::string_view name;
    std::string_view ending;  // of the names of files that are usually of this format
    bool (*isLikely)(std::string_view firstBytes);
    GraphDraft (*read)(Input& input);
};

constexpr InputFormat formats[] = {
    {.name = "graphml", .ending = ".graphml", .isLikely = looksLikeGraphML, .read = readGraphML},
};

const InputFormat& likelyFormat(Input& input) {
    const std::string_view firstBytes = input.peek();
    for (const InputFormat& format : formats) {
        if (format.isLikely(firstBytes)) {
            return format;
        }
    }
    for (const InputFormat& format : formats) {
        if (input.name().ends_with(format.ending)) {
            return format;
        }
    }
    throw InputError(input.name(), 0,
                     "neither content nor name tell the format; --input-format can name it");
}

const InputFormat& chosenFormat(Input& input, std::string_view name) {
    for (const InputFormat& format : formats) {
        if (format.name == name) {
            return format;
        }
    }
    return likelyFormat(input);
}

}  // namespace

std::vector<std::string> inputFormats() {
    std::vector<std::string> names;
    for (const InputFormat& format : formats) {
        names.emplace_back(format.name);
    }
    return names;
}

GraphDraft readGraph(Input& input, std::string_view format) {
    return chosenFormat(input, format).read(input);
}

}  // namespace depcompare
