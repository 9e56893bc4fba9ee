#pragma once
// Graphs written as lines of text, so that a test shows what it compares.
#include <memory>
#include <string>
#include <string_view>

#include <dependency/comparisons/parallel_dependencies.h>
#include <dependency/graph/graph.h>

namespace dependency::test {

/// Makes a graph of lines; empty ones and those that begin with '#' are skipped:
///
///     A                                     a file, named as its ID
///     B [type=external name=beta size=3]    a node of another type, with a property
///     A -> B [id=7 type=call from=x to=y]   a dependency; ends not declared anywhere are files
///     graph [license=MIT]                   properties of the graph
///     @ 2024-05-06 07:08:09                 its analysis time
///
/// A word is bare or in double quotes. A type is `ID` or `ID:name`. Components have the names
/// `from` and `to` ("" by default) and the types `fromType` and `toType`. Dependencies without an
/// ID are numbered. Of several declarations of a node the last counts.
///
/// Order:  nodes as first mentioned, dependencies and properties as written.
/// Throws: `std::invalid_argument` for a line of another shape, and what the builder throws.
[[nodiscard]] std::shared_ptr<const graph::Graph> graphOf(std::string_view text);

/// Throws: `std::out_of_range` if there is none.
[[nodiscard]] std::shared_ptr<graph::Node> nodeOf(const std::shared_ptr<const graph::Graph>& graph,
                                                  std::string_view id);

/// Throws: `std::out_of_range` if there is none.
[[nodiscard]] comparisons::ParallelDependencies groupOf(
    const std::shared_ptr<const graph::Graph>& graph, std::string_view upstream,
    std::string_view downstream);

/// The only dependency of a graph of one line.
[[nodiscard]] std::shared_ptr<graph::Dependency> dependencyOf(std::string_view line);

[[nodiscard]] std::u16string utf16(std::string_view text);
[[nodiscard]] std::string utf8(std::u16string_view text);

}  // namespace dependency::test
