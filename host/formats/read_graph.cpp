#include "formats/read_graph.h"

#include <algorithm>
#include <initializer_list>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "formats/cyclonedx/cyclonedx_reader.h"
#include "formats/dependency_cruiser/dependency_cruiser_reader.h"
#include "formats/dot/dot_reader.h"
#include "formats/formats.h"
#include "formats/graphml/graphml_reader.h"
#include "formats/jgf/jgf_reader.h"
#include "formats/unread_formats.h"
#include "input/input_error.h"

namespace depcompare {

namespace {

struct InputFormat {
    std::string_view name;
    std::initializer_list<std::string_view> endings = {};  // that names of such files usually have
    bool (*isLikelyJson)(const JsonShape& shape) = nullptr;
    bool (*isLikelyText)(std::string_view firstBytes) = nullptr;
    bool isGuess = false;  // whether other files, too, may look like this
    GraphDraft (*read)(Input& input);
    std::string_view description;
    std::initializer_list<std::string_view> softTypes = {};    // as in `GraphDraft`
    std::initializer_list<std::string_view> tellingKeys = {};  // whose change is news
};

// Of several formats that a content may look like the first one counts: those that ask for less
// come after the others.
const InputFormat formats[] = {
    {.name = "cyclonedx",
     .endings = {".cdx.json", ".bom.json", "bom.json", ".cdx.xml", ".bom.xml", "bom.xml"},
     .isLikelyJson = looksLikeCycloneDX,
     .isLikelyText = looksLikeCycloneDXXml,
     .read = readCycloneDX,
     .description = "CycloneDX 1.4 to 1.6 in JSON or XML (npm sbom, syft, trivy, cdxgen and\n"
                    "others). Components are the files, known by their package URL without\n"
                    "version.",
     .tellingKeys = {"version"}},
    {.name = "graphml",
     .endings = {".graphml", ".xml"},
     .isLikelyText = looksLikeGraphML,
     .read = readGraphML,
     .description = "GraphML, as networkx, igraph and yEd write it. Nodes without a type, or of\n"
                    "type \"file\", are the files."},
    {.name = "spdx",
     .endings = {".spdx.json"},
     .isLikelyJson = looksLikeSPDX,
     .read = readSPDX,
     .description = "SPDX 2 in JSON (GitHub, npm sbom, syft, trivy). Packages and files are the\n"
                    "files, known as in CycloneDX.",
     .softTypes = {"DEV_DEPENDENCY", "OPTIONAL_DEPENDENCY", "TEST_DEPENDENCY"},
     .tellingKeys = {"version"}},
    {.name = "dependency-cruiser",
     .isLikelyJson = looksLikeDependencyCruiser,
     .read = readDependencyCruiser,
     .description = "What \"depcruise --output-type json\" writes. Modules that were looked into\n"
                    "are the files.",
     .softTypes = {"type-only", "type-only *", "* type-only", "* type-only *", "circular",
                   "violates *"}},
    {.name = "esbuild",
     .isLikelyJson = looksLikeEsbuild,
     .read = readEsbuild,
     .description = "The metafile of esbuild. Inputs are the files."},
    {.name = "nx",
     .isLikelyJson = looksLikeNx,
     .read = readNx,
     .description = "What \"nx graph --file\" writes. Projects are the files."},
    {.name = "npm-ls",
     .isLikelyJson = looksLikeNpmList,
     .read = readNpmList,
     .description = "What \"npm ls --json --all\" writes. Packages are the files, known by their\n"
                    "name if that is unique.",
     .tellingKeys = {"version"}},
    {.name = "package-lock",
     .endings = {"package-lock.json", "npm-shrinkwrap.json"},
     .isLikelyJson = looksLikePackageLock,
     .read = readPackageLock,
     .description = "The lock file of npm, versions 2 and 3. Packages are the files, known by\n"
                    "their name if that is unique.",
     .softTypes = {"dev", "optional", "peer"},
     .tellingKeys = {"version"}},
    {.name = "cargo",
     .isLikelyJson = looksLikeCargo,
     .read = readCargo,
     .description = "What \"cargo metadata\" writes. Packages are the files, known by their name\n"
                    "if that is unique.",
     .softTypes = {"dev"},
     .tellingKeys = {"version"}},
    {.name = "pipdeptree",
     .isLikelyJson = looksLikePipdeptree,
     .read = readPipdeptree,
     .description = "What \"pipdeptree --json\" writes. Packages are the files.",
     .tellingKeys = {"version"}},
    {.name = "conan",
     .isLikelyJson = looksLikeConan,
     .read = readConan,
     .description = "What \"conan graph info --format json\" of Conan 2 writes. Packages are the\n"
                    "files, known by their name if that is unique.",
     .softTypes = {"test_requires"},
     .tellingKeys = {"version"}},
    {.name = "maven-json",
     .isLikelyJson = looksLikeMavenJson,
     .read = readMavenJson,
     .description = "What \"mvn dependency:tree -DoutputType=json\" writes. Artifacts are the\n"
                    "files, known by group and name if that is unique.",
     .softTypes = {"test", "test *", "* optional"},
     .tellingKeys = {"version"}},
    {.name = "maven-tree",
     .isLikelyText = looksLikeMavenTree,
     .read = readMavenTree,
     .description = "What \"mvn dependency:tree\" prints. As maven-json.",
     .softTypes = {"test", "test *", "* optional"},
     .tellingKeys = {"version"}},
    {.name = "gradle",
     .isLikelyText = looksLikeGradle,
     .read = readGradle,
     .description = "What \"gradle dependencies\" prints. Projects and modules are the files.",
     .softTypes = {"test*"},
     .tellingKeys = {"version"}},
    {.name = "node-link",
     .isLikelyJson = looksLikeNodeLink,
     .read = readNodeLink,
     .description = "The node-link JSON of networkx, with \"edges\" or \"links\". Files as in\n"
                    "GraphML."},
    {.name = "jgf",
     .endings = {".jgf", ".jgf.json"},
     .isLikelyJson = looksLikeJGF,
     .read = readJGF,
     .description = "JSON Graph Format, version 1 or 2. Files as in GraphML; --convert jgf writes\n"
                    "any input as this."},
    {.name = "madge",
     .isLikelyJson = looksLikeMadge,
     .read = readMadge,
     .description = "What \"madge --json\" writes. Modules are the files."},
    {.name = "dot",
     .endings = {".dot", ".gv"},
     .isLikelyText = looksLikeDOT,
     .read = readDOT,
     .description = "DOT, as dependency-cruiser, madge, CMake, Doxygen, clang, ninja and jdeps\n"
                    "write it. Every node is a file."},
    {.name = "csv",
     .endings = {".csv"},
     .isLikelyText = looksLikeCSV,
     .read = readCSV,
     .description = "Rows of source,target[,type], or with a header that names the columns.\n"
                    "--convert csv writes any input as this."},
    {.name = "tsv",
     .endings = {".tsv"},
     .isLikelyText = looksLikeTSV,
     .read = readTSV,
     .description = "The same with tabs."},
    {.name = "list",
     .endings = {".edges", ".edgelist"},
     .isLikelyText = looksLikeEdgeList,
     .isGuess = true,
     .read = readEdgeList,
     .description = "Two or three words on a line: source, target, type (go mod graph, tsort).\n"
                    "Every node is a file.",
     .tellingKeys = {"version"}},
};

/// `text` does not begin with a blank.
bool isEmptyJson(std::string_view text) {
    const std::size_t end = text.find_first_not_of(" \t\r\n", 1);
    return end != std::string_view::npos &&
           text.find_first_not_of(" \t\r\n", end + 1) == text.npos &&
           ((text.front() == '{' && text[end] == '}') || (text.front() == '[' && text[end] == ']'));
}

/// Returns: what a reader of the message may recognise of an input that fits no format.
std::string problemOfUnfit(std::string_view firstBytes, const JsonShape& shape) {
    constexpr std::string_view pointer = "--list-formats explains what can be read";
    constexpr std::size_t mostMembers = 4;
    const std::size_t begin = firstBytes.find_first_not_of(" \t\r\n");
    if (begin == std::string_view::npos) {
        return "the file is empty or blank; did the command that wrote it fail?";
    }
    firstBytes.remove_prefix(begin);
    std::vector<std::string> members;
    for (const JsonShape::Value& value : shape.values) {
        if (value.path.size() == 1 && shape.values.front().kind == JsonKind::object) {
            members.push_back(inQuotes(value.path.front()));
        }
    }
    if (!members.empty()) {
        const bool areMore = members.size() > mostMembers;
        members.resize(std::min(members.size(), mostMembers));
        return fmt::format("JSON that fits no format, with the members {}{}; {}",
                           fmt::join(members, ", "), areMore ? ", ..." : "", pointer);
    }
    if (isEmptyJson(firstBytes)) {
        return "empty JSON, which several formats write; name the format by --input-format";
    }
    return fmt::format("fits no format; it begins with {}; {}",
                       inQuotes(firstBytes.substr(0, firstBytes.find_first_of("\r\n"))), pointer);
}

const InputFormat& likelyFormat(Input& input) {
    const std::string_view firstBytes = input.peek();
    const JsonShape shape = jsonShapeOf(firstBytes);
    const auto* const likely = std::ranges::find_if(formats, [&](const InputFormat& format) {
        return (format.isLikelyJson != nullptr && format.isLikelyJson(shape)) ||
               (format.isLikelyText != nullptr && format.isLikelyText(firstBytes));
    });
    const bool isFound = likely != std::end(formats);
    if (isFound && !likely->isGuess) {
        return *likely;
    }
    std::string_view name = input.name();
    if (name.ends_with(".gz")) {
        name.remove_suffix(3);
    }
    if (const std::string advice = adviceForUnread(firstBytes, name); !advice.empty()) {
        throw InputError(input.name(), 0, advice);
    }
    if (isFound) {
        return *likely;
    }
    for (const InputFormat& format : formats) {
        if (std::ranges::any_of(format.endings,
                                [&](std::string_view ending) { return name.ends_with(ending); })) {
            return format;
        }
    }
    throw InputError(input.name(), 0, problemOfUnfit(firstBytes, shape));
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

std::vector<std::string> tellingKeysOf(Input& input, std::string_view format) {
    const auto keys = chosenFormat(input, format).tellingKeys;
    return {keys.begin(), keys.end()};
}

GraphDraft readGraph(Input& input, std::string_view format) {
    const InputFormat& chosen = chosenFormat(input, format);
    GraphDraft draft = chosen.read(input);
    draft.softTypes.assign(chosen.softTypes.begin(), chosen.softTypes.end());
    return draft;
}

}  // namespace depcompare
