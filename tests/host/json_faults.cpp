#include "json_faults.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include <nlohmann/json.hpp>

namespace depcompare::test {

namespace {

using nlohmann::json;

using Counts = std::array<std::uint64_t, 4>;

bool differs(const json& edited) {
    return edited.at("edit") != "unchanged";
}

bool isOneSided(const json& edited) {
    return edited.at("edit") == "added" || edited.at("edit") == "removed";
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
        checkEntry(report_.at("tree"), true, "/tree");
        return std::move(faults_);
    }

  private:
    void expect(bool holds, const std::string& what) {
        if (!holds) {
            faults_.push_back(what);
        }
    }

    void checkEntry(const json& entry, bool isRoot, const std::string& place) {
        checkSides(entry, place);
        const json& detail = entry.at("detail");
        checkDetail(detail, place);
        expect(detail.at("type") == "empty" || entry.at("metrics") == detail.at("metrics"),
               place + " metrics");
        expect(entry.at("visible") == staysVisible(entry), place + " visible");
        expect(entry.at("visible").get<bool>() || isRoot || !entry.at("children").empty(),
               place + " should be left out");
        std::size_t index = 0;
        for (const json& child : entry.at("children")) {
            checkEntry(child, false, place + "/" + std::to_string(index++));
        }
    }

    void checkSides(const json& edited, const std::string& place) {
        const bool left = !edited.at("left").is_null();
        const bool right = !edited.at("right").is_null();
        expect(left && right ? !isOneSided(edited)
                             : edited.at("edit") == (left ? "removed" : "added") && left != right,
               place + " edit");
    }

    void checkDetail(const json& detail, const std::string& place) {
        if (detail.at("type") == "empty") {
            return;
        }
        Counts metrics{};
        const json parts = detail.value("parts", json::array());
        for (const json& part : parts) {
            checkDetail(part, place);
            for (std::size_t i = 0; part.contains("metrics") && i < metrics.size(); ++i) {
                metrics.at(i) += part.at("metrics").at(i).get<std::uint64_t>();
            }
        }
        const json listed = detail.value("rows", json::array());
        for (const json& row : listed) {
            checkSides(row, place);
            expect((!unchangedIsHidden_ || differs(row)) &&
                       (!nonstructuralIsHidden_ || isOneSided(row)),
                   place + " row that should be hidden");
            metrics[0] += row.at("edit") == "removed" ? 1U : 0U;
            metrics[1] += row.at("edit") == "added" ? 1U : 0U;
            metrics[2] += row.at("edit") == "changed" ? 1U : 0U;
        }
        expect(detail.at("metrics") == metrics, place + " sum of metrics");
    }

    [[nodiscard]] bool staysVisible(const json& entry) const {
        const auto metrics = entry.at("metrics").get<Counts>();
        const bool structural =
            entry.at("kind") == "group" ? metrics[0] + metrics[1] != 0 : isOneSided(entry);
        const bool unlike = differs(entry) || metrics != Counts{} || entry.contains("moved");
        return (!unchangedIsHidden_ || unlike) && (!nonstructuralIsHidden_ || structural);
    }

    const json& report_;
    bool unchangedIsHidden_ = false;
    bool nonstructuralIsHidden_ = false;
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
