#include "cli/reading_options.h"

#include <cstdint>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "formats/read_graph.h"

namespace depcompare {

namespace {

template <class Number>
void addLimit(CLI::App& app, const std::string& option, Number& limit, std::uint64_t least,
              std::uint64_t most, const std::string& description) {
    app.add_option(option, limit, fmt::format("{} [{}]", description, limit))
        ->transform(CLI::AsSizeValue(false).description(""))
        ->check(CLI::Range(least, most).description(""))
        ->type_name("N")
        ->group("Limits (N may end in K, M or G)");
}

}  // namespace

void addReadingOptions(CLI::App& app, ReadOptions& options) {
    auto formats = inputFormats();
    formats.insert(formats.begin(), "auto");
    app.add_option("--input-format", options.format, "How to read the inputs [auto]")
        ->check(CLI::IsMember(formats).description(""))
        ->type_name(CLI::detail::join(formats, "|"));
    app.add_flag_callback(
        "--list-formats",
        [] {
            // The version flag ends the parsing with a text in the same way.
            throw CLI::CallForVersion(describedFormats(), 0);
        },
        "Explain the formats that can be read");
    app.add_option("--node-id", options.nodeID,
                   "What tells nodes apart: auto, id, name, or a property [auto]")
        ->type_name("KEY");
    app.add_option("--file-type", options.fileTypes, "Nodes of this type are files too; repeatable")
        ->type_name("TYPE")
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->allow_extra_args(false);

    // Nodes, edges and texts are numbered with 32 bits.
    constexpr std::uint64_t mostNumbers = 2'000'000'000;
    // Nested values are gone through one inside the other, on the stack.
    constexpr std::uint64_t mostNested = 1'000;
    constexpr std::uint64_t mostBytes = std::uint64_t{1} << 50U;
    // The program's own words have to fit.
    constexpr std::uint64_t leastTextBytes = 16;
    constexpr std::uint64_t mostTextBytes = std::uint64_t{1} << 30U;
    Limits& limits = options.limits;
    addLimit(app, "--max-input-bytes", limits.bytes, 1, mostBytes, "Size of an input, unpacked");
    addLimit(app, "--max-nesting", limits.nestingDepth, 1, mostNested, "Depth of nesting");
    addLimit(app, "--max-nodes", limits.nodes, 1, mostNumbers, "Nodes of a graph");
    addLimit(app, "--max-edges", limits.edges, 1, mostNumbers, "Edges of a graph");
    addLimit(app, "--max-text-bytes", limits.textBytes, leastTextBytes, mostTextBytes,
             "Bytes of one text");
}

}  // namespace depcompare
