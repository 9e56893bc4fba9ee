#include "formats/unread_formats.h"

#include <algorithm>
#include <initializer_list>
#include <memory>
#include <vector>

#include <fmt/format.h>
#include <re2/re2.h>

namespace depcompare {

namespace {

struct UnreadFormat {
    std::string_view name;
    /// RE2, for the first bytes after white space; `^` is the beginning of any line there, `\A` that
    /// of the file. None: the file's name has to say it.
    const char* pattern = nullptr;
    std::initializer_list<std::string_view> endings = {};  // of file names
    std::string_view advice;
};

// Forms of advice that several formats share.
constexpr std::string_view picture = "give the DOT file that it was drawn from";
constexpr std::string_view networkx =
    "networkx reads it; write_graphml or node_link_data write a form that is read";
constexpr std::string_view diagram =
    "write its arrows as a list, a source and a target per line, or as DOT";
constexpr std::string_view spdxTools =
    "pyspdxtools -i FILE -o FILE.spdx.json writes it as JSON, which is read";
constexpr std::string_view sbom =
    "cdxgen -o bom.json or syft . -o cyclonedx-json, in the project's folder, write CycloneDX";

// The order counts: of several that fit, the first one is named.
const UnreadFormat unreadFormats[] = {
    {.name = "a PNG picture", .pattern = R"(\A\x89PNG)", .endings = {".png"}, .advice = picture},
    {.name = "PDF", .pattern = R"(\A%PDF-)", .endings = {".pdf"}, .advice = picture},
    {.name = "an SVG picture",
     .pattern = R"(\A(?:<\?xml[^>]*>\s*)?(?:<!--(?s:.*?)-->\s*|<!DOCTYPE svg[^>]*>\s*)*<svg\b)",
     .endings = {".svg"},
     .advice = picture},
    {.name = "a ZIP archive",
     .pattern = R"(\APK\x03\x04)",
     .advice = "unpack it, and give a file of it"},
    {.name = "data compressed by xz, bzip2 or zstd",
     .pattern = R"(\A(?:\xFD7zXZ|BZh|\x28\xB5\x2F\xFD))",
     .advice = "decompress it; only gzip is read"},
    {.name = "a web page",
     .pattern = R"(\A(?i:<!DOCTYPE html|<html))",
     .advice = "the server may ask for a login, or the address be that of a page about the file"},
    {.name = "GEXF",
     .pattern = R"(\A(?:<\?xml[^>]*>\s*)?(?:<!--(?s:.*?)-->\s*)*<gexf\b)",
     .endings = {".gexf"},
     .advice = networkx},
    {.name = "GML",
     .pattern = R"(\A(?:\s*(?:#.*|Creator\b.*|Version\b.*))*\s*graph\s*\[)",
     .endings = {".gml"},
     .advice = networkx},
    {.name = "a network of Pajek",
     .pattern = R"(\A(?:%.*\s*|\*[Nn]etwork.*\s*)*(?i:\*vertices)\b)",
     .endings = {".net", ".paj"},
     .advice = networkx},
    {.name = "Mermaid",
     .pattern =
         R"(\A(?:%%.*\s*|---(?s:.*?)\n---\s*)*(?:(?:graph|flowchart)[ \t]+(?:TB|TD|BT|RL|LR)[ \t]*(?:;|\r?\n|\z)|(?:class|state|er)Diagram\b))",
     .endings = {".mmd", ".mermaid"},
     .advice = diagram},
    {.name = "PlantUML",
     .pattern = R"(\A(?:'.*\s*)*@startuml\b)",
     .endings = {".puml", ".plantuml"},
     .advice = diagram},
    {.name = "SPDX in its tag-value form",
     .pattern = R"(\A(?:#.*\s*)*SPDXVersion:)",
     .endings = {".spdx"},
     .advice = spdxTools},
    {.name = "SPDX as RDF",
     .pattern = R"(\A(?:<\?xml[^>]*>\s*)?(?:<!--(?s:.*?)-->\s*)*<rdf:RDF\b)",
     .endings = {".spdx.rdf"},
     .advice = spdxTools},
    {.name = "SPDX as YAML",
     .pattern = R"((?m)^"?spdxVersion"?:[ ]*"?SPDX-)",
     .endings = {".spdx.yaml", ".spdx.yml"},
     .advice = spdxTools},
    {.name = "SPDX 3",
     .pattern = R"("@context":\s*"https://spdx\.org/rdf/3)",
     .advice = "have the tool write SPDX 2.3 in JSON, or CycloneDX"},
    {.name = "a lock file of yarn",
     .pattern = R"((?m)^# yarn lockfile v1|\A(?:#.*\s*)*__metadata:\s*\n\s+version:)",
     .endings = {"yarn.lock"},
     .advice = sbom},
    {.name = "a lock file of pnpm",
     .pattern = R"((?m)^lockfileVersion: )",
     .endings = {"pnpm-lock.yaml"},
     .advice = sbom},
    {.name = "package.json",
     .pattern = R"re(\A\{(?s:.*)"(?:devD|d)ependencies"\s*:\s*\{\s*"[^"]*"\s*:\s*"[~^<>=*\d])re",
     .endings = {"package.json"},
     .advice =
         "it has ranges of versions; give package-lock.json, or what npm ls --json --all writes"},
    {.name = "Cargo.lock",
     .pattern = R"(\A(?:#.*\s*)*# It is not intended for manual editing\.)",
     .endings = {"Cargo.lock", "Cargo.toml"},
     .advice = "give what cargo metadata --format-version 1 writes"},
    {.name = "a lock file of Poetry or uv",
     .pattern = R"((?m)^\[\[package\]\])",
     .endings = {"poetry.lock", "uv.lock", "pdm.lock", "Pipfile.lock", "pyproject.toml"},
     .advice = "give what pipdeptree --json writes where the packages are installed"},
    {.name = "requirements of pip",
     .pattern = R"(\A(?:(?:#.*|-[-\w]+.*)?\s*\n)*[A-Za-z0-9][\w.-]*(?:\[[\w, -]*\])?\s*[=~<>!]=)",
     .endings = {"requirements.txt"},
     .advice = "give what pipdeptree --json writes where the packages are installed"},
    {.name = "go.mod",
     .pattern = R"(\A(?://.*\s*)*module[ \t]+\S+\s+(?s:(?:.*\n)?)(?:go[ \t]+\d|require\b))",
     .endings = {"go.mod"},
     .advice = "give what go mod graph writes"},
    {.name = "go.sum",
     .pattern = R"(\A\S+ v\S+ h1:)",
     .endings = {"go.sum"},
     .advice = "give what go mod graph writes"},
    {.name = "a project file of Maven",
     .pattern = R"(maven\.apache\.org/POM)",
     .endings = {"pom.xml"},
     .advice = "give what mvn dependency:tree writes"},
    {.name = "a build script of Gradle",
     .endings = {".gradle", ".gradle.kts", "gradle.lockfile"},
     .advice = "give what gradle dependencies writes"},
    {.name = "a lock file of NuGet",
     .pattern = R"re(\A\{(?s:.*)"dependencies"\s*:\s*\{\s*"(?:net|\.NET)[^"]*"\s*:\s*\{)re",
     .endings = {"packages.lock.json", "project.assets.json", ".csproj"},
     .advice = "dotnet CycloneDX PROJECT --output-format json writes CycloneDX"},
    {.name = "Gemfile.lock",
     .pattern = R"((?m)^(?:GEM|PATH|GIT)\r?\n  remote: )",
     .endings = {"Gemfile.lock"},
     .advice = sbom},
    {.name = "composer.lock",
     .pattern = R"("content-hash"\s*:)",
     .endings = {"composer.lock"},
     .advice = sbom},
    {.name = "a lock file of Terraform",
     .pattern = R"((?m)^provider "[^"]+/[^"]+" \{)",
     .endings = {".terraform.lock.hcl", ".tf"},
     .advice = "give what terraform graph writes"},
    {.name = "a compilation database",
     .pattern = R"re(\A\[\s*\{\s*"(?:directory|command|file|arguments|output)"\s*:)re",
     .endings = {"compile_commands.json"},
     .advice = "give what ninja -t graph, cmake --graphviz or clang -dependency-dot write"},
    {.name = "a graph that Graphviz wrote as JSON",
     .pattern = R"("_subgraph_cnt"\s*:)",
     .advice = "give the DOT file, or what dot -Tcanon writes"},
    {.name = "XML that Bazel wrote",
     .pattern = R"(<query version=)",
     .advice = "bazel query --output graph --nograph:factored writes DOT"},
    {.name = "what Cytoscape writes",
     .pattern = R"("elements"\s*:\s*\{\s*"nodes"\s*:)",
     .endings = {".cyjs"},
     .advice = networkx},
    {.name = "what syft or trivy write for themselves",
     .pattern = R"("artifactRelationships"\s*:|\A\{\s*"SchemaVersion"\s*:)",
     .advice = "with -o cyclonedx-json or --format cyclonedx they write CycloneDX"},
    {.name = "a tree that is drawn as text",
     .pattern = R"((?m)^[ |\xE2\x94\x82]*(?:[|+`\\]-{2,}|\xE2\x94[\x9C\x94]\xE2\x94\x80))",
     .advice = "most such tools write JSON, too: npm ls --json --all, cargo metadata, pipdeptree "
               "--json"},
    {.name = "a list of packages with their versions",
     .pattern =
         R"(\A(?:Package[ ]+Version.*\s+-+[ ]+-+.*\s+)?(?:[A-Za-z][^\s@]*[ \t]+\(?v?\d+\.[\w.+~-]*\)?[ \t]*\r?\n){2})",
     .advice = "give what says which package needs which, as pipdeptree --json writes"},
    {.name = "text in UTF-16",
     .pattern = R"(\A(?:\xFF\xFE|\xFE\xFF))",
     .advice = "iconv -f UTF-16 -t UTF-8 converts it"},
};

/// In the order of the formats; null for one without a pattern.
std::vector<std::unique_ptr<const re2::RE2>> compiledPatterns() {
    // Latin1: the bytes are not a text yet.
    const re2::RE2::Options options(re2::RE2::Latin1);
    std::vector<std::unique_ptr<const re2::RE2>> patterns;
    for (const UnreadFormat& format : unreadFormats) {
        patterns.push_back(format.pattern == nullptr
                               ? nullptr
                               : std::make_unique<re2::RE2>(format.pattern, options));
    }
    return patterns;
}

/// The first format whose pattern fits, or the end.
const UnreadFormat* formatOfContent(std::string_view content) {
    static const std::vector<std::unique_ptr<const re2::RE2>> patterns = compiledPatterns();
    const re2::StringPiece bytes(content.data(), content.size());
    const auto found = std::ranges::find_if(patterns, [&](const auto& pattern) {
        return pattern && re2::RE2::PartialMatch(bytes, *pattern);
    });
    return std::begin(unreadFormats) + (found - patterns.begin());
}

}  // namespace

std::string adviceForUnread(std::string_view firstBytes, std::string_view fileName) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (firstBytes.starts_with(byteOrderMark)) {
        firstBytes.remove_prefix(byteOrderMark.size());
    }
    firstBytes.remove_prefix(std::min(firstBytes.find_first_not_of(" \t\r\n"), firstBytes.size()));
    const auto nameFits = [&](const UnreadFormat& format) {
        return std::ranges::any_of(
            format.endings, [&](std::string_view ending) { return fileName.ends_with(ending); });
    };
    const UnreadFormat* found = formatOfContent(firstBytes);
    if (found == std::end(unreadFormats)) {
        found = std::ranges::find_if(unreadFormats, nameFits);
    }
    return found == std::end(unreadFormats)
               ? std::string()
               : fmt::format("looks like {}, which is not read; {}", found->name, found->advice);
}

}  // namespace depcompare
