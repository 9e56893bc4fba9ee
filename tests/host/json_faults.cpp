#include "json_faults.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <set>

#include <nlohmann/json.hpp>

namespace depcompare::test {

namespace {

using nlohmann::json;

using Counts = std::array<std::uint64_t, 4>;

bool isOneOf(const json& value, std::initializer_list<const char*> names) {
    return std::find(names.begin(), names.end(), value) != names.end();
}

bool differs(const json& edited) {
    return edited.at("edit") != "unchanged";
}

std::uint64_t total(const json& counts) {
    std::uint64_t sum = 0;
    for (const char* edit : {"added", "removed", "changed", "unchanged"}) {
        sum += counts.at(edit).get<std::uint64_t>();
    }
    return sum;
}

// Every digit a 0.
std::string shapeOf(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c >= '1' && c <= '9'; }, '0');
    return text;
}

class Checker {
  public:
    explicit Checker(const json& report) : report_(report) {
        for (const json& filter : report.at("filters")) {
            unchangedIsHidden_ |= filter == "unchanged";
            nonstructuralIsHidden_ |= filter == "nonstructural";
        }
    }

    std::vector<std::string> run() {
        expect(report_.at("format") == "depcompare-report" && report_.at("version") == 1, "format");
        expect(report_.at("locale").is_string(), "locale");
        for (const char* side : {"left", "right"}) {
            checkInput(report_.at(side), report_.at("ledger").at(side), side);
        }
        checkEntry(report_.at("tree"), json(), "/tree");
        checkLedger(report_.at("ledger"));
        return std::move(faults_);
    }

  private:
    void expect(bool holds, const std::string& what) {
        if (!holds) {
            faults_.push_back(what);
        }
    }

    void checkInput(const json& input, const json& ledger, const std::string& side) {
        expect(input.at("source").is_string(), side + " source");
        const json& analysisTime = input.at("analysisTime");
        expect(analysisTime.is_null() || shapeOf(analysisTime) == "0000-00-00T00:00:00",
               side + " analysisTime");
        auto nodes = ledger.at("files").get<std::uint64_t>();
        for (const json& count : ledger.at("otherNodes")) {
            nodes += count.get<std::uint64_t>();
        }
        expect(nodes == input.at("nodes") && nodes == ledger.at("nodes"), side + " nodes");
        expect(ledger.at("files") == input.at("files"), side + " files");
        std::uint64_t dependencies = 0;
        for (const char* part : {"compared", "folded", "leavingOtherNodes"}) {
            dependencies += ledger.at(part).get<std::uint64_t>();
        }
        expect(
            dependencies == input.at("dependencies") && dependencies == ledger.at("dependencies"),
            side + " dependencies");
    }

    void checkEntry(const json& entry, const json& parent, const std::string& place) {
        const auto at = [&](const char* what) { return place + " " + what; };
        expect(isOneOf(entry.at("kind"), {"graph", "file", "group"}), at("kind"));
        checkSides(entry, place);
        for (std::size_t side = 0; side < 2; ++side) {
            const json& end = entry.at(side == 0 ? "left" : "right");
            expect(entry.at("position").at(side).is_null() == (parent.is_null() || end.is_null()),
                   at("position"));
            checkEnd(end, entry.at("kind"), at("end"));
        }
        const json& detail = entry.at("detail");
        expect(entry.at("metrics") == metricsOf(detail), at("metrics"));
        const std::uint64_t rows = checkDetail(detail, at("detail"));
        expect(entry.at("visible") == staysVisible(entry), at("visible"));
        if (entry.at("visible").get<bool>()) {
            ++visibleEntries_;
            visibleRows_ += rows;
        } else {
            expect(parent.is_null() || !entry.at("children").empty(), at("should be left out"));
        }
        checkPositions(entry.at("children"), place);
        std::size_t index = 0;
        for (const json& child : entry.at("children")) {
            checkEntry(child, entry, place + "/" + std::to_string(index++));
        }
    }

    // Hidden entries count, so that only together with them the positions are complete.
    void checkPositions(const json& children, const std::string& place) {
        for (std::size_t side = 0; side < 2; ++side) {
            std::vector<std::size_t> positions;
            for (const json& child : children) {
                if (const json& position = child.at("position").at(side); !position.is_null()) {
                    positions.push_back(position.get<std::size_t>());
                }
            }
            expect(side == 0 || std::is_sorted(positions.begin(), positions.end()),
                   place + " order of children");
            const std::set<std::size_t> different(positions.begin(), positions.end());
            expect(different.size() == positions.size(), place + " positions");
            expect(!report_.at("filters").empty() || different.empty() ||
                       *different.rbegin() + 1 == different.size(),
                   place + " last position");
        }
    }

    void checkEnd(const json& end, const std::string& kind, const std::string& place) {
        static const std::map<std::string, std::vector<const char*>> members{
            {"graph", {}},
            {"file", {"id", "name", "type"}},
            {"group", {"upstream", "downstream", "downstreamName", "downstreamType"}}};
        if (end.is_null()) {
            return;
        }
        expect(end.size() == members.at(kind).size(), place);
        for (const char* member : members.at(kind)) {
            expect(end.at(member).is_string(), place);
        }
    }

    void checkSides(const json& edited, const std::string& place) {
        const bool left = !edited.at("left").is_null();
        const bool right = !edited.at("right").is_null();
        const json& edit = edited.at("edit");
        expect(left && right ? isOneOf(edit, {"changed", "unchanged"})
                             : edit == (left ? "removed" : "added") && left != right,
               place + " edit");
    }

    /// Returns: how many rows there are.
    std::uint64_t checkDetail(const json& detail, const std::string& place) {
        const json& type = detail.at("type");
        if (type == "combined") {
            Counts sum{};
            std::uint64_t rows = 0;
            for (const json& part : detail.at("parts")) {
                rows += checkDetail(part, place);
                for (std::size_t i = 0; i < sum.size(); ++i) {
                    sum.at(i) += metricsOf(part).at(i).get<std::uint64_t>();
                }
            }
            expect(detail.at("metrics") == sum, place + " sum of metrics");
            return rows;
        }
        if (type == "empty") {
            return 0;
        }
        expect(type == "parameter", place + " type");
        const json& columns = detail.at("columns");
        expect(columns.size() == 2 && columns[0].is_string() && columns[1].is_string(), place);
        Counts metrics{};
        for (const json& row : detail.at("rows")) {
            checkRow(row, place);
            metrics[0] += row.at("edit") == "removed" ? 1U : 0U;
            metrics[1] += row.at("edit") == "added" ? 1U : 0U;
            metrics[2] += row.at("edit") == "changed" ? 1U : 0U;
        }
        expect(detail.at("metrics") == metrics, place + " metrics");
        return detail.at("rows").size();
    }

    void checkRow(const json& row, const std::string& place) {
        checkSides(row, place);
        for (const char* side : {"left", "right"}) {
            const json& shown = row.at(side);
            expect(shown.is_null() || (shown.size() == 2 && shown.at("name").is_string() &&
                                       shown.at("value").is_string()),
                   place + " row");
        }
        expect(!unchangedIsHidden_ || differs(row), place + " unchanged row");
        expect(!nonstructuralIsHidden_ || isOneOf(row.at("edit"), {"added", "removed"}),
               place + " non-structural row");
    }

    static json metricsOf(const json& detail) {
        return detail.at("type") == "empty" ? json(Counts{}) : detail.at("metrics");
    }

    [[nodiscard]] bool staysVisible(const json& entry) const {
        const auto metrics = entry.at("metrics").get<Counts>();
        const bool structural = entry.at("kind") == "group"
                                    ? metrics[0] + metrics[1] != 0
                                    : isOneOf(entry.at("edit"), {"added", "removed"});
        const bool unlike = differs(entry) || metrics != Counts{} || entry.contains("moved");
        return (!unchangedIsHidden_ || unlike) && (!nonstructuralIsHidden_ || structural);
    }

    void checkLedger(const json& ledger) {
        std::uint64_t entries = 1;
        std::uint64_t rows = 0;
        const json& summary = report_.at("summary");
        for (const auto& [kind, counts] : summary.items()) {
            (kind == "files" || kind == "groups" ? entries : rows) += total(counts);
        }
        expect(ledger.at("filters").size() == report_.at("filters").size(), "filters");
        checkSum(ledger, "entries", entries, visibleEntries_);
        checkSum(ledger, "rows", rows, visibleRows_);
    }

    void checkSum(const json& ledger, const char* what, std::uint64_t all, std::uint64_t visible) {
        expect(ledger.at(what).at("all") == all, std::string("all ") + what);
        expect(ledger.at(what).at("visible") == visible, std::string("visible ") + what);
        for (const json& filter : ledger.at("filters")) {
            visible += filter.at(what).get<std::uint64_t>();
        }
        expect(visible == all, std::string("sum of ") + what);
    }

    const json& report_;
    bool unchangedIsHidden_ = false;
    bool nonstructuralIsHidden_ = false;
    std::uint64_t visibleEntries_ = 0;
    std::uint64_t visibleRows_ = 0;
    std::vector<std::string> faults_;
};

bool detailShowsDifference(const json& detail) {
    const json& parts = detail.value("parts", json::array());
    const json& rows = detail.value("rows", json::array());
    return std::any_of(rows.begin(), rows.end(), differs) ||
           std::any_of(parts.begin(), parts.end(), detailShowsDifference);
}

}  // namespace

std::vector<std::string> faultsOf(const json& report) {
    try {
        return Checker(report).run();
    } catch (const json::exception& error) {
        return {error.what()};
    }
}

bool showsDifference(const json& entry) {
    const json& children = entry.at("children");
    return (entry.at("visible").get<bool>() &&
            (differs(entry) || detailShowsDifference(entry.at("detail")))) ||
           std::any_of(children.begin(), children.end(), showsDifference);
}

}  // namespace depcompare::test
