#pragma once
// Files in, texts out: what the host's tests have in common.
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json_fwd.hpp>

#include "cli/options.h"
#include "draft/build_graphs.h"
#include "draft/read_options.h"
#include "presentation/report.h"
#include "reports/text/text_report.h"

namespace depcompare::test {

/// Returns: a GraphML file, one line before its graph, whose keys have their names as IDs.
[[nodiscard]] std::string graphML(std::string_view contentOfGraph);

/// Returns: a GraphML file with these parts, of which `;` separates one from the next. A part is `@`
/// for the graph, a node's ID or two of them with `>` between for an edge, then its data as `key=value`;
/// `_` is a space in a value.
///
///     @ version=1; a k=2; x type=lib name=X; a>x type=use upstream_component=f
[[nodiscard]] std::string graphOf(std::string_view parts);

/// Returns: what the program understands by these words, which spaces separate.
[[nodiscard]] Options optionsOf(const std::string& words);

/// Reads a file named `in`.
[[nodiscard]] LoadedGraph load(const std::string& file, const ReadOptions& options = {});

/// Reads two files, `old` and `new`, as a pair.
[[nodiscard]] std::array<LoadedGraph, 2> loadPair(const std::string& left, const std::string& right,
                                                  const ReadOptions& options = {});

/// Returns: one line for each property, node and dependency, with IDs as read:
///
///     version=1.0
///     @ 2024-05-06 07:08:09
///     a "a.cc" [file] size=3
///     0000000 a/from -> b/to [include]        component types, if any, after a colon
///
/// A component without a name is left out with its slash.
[[nodiscard]] std::string textOf(const LoadedGraph& loaded);

/// Returns: `textOf` the graph, or the message with which the file is refused.
[[nodiscard]] std::string read(const std::string& file, const ReadOptions& options = {});

/// Compares two files, `old` and `new`.
[[nodiscard]] Report compare(const std::string& left, const std::string& right,
                             const EnabledFilters& filters = {}, const ReadOptions& options = {});

/// Returns: nothing, each filter alone, and both.
[[nodiscard]] std::vector<EnabledFilters> allFilterSettings();

/// Returns: what `write` writes to the output that it is given.
template <class Write>
std::string written(Write write) {
    struct Text final : Sink {
        void write(std::string_view part) override { all += part; }
        std::string all;
    } text;
    Output output(text);
    write(output);
    output.flush();
    return text.all;
}

[[nodiscard]] std::string jsonTextOf(const Report& report);
[[nodiscard]] nlohmann::json jsonOf(const Report& report);
[[nodiscard]] std::string textOf(const Report& report, const TextStyle& style = {});

}  // namespace depcompare::test
