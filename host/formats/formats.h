#pragma once
// How the content of each format is recognised, and how it is read.
//
// A recogniser sees the shape of a JSON document, or the first bytes of anything else; no document
// has the shapes of two formats. Every reader throws `InputError` for what is not of its format.
#include <string_view>

#include "draft/graph_draft.h"
#include "formats/json_shape.h"
#include "input/input.h"

namespace depcompare {

/// What `cargo metadata` writes. Packages are known by their names if those are unique.
[[nodiscard]] bool looksLikeCargo(const JsonShape& shape);
[[nodiscard]] GraphDraft readCargo(Input& input);

/// What `conan graph info --format json` of Conan 2 writes. Packages are known by their names
/// without versions if those are unique, else by name and context, else with the version.
[[nodiscard]] bool looksLikeConan(const JsonShape& shape);
[[nodiscard]] GraphDraft readConan(Input& input);

/// Rows of `source,target[,type]`, or with a header that names these columns, `from` and `to`, the
/// components of a dependency, and, for rows without a target, which describe a node, anything.
[[nodiscard]] bool looksLikeCSV(std::string_view firstBytes);
[[nodiscard]] GraphDraft readCSV(Input& input);

/// The same with tabs.
[[nodiscard]] bool looksLikeTSV(std::string_view firstBytes);
[[nodiscard]] GraphDraft readTSV(Input& input);

/// Two words on a line, source and target, or three, the last one being the type. A pair of equal
/// words is a node by itself, as tsort has it; modules of Go are known without their version.
[[nodiscard]] bool looksLikeEdgeList(std::string_view firstBytes);
[[nodiscard]] GraphDraft readEdgeList(Input& input);

/// The metafile of esbuild: its inputs and what they import.
[[nodiscard]] bool looksLikeEsbuild(const JsonShape& shape);
[[nodiscard]] GraphDraft readEsbuild(Input& input);

/// What `gradle dependencies` prints, of one project or several.
[[nodiscard]] bool looksLikeGradle(std::string_view firstBytes);
[[nodiscard]] GraphDraft readGradle(Input& input);

/// What `madge --json` writes: for each module a list of those that it needs.
[[nodiscard]] bool looksLikeMadge(const JsonShape& shape);
[[nodiscard]] GraphDraft readMadge(Input& input);

/// What `mvn dependency:tree` prints, alone or within the build's log, and its JSON.
[[nodiscard]] bool looksLikeMavenTree(std::string_view firstBytes);
[[nodiscard]] GraphDraft readMavenTree(Input& input);
[[nodiscard]] bool looksLikeMavenJson(const JsonShape& shape);
[[nodiscard]] GraphDraft readMavenJson(Input& input);

/// The node-link form of networkx and others: `nodes` with an `id`, and `edges` or `links` between
/// them. Nodes and edges have the members of GraphML's data.
[[nodiscard]] bool looksLikeNodeLink(const JsonShape& shape);
[[nodiscard]] GraphDraft readNodeLink(Input& input);

/// What `npm ls --json --all` writes.
[[nodiscard]] bool looksLikeNpmList(const JsonShape& shape);
[[nodiscard]] GraphDraft readNpmList(Input& input);

/// What `nx graph --file` writes: every project is a file.
[[nodiscard]] bool looksLikeNx(const JsonShape& shape);
[[nodiscard]] GraphDraft readNx(Input& input);

/// The lock file of npm, versions 2 and 3: every folder of a package is a node.
[[nodiscard]] bool looksLikePackageLock(const JsonShape& shape);
[[nodiscard]] GraphDraft readPackageLock(Input& input);

/// What `pipdeptree --json` and `--json-tree` write.
[[nodiscard]] bool looksLikePipdeptree(const JsonShape& shape);
[[nodiscard]] GraphDraft readPipdeptree(Input& input);

/// SPDX 2 in JSON. Packages and files are files, the document is not; relationships are turned so
/// that what needs comes first.
[[nodiscard]] bool looksLikeSPDX(const JsonShape& shape);
[[nodiscard]] GraphDraft readSPDX(Input& input);

}  // namespace depcompare
