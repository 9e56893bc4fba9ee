#include "draft/check_drafts.h"

#include <algorithm>
#include <map>
#include <string_view>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "draft/choose_node_ids.h"
#include "input/input_error.h"

namespace depcompare {

namespace {

void warnOfNoFiles(GraphDraft& draft) {
    constexpr std::size_t mostTypes = 5;
    std::map<std::string_view, std::size_t> counts;
    for (const NodeDraft& node : draft.nodes) {
        ++counts[draft.texts[node.type]];
    }
    if (counts.empty() || counts.contains("file")) {
        return;
    }
    std::vector<std::string> types;
    for (const auto& [type, count] : counts) {
        if (types.size() == mostTypes) {
            types.emplace_back("...");
            break;
        }
        types.push_back(fmt::format("{} {}", count, inQuotes(type)));
    }
    draft.warnings.push_back(
        fmt::format("no node is a file, so there is nothing to compare; --file-type says which "
                    "types are files (nodes by type: {})",
                    fmt::join(types, ", ")));
}

void warnOfPositions(GraphDraft& draft) {
    constexpr std::size_t tooFewToTell = 3;
    std::vector<std::string_view> ids;
    ids.reserve(draft.nodes.size());
    for (const NodeDraft& node : draft.nodes) {
        ids.push_back(node.id);
    }
    if (ids.size() >= tooFewToTell && lookPositional(ids)) {
        draft.warnings.push_back(
            fmt::format("the node IDs ({}, {}, ...) look like positions, which another file may "
                        "give to other nodes; --node-id can name something better",
                        inQuotes(ids[0]), inQuotes(ids[1])));
    }
}

}  // namespace

void applyFileTypes(GraphDraft& draft, const std::vector<std::string>& fileTypes) {
    if (fileTypes.empty()) {
        return;
    }
    const TextNumber file = draft.textNumber("file");
    const TextNumber key = draft.textNumber("type");
    for (NodeNumber number = 0; number < draft.nodes.size(); ++number) {
        NodeDraft& node = draft.nodes[number];
        const std::string_view type = draft.texts[node.type];
        if (node.type != file && std::ranges::find(fileTypes, type) != fileTypes.end()) {
            draft.nodeProperties.push_back(
                {.node = number, .property = {.key = key, .value = type}});
            node.type = file;
        }
    }
}

void addWarnings(GraphDraft& draft) {
    warnOfNoFiles(draft);
    warnOfPositions(draft);
}

}  // namespace depcompare
