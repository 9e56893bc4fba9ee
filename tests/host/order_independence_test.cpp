// Reports of random graphs: the order of a file's parts does not matter, and every sum holds.
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include <fl/i18n/locale.h>
#include <fmt/format.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <nlohmann/json.hpp>

#include "host_texts.h"
#include "report_contract.h"

namespace depcompare {
namespace {

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
        test::requireContract(written);
        RC_ASSERT(report.tree->showsDifference() == test::showsDifference(written.at("tree")));
        RC_ASSERT(written["locale"] == name);
    }
    fl::i18n::Locale::setGlobal(fl::i18n::Locale());
}

// Members and elements of all its parts are in the opposite order.
nlohmann::ordered_json backwards(const nlohmann::ordered_json& value) {
    if (!value.is_structured()) {
        return value;
    }
    auto result =
        value.is_object() ? nlohmann::ordered_json::object() : nlohmann::ordered_json::array();
    for (auto part = value.rbegin(); part != value.rend(); ++part) {
        if (value.is_object()) {
            result[part.key()] = backwards(*part);
        } else {
            result.push_back(backwards(*part));
        }
    }
    return result;
}

TEST(OrderIndependence, jsonOfAnyFormatIsReadInAnyOrder) {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(FUZZ_CORPUS)) {
        if (entry.path().extension() != ".json") {
            continue;
        }
        std::ifstream file(entry.path());
        const auto document = nlohmann::ordered_json::parse(file, nullptr, false);
        if (!document.is_discarded()) {
            EXPECT_EQ(test::read(backwards(document).dump()), test::read(document.dump()))
                << entry.path();
        }
    }
}

}  // namespace
}  // namespace depcompare
