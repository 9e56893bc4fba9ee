#include "draft/choose_node_ids.h"

#include <algorithm>
#include <limits>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include <fmt/format.h>

#include "draft/marked_id.h"
#include "draft/seeded_hash.h"
#include "input/input_error.h"

namespace depcompare {

namespace {

using Drafts = std::array<GraphDraft, 2>;

constexpr NodeNumber several = std::numeric_limits<NodeNumber>::max();

/// By text, the node that could be known by it, or `several`.
using Owners = std::unordered_map<std::string_view, NodeNumber, SeededHash>;

void note(Owners& owners, std::string_view text, NodeNumber node) {
    const auto [owner, isNew] = owners.emplace(text, node);
    if (!isNew && owner->second != node) {
        owner->second = several;
    }
}

Owners ownersIn(const GraphDraft& draft) {
    Owners owners;
    owners.reserve(draft.nodes.size() + draft.idCandidates.size());
    for (NodeNumber node = 0; node < draft.nodes.size(); ++node) {
        note(owners, draft.nodes[node].id, node);
    }
    for (const IdCandidate& candidate : draft.idCandidates) {
        note(owners, candidate.id, candidate.node);
    }
    return owners;
}

void chooseUnique(Drafts& drafts) {
    const std::array owners{ownersIn(drafts[0]), ownersIn(drafts[1])};
    const auto isUnique = [&](std::string_view text) {
        return std::ranges::all_of(owners, [&](const Owners& side) {
            const auto owner = side.find(text);
            return owner == side.end() || owner->second != several;
        });
    };
    for (GraphDraft& draft : drafts) {
        std::vector<bool> chosen(draft.nodes.size());
        for (const IdCandidate& candidate : draft.idCandidates) {
            if (!chosen[candidate.node] && !holdsMark(candidate.id) && isUnique(candidate.id)) {
                draft.nodes[candidate.node].id = candidate.id;
                chosen[candidate.node] = true;
            }
        }
    }
}

void chooseNames(Drafts& drafts) {
    for (GraphDraft& draft : drafts) {
        for (NodeDraft& node : draft.nodes) {
            node.id = node.name;
        }
    }
}

void chooseProperty(Drafts& drafts, std::string_view key) {
    for (GraphDraft& draft : drafts) {
        bool found = draft.nodes.empty();
        for (const auto& [node, property] : draft.nodeProperties) {
            if (draft.texts[property.key] == key) {
                draft.nodes[node].id = property.value;
                found = true;
            }
        }
        if (!found) {
            throw InputError(draft.source, 0,
                             fmt::format("no node has the property {} (--node-id)", inQuotes(key)));
        }
    }
}

void requireDifferentIDs(const GraphDraft& draft, std::string_view rule) {
    std::unordered_set<std::string_view, SeededHash> seen;
    seen.reserve(draft.nodes.size());
    for (const NodeDraft& node : draft.nodes) {
        if (!seen.insert(node.id).second) {
            throw InputError(draft.source, 0,
                             fmt::format("two nodes would have the ID {} (--node-id {})",
                                         inQuotes(node.id), rule));
        }
        if (holdsMark(node.id)) {
            throw InputError(draft.source, 0, markProblem(node.id));
        }
    }
}

bool isNumber(std::string_view text, std::string_view digits) {
    return !text.empty() && text.find_first_not_of(digits) == std::string_view::npos;
}

bool looksPositional(std::string_view id, std::string_view prefix) {
    if (!id.starts_with(prefix)) {
        return false;
    }
    const std::string_view rest = id.substr(prefix.size());
    return isNumber(rest, "0123456789") ||
           (rest.starts_with("0x") && isNumber(rest.substr(2), "0123456789abcdefABCDEF"));
}

}  // namespace

void chooseNodeIDs(Drafts& drafts, std::string_view rule) {
    if (rule == "auto") {
        if (std::ranges::any_of(drafts,
                                [](const auto& draft) { return !draft.idCandidates.empty(); })) {
            chooseUnique(drafts);
        }
        return;
    }
    if (rule == "id") {
        return;
    }
    if (rule == "name") {
        chooseNames(drafts);
    } else {
        chooseProperty(drafts, rule);
    }
    for (const GraphDraft& draft : drafts) {
        requireDifferentIDs(draft, rule);
    }
}

bool lookPositional(std::span<const std::string_view> ids) {
    constexpr std::string_view prefixes[] = {"", "n", "node", "Node", "header_"};
    return !ids.empty() && std::ranges::any_of(prefixes, [&](std::string_view prefix) {
        return std::ranges::all_of(
            ids, [&](std::string_view id) { return looksPositional(id, prefix); });
    });
}

}  // namespace depcompare
