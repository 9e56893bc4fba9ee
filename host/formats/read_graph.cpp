#include "formats/read_graph.h"

#include <algorithm>
#include <initializer_list>

#include <fmt/format.h>

#include "formats/cyclonedx/cyclonedx_reader.h"
#include "formats/dependency_cruiser/dependency_cruiser_reader.h"
#include "formats/dot/dot_reader.h"
#include "formats/graphml/graphml_reader.h"
#include "formats/jgf/jgf_reader.h"
#include "input/input_error.h"

namespace depcompare {

namespace {

struct InputFormat {
    std::string_view name;
    std::initializer_list<std::string_view> endings;  // that names of such files usually have
    bool (*isLikely)(std::string_view firstBytes);
    GraphDraft (*read)(Input& input);
    std::string_view description;
};

// A content may look like several formats: the first one holds.
const InputFormat formats[] = {
    {.name = "graphml",
     .endings = {".graphml", ".xml"},
     .isLikely = looksLikeGraphML,
     .read = readGraphML,
     .description = "GraphML, as networkx, igraph and yEd write it. Nodes without a type, or of\n"
                    "type \"file\", are the files."},
    {.name = "cyclonedx",
     .endings = {".cdx.json", ".bom.json", "bom.json"},
     .isLikely = looksLikeCycloneDX,
     .read = readCycloneDX,
     .description = "CycloneDX 1.4 to 1.6 in JSON (npm sbom, syft, trivy, cdxgen and others).\n"
                    "Components are the files, known by their package URL without version."},
    {.name = "dependency-cruiser",
     .endings = {},
     .isLikely = looksLikeDependencyCruiser,
     .read = readDependencyCruiser,
     .description = "What \"depcruise --output-type json\" writes. Modules that were looked into\n"
                    "are the files."},
    {.name = "jgf",
     .endings = {".jgf", ".jgf.json"},
     .isLikely = looksLikeJGF,
     .read = readJGF,
     .description = "JSON Graph Format, version 1 or 2. Files as in GraphML; --convert jgf writes\n"
                    "any input as this."},
    {.name = "dot",
     .endings = {".dot", ".gv"},
     .isLikely = looksLikeDOT,
     .read = readDOT,
     .description = "DOT, as dependency-cruiser, madge, CMake, Doxygen, clang, ninja and jdeps\n"
                    "write it. Every node is a file."},
};

const InputFormat& likelyFormat(Input& input) {
    const std::string_view firstBytes = input.peek();
    for (const InputFormat& format : formats) {
        if (format.isLikely(firstBytes)) {
            return format;
        }
    }
    std::string_view name = input.name();
    if (name.ends_with(".gz")) {
        name.remove_suffix(3);
    }
    for (const InputFormat& format : formats) {
        if (std::ranges::any_of(format.endings,
                                [&](std::string_view ending) { return name.ends_with(ending); })) {
            return format;
        }
    }
    throw InputError(input.name(), 0,
                     "cannot detect the format from content or file name; use --input-format");
}

const InputFormat& chosenFormat(Input& input, std::string_view name) {
    const auto named = std::ranges::find(formats, name, &InputFormat::name);
    return named != std::end(formats) ? *named : likelyFormat(input);
}

}  // namespace

std::vector<std::string> inputFormats() {
    std::vector<std::string> names;
    for (const InputFormat& format : formats) {
        names.emplace_back(format.name);
    }
    return names;
}

std::string describedFormats() {
    std::string text;
    for (const InputFormat& format : formats) {
        text += fmt::format("{}\n", format.name);
        for (std::string_view rest = format.description; !rest.empty();) {
            const std::size_t end = rest.find('\n');
            text += fmt::format("    {}\n", rest.substr(0, end));
            rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
        }
    }
    return text +
           "\nAll of them may be compressed with gzip. Unless --input-format names it, the\n"
           "format is detected from the content, then from the file name.\n";
}

GraphDraft readGraph(Input& input, std::string_view format) {
    return chosenFormat(input, format).read(input);
}

}  // namespace depcompare
