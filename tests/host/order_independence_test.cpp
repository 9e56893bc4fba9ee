// Reports of random graphs: the order of a file's parts does not matter, and every sum holds.
#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include <fl/i18n/locale.h>
#include <fmt/format.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <nlohmann/json.hpp>

#include "host_texts.h"

namespace depcompare {
namespace {

using nlohmann::json;
using Counts = std::array<std::uint64_t, 4>;
using Parts = std::vector<std::string>;

std::string idOf(int number) {
    return (number < 6 ? "" : "x/") + std::string(static_cast<std::size_t>(number % 3) + 1,
                                                  static_cast<char>('a' + number / 3));
}

std::string text(const char* key, const std::string& value) {
    return fmt::format("<data key='{}'>{}</data>", key, value);
}

rc::Gen<std::string> word() {
    return rc::gen::element<std::string>("", "a", "A", "&#9;b", "ab");
}

std::string nodeWith(int number) {
    return fmt::format("<node id='{}'>{}{}{}{}</node>\n", idOf(number),
                       text("type", *rc::gen::element<std::string>("file", "file", "lib")),
                       text("name", *word()), text("k\"\\", *word()), text("checksum", *word()));
}

std::string edgeAmong(int nodes) {
    return fmt::format("<edge source='{}' target='{}'>{}{}{}</edge>\n",
                       idOf(*rc::gen::inRange(0, nodes)), idOf(*rc::gen::inRange(0, nodes)),
                       text("type", *word()), text("upstream_component", *word()),
                       text("downstream_component_type", *word()));
}

Parts someParts() {
    const int nodes = *rc::gen::inRange(1, 9);
    Parts parts{text("timestamp", *rc::gen::element<std::string>("2026-01-02", "2026-01-03"))};
    for (int i = 0; i < nodes; ++i) {
        parts.push_back(nodeWith(i));
    }
    for (int left = *rc::gen::inRange(0, 20); left > 0; --left) {
        parts.push_back(edgeAmong(nodes));
    }
    return parts;
}

Parts shuffled(Parts parts) {
    for (std::size_t i = parts.size(); i > 1; --i) {
        std::swap(parts[i - 1], parts[*rc::gen::inRange<std::size_t>(0, i)]);
    }
    return parts;
}

std::string fileOf(const Parts& parts) {
    return test::graphML(fmt::format("{}", fmt::join(parts, "")));
}

bool differs(const json& edited) {
    return edited.at("edit") != "unchanged";
}

bool isOneSided(const json& edited) {
    return edited.at("edit") == "added" || edited.at("edit") == "removed";
}

void requireSides(const json& edited) {
    const bool left = !edited.at("left").is_null();
    const bool right = !edited.at("right").is_null();
    const bool holds = left && right
                           ? !isOneSided(edited)
                           : left != right && edited.at("edit") == (left ? "removed" : "added");
    RC_ASSERT(holds);
}

// A report is checked by what it says of itself: the sums of its rows, and what may be visible.
struct Contract {
    bool hidesUnchanged = false;
    bool hidesNonstructural = false;

    [[nodiscard]] bool shows(bool differs, bool isStructural) const {
        return (!hidesUnchanged || differs) && (!hidesNonstructural || isStructural);
    }

    void requireDetail(const json& detail) const {
        Counts sums{};
        for (const json& part : detail.value("parts", json::array())) {
            if (part.at("type") != "empty") {
                requireDetail(part);
                const auto metrics = part.at("metrics").get<Counts>();
                std::ranges::transform(sums, metrics, sums.begin(), std::plus());
            }
        }
        for (const json& row : detail.value("rows", json::array())) {
            requireSides(row);
            RC_ASSERT(shows(differs(row), isOneSided(row)));
            const std::size_t column = !isOneSided(row) ? 2 : row.at("edit") == "added" ? 1 : 0;
            sums.at(column) += differs(row) ? 1 : 0;
        }
        RC_ASSERT(detail.at("metrics") == sums);
    }

    void requireEntry(const json& entry) const {
        requireSides(entry);
        if (entry.at("detail").at("type") != "empty") {
            requireDetail(entry.at("detail"));
            RC_ASSERT(entry.at("metrics") == entry.at("detail").at("metrics"));
        }
        const auto metrics = entry.at("metrics").get<Counts>();
        const Counts none{};
        const bool isGroup = entry.at("kind") == "group";
        RC_ASSERT(entry.at("visible") ==
                  shows(differs(entry) || metrics != none || entry.contains("moved"),
                        isGroup ? metrics[0] + metrics[1] != 0 : isOneSided(entry)));
        for (const json& child : entry.at("children")) {
            RC_ASSERT(child.at("visible").get<bool>() || !child.at("children").empty());
            requireEntry(child);
        }
    }
};

bool detailShowsDifference(const json& detail) {
    return std::ranges::any_of(detail.value("rows", json::array()), differs) ||
           std::ranges::any_of(detail.value("parts", json::array()), detailShowsDifference);
}

// Whether an entry that is visible differs, or a row of one.
bool showsDifference(const json& entry) {
    return (entry.at("visible").get<bool>() &&
            (differs(entry) || detailShowsDifference(entry.at("detail")))) ||
           std::ranges::any_of(entry.at("children"), showsDifference);
}

RC_GTEST_PROP(OrderIndependence, shufflingNodesAndEdgesChangesNothingInAnyReport, ()) {
    const Parts left = someParts();
    const Parts right = someParts();
    const Report report = test::compare(fileOf(left), fileOf(right));
    const Report other = test::compare(fileOf(shuffled(left)), fileOf(shuffled(right)));
    RC_ASSERT(report.insights != nullptr);
    RC_ASSERT(test::jsonTextOf(other) == test::jsonTextOf(report));
    RC_ASSERT(test::textOf(other) == test::textOf(report));
    RC_ASSERT(!test::compare(fileOf(left), fileOf(shuffled(left))).summary.showsDifference);
}

// In German and Japanese the labels differ, and with them the names of some rows.
RC_GTEST_PROP(OrderIndependence, everyReportKeepsItsContractUnderEveryFilterAndLocale, ()) {
    const auto name = *rc::gen::element<std::string>("en", "de", "ja");
    fl::i18n::Locale::setGlobal(fl::i18n::Locale(name));
    const std::string left = fileOf(someParts());
    const std::string right = fileOf(someParts());
    const Selection selection{
        .ignoredComponents =
            *rc::gen::container<std::vector<std::string>>(rc::gen::element<std::string>("a", "?b")),
    };
    for (const EnabledFilters& filters : test::allFilterSettings()) {
        const Report report = test::compare(left, right, filters, {.selection = selection});
        const auto written = test::jsonOf(report);
        const auto hides = [&](const char* filter) {
            return std::ranges::count(written.at("filters"), filter) != 0;
        };
        Contract{hides("unchanged"), hides("nonstructural")}.requireEntry(written.at("tree"));
        RC_ASSERT(report.tree->showsDifference() == showsDifference(written.at("tree")));
        RC_ASSERT(written["locale"] == name);
    }
    fl::i18n::Locale::setGlobal(fl::i18n::Locale());
}

}  // namespace
}  // namespace depcompare
