#include "report_contract.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace depcompare::test {

namespace {

using nlohmann::json;
using Counts = std::array<std::uint64_t, 4>;

void require(bool holds, std::string_view rule, const json& where) {
    if (!holds) {
        throw BrokenRule(fmt::format("{}: {}", rule, where.dump().substr(0, 2000)));
    }
}

bool differs(const json& edited) {
    return edited.at("edit") != "unchanged";
}

bool isOneSided(const json& edited) {
    return edited.at("edit") == "added" || edited.at("edit") == "removed";
}

std::size_t sumOf(const json& counts) {
    std::size_t sum = 0;
    for (const json& count : counts) {
        sum += count.get<std::size_t>();
    }
    return sum;
}

void requireSides(const json& edited) {
    const bool left = !edited.at("left").is_null();
    const bool right = !edited.at("right").is_null();
    require(left && right ? !isOneSided(edited)
                          : left != right && edited.at("edit") == (left ? "removed" : "added"),
            "an edit says which sides there are", edited);
}

class Contract {
  public:
    explicit Contract(const json& report)
        : report_(report),
          hidesUnchanged_(hides("unchanged")),
          hidesNonstructural_(hides("nonstructural")) {}

    void requireAll() {
        requireEntry(report_.at("tree"));
        requireSums();
        requireLedger("left", "removed");
        requireLedger("right", "added");
    }

  private:
    [[nodiscard]] bool hides(std::string_view filter) const {
        return std::ranges::count(report_.at("filters"), filter) != 0;
    }

    [[nodiscard]] bool shows(bool differs, bool isStructural) const {
        return (!hidesUnchanged_ || differs) && (!hidesNonstructural_ || isStructural);
    }

    void requireDetail(const json& detail, std::string_view kind, bool mayTell) {
        Counts sums{};
        for (const json& part : detail.value("parts", json::array())) {
            if (part.at("type") != "empty") {
                requireDetail(part, kind, mayTell);
                const auto metrics = part.at("metrics").get<Counts>();
                std::ranges::transform(sums, metrics, sums.begin(), std::plus());
            }
        }
        for (const json& row : detail.value("rows", json::array())) {
            requireSides(row);
            require(shows(differs(row), isOneSided(row) || mayTell),
                    "the filters hide a row that is shown", row);
            const std::size_t column = !isOneSided(row) ? 2 : row.at("edit") == "added" ? 1 : 0;
            sums.at(column) += differs(row) ? 1 : 0;
            count(kind == "group"  ? "dependencies"
                  : kind == "file" ? "fileProperties"
                                   : "graphProperties",
                  row);
        }
        require(detail.at("metrics") == sums, "metrics are the sums of rows", detail);
    }

    void requireEntry(const json& entry) {
        requireSides(entry);
        const auto kind = entry.at("kind").get<std::string_view>();
        const bool mayTell = report_.contains("telling") && kind == "file" && !isOneSided(entry);
        const std::size_t rowsBefore = rows_;
        if (const json& detail = entry.at("detail"); detail.at("type") != "empty") {
            requireDetail(detail, kind, mayTell);
            require(entry.at("metrics") == detail.at("metrics"),
                    "an entry has the metrics of its detail", entry);
        }
        const auto metrics = entry.at("metrics").get<Counts>();
        const bool isVisible = entry.at("visible").get<bool>();
        require(isVisible ==
                        shows(differs(entry) || metrics != Counts{} || entry.contains("moved"),
                              kind == "group" ? metrics[0] + metrics[1] != 0 : isOneSided(entry)) ||
                    (mayTell && isVisible && metrics != Counts{}),
                "the filters decide which entries are visible", entry);
        ++entries_[isVisible ? 1 : 0];
        if (!isVisible) {
            rows_ = rowsBefore;
        }
        count(kind == "group" ? "groups" : kind == "file" ? "files" : "graphs", entry);
        requireChildren(entry);
    }

    void requireChildren(const json& entry) {
        std::size_t firstFree = 0;  // as a position on the right
        for (const json& child : entry.at("children")) {
            require(child.at("visible").get<bool>() || !child.at("children").empty(),
                    "an entry is visible or leads to one that is", child);
            if (const json& position = child.at("position").at(1); !position.is_null()) {
                require(position >= firstFree, "entries keep the order of the right side", child);
                firstFree = position.get<std::size_t>() + 1;
            }
            requireEntry(child);
        }
    }

    void count(std::string_view what, const json& edited) {
        ++counts_[{std::string(what), edited.at("edit").get<std::string>()}];
        rows_ += what == "groups" || what == "files" || what == "graphs" ? 0 : 1;
    }

    void requireSums() {
        const json& ledger = report_.at("ledger");
        require(ledger.at("entries").at("visible") == entries_[1] &&
                    ledger.at("rows").at("visible") == rows_,
                "the ledger counts what is visible", ledger);
        const json& summary = report_.at("summary");
        if (report_.at("filters").empty()) {
            for (const auto& [what, edits] : summary.items()) {
                for (const auto& [edit, number] : edits.items()) {
                    require(number == counts_[std::pair(what, edit)],
                            fmt::format("the summary counts {} {}", edit, what), summary);
                }
            }
        }
        if (report_.contains("insights")) {
            const json& causes = report_.at("insights").at("causes");
            for (const char* edit : {"added", "removed", "changed"}) {
                require(sumOf(causes.at(edit)) == summary.at("groups").at(edit),
                        "every difference of groups has one cause", causes);
            }
        }
    }

    void requireLedger(const char* side, const char* oneSided) const {
        const json& ledger = report_.at("ledger").at(side);
        const auto number = [&](const char* name) { return ledger.at(name).get<std::size_t>(); };
        const auto leftOut = [&](const char* name) {
            return ledger.at("leftOut").at(name).get<std::size_t>();
        };
        const auto ofSide = [&](const char* what) {
            const json& counts = report_.at("summary").at(what);
            return counts.at(oneSided).get<std::size_t>() +
                   counts.at("changed").get<std::size_t>() +
                   counts.at("unchanged").get<std::size_t>();
        };
        require(number("files") + sumOf(ledger.at("otherNodes")) + leftOut("nodes") ==
                        number("nodes") &&
                    number("files") == ofSide("files"),
                "the ledger's nodes add up", ledger);
        require(number("compared") + number("folded") + number("leavingOtherNodes") +
                            leftOut("dependencies") ==
                        number("dependencies") &&
                    number("compared") == ofSide("dependencies"),
                "the ledger's dependencies add up", ledger);
    }

    const json& report_;
    bool hidesUnchanged_;
    bool hidesNonstructural_;
    std::array<std::size_t, 2> entries_{};                               // hidden, visible
    std::size_t rows_ = 0;                                               // of visible entries
    std::map<std::pair<std::string, std::string>, std::size_t> counts_;  // by what and edit
};

std::string opposite(const std::string& word) {
    static const std::pair<std::string_view, std::string_view> opposites[] = {
        {"left", "right"},     {"added", "removed"}, {"gained", "lost"},
        {"closing", "opened"}, {"up", "down"},
    };
    for (const auto& [one, other] : opposites) {
        if (word == one || word == other) {
            return std::string(word == one ? other : one);
        }
    }
    return word;
}

// What is told of the right side alone, or chosen among equals by direction.
bool isOfOneDirection(const std::string& member, const json& parent) {
    return member == "moved" || member == "examples" ||
           (member == "cycle" && parent.at("edit") == "changed") ||
           (member == "path" && parent.contains("gained")) ||
           (parent.contains("linksAll") && (member == "links" || member == "linksAll"));
}

// In an order that does not depend on the direction, and with both sides swapped if `swaps`.
json canonical(const json& value, bool swaps, const std::string& member = {}) {
    if (value.is_object()) {
        json object = json::object();
        for (const auto& [name, inner] : value.items()) {
            if (!isOfOneDirection(name, value)) {
                object[swaps && member != "otherNodes" ? opposite(name) : name] =
                    canonical(inner, swaps, name);
            }
        }
        return object;
    }
    if (value.is_array()) {
        json array = json::array();
        for (const json& inner : value) {
            array.push_back(canonical(inner, swaps));
        }
        static const std::map<std::string_view, std::size_t> pairs = {
            {"position", 0}, {"metrics", 0}, {"files", 0},  {"inside", 0},
            {"out", 0},      {"in", 0},      {"folder", 0}, {"neighbours", 1}};
        const auto pair = pairs.find(member);
        if (pair == pairs.end() || array.size() <= pair->second + 1 || array[0].is_object()) {
            std::sort(array.begin(), array.end());
        } else if (swaps) {
            std::swap(array[pair->second], array[pair->second + 1]);
        }
        return array;
    }
    return swaps && member == "edit" ? json(opposite(value.get<std::string>())) : value;
}

bool detailShowsDifference(const json& detail) {
    return std::ranges::any_of(detail.value("rows", json::array()), differs) ||
           std::ranges::any_of(detail.value("parts", json::array()), detailShowsDifference);
}

void requireUnchanged(const json& entry) {
    require(
        !differs(entry) && !entry.contains("moved") && !detailShowsDifference(entry.at("detail")),
        "a graph compared with itself is unchanged", entry);
    for (const json& child : entry.at("children")) {
        requireUnchanged(child);
    }
}

}  // namespace

void requireContract(const json& report) {
    Contract(report).requireAll();
}

void requireMirrorImage(const json& report, const json& swapped) {
    json one = canonical(report, true);
    json other = canonical(swapped, false);
    const auto renames = [](const json& of) { return !of.at("insights").at("renames").empty(); };
    if (renames(report) || renames(swapped)) {
        // How sure one is depends on how many files left a folder, not on how many came to one.
        for (json* image : {&one, &other}) {
            image->at("insights").erase("renames");
            image->at("insights").erase("causes");
        }
    }
    if (one != other) {
        require(false, "swapping the sides mirrors the report", json::diff(one, other));
    }
}

void requireNoDifference(const json& report) {
    requireUnchanged(report.at("tree"));
    const json& insights = report.at("insights");
    for (const char* cycles : {"cycles", "hardCycles"}) {
        require(insights.at(cycles).is_null() || insights.at(cycles).at("families").empty(),
                "a graph compared with itself has no other cycles", insights.at(cycles));
    }
    const json& reach = insights.at("reach");
    require(reach.is_null() || (reach.at("files").empty() && reach.at("links").empty()),
            "a graph compared with itself reaches the same", reach);
    require(insights.at("areas").at("links").empty() && insights.at("renames").empty() &&
                insights.at("others").at("added").empty() &&
                insights.at("others").at("removed").empty(),
            "a graph compared with itself has nothing to tell", insights);
}

bool showsDifference(const json& entry) {
    return (entry.at("visible").get<bool>() &&
            (differs(entry) || detailShowsDifference(entry.at("detail")))) ||
           std::ranges::any_of(entry.at("children"), showsDifference);
}

}  // namespace depcompare::test
