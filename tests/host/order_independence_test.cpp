// Reports of random graphs: the order of a file's parts does not matter, and every sum holds.
#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <sstream>
#include <string>
#include <string_view>
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

using Pairs = std::vector<std::pair<std::string, std::string>>;

// A node, a dependency or what is said of the graph as a whole.
struct Part {
    std::string element;  // none for the whole
    Pairs attributes;
    Pairs data;
};
using Parts = std::vector<Part>;

std::string idOf(int number) {
    return (number < 6 ? "" : "x/") + std::string(static_cast<std::size_t>(number % 3) + 1,
                                                  static_cast<char>('a' + number / 3));
}

rc::Gen<std::string> word() {
    return rc::gen::element<std::string>("", "a", "A", "&#9;b", "ab");
}

Part nodeWith(int number) {
    return {"node",
            {{"id", idOf(number)}},
            {{"type", *rc::gen::element<std::string>("file", "file", "lib")},
             {"name", *word()},
             {"k\"\\", *word()},
             {"checksum", *word()}}};
}

Part edgeAmong(int nodes) {
    return {"edge",
            {{"source", idOf(*rc::gen::inRange(0, nodes))},
             {"target", idOf(*rc::gen::inRange(0, nodes))}},
            {{"type", *word()},
             {"upstream_component", *word()},
             {"downstream_component_type", *word()}}};
}

Parts someParts() {
    const int nodes = *rc::gen::inRange(1, 9);
    Parts parts{
        {{},
         {},
         {{"timestamp", *rc::gen::element<std::string>("2026-01-02", "2026-01-03")}, {"z", "z"}}}};
    for (int i = 0; i < nodes; ++i) {
        parts.push_back(nodeWith(i));
    }
    for (int left = *rc::gen::inRange(0, 20); left > 0; --left) {
        parts.push_back(edgeAmong(nodes));
    }
    return parts;
}

template <class T>
void shuffle(std::vector<T>& list) {
    for (std::size_t i = list.size(); i > 1; --i) {
        std::swap(list[i - 1], list[*rc::gen::inRange<std::size_t>(0, i)]);
    }
}

Parts shuffled(Parts parts) {
    shuffle(parts);
    for (Part& part : parts) {
        shuffle(part.attributes);
        shuffle(part.data);
    }
    return parts;
}

std::string fileOf(const Parts& parts) {
    std::string text;
    for (const Part& part : parts) {
        std::string attributes;
        for (const auto& [name, value] : part.attributes) {
            attributes += fmt::format(" {}='{}'", name, value);
        }
        std::string data;
        for (const auto& [key, value] : part.data) {
            data += fmt::format("<data key='{}'>{}</data>", key, value);
        }
        text += part.element.empty()
                    ? data
                    : fmt::format("<{0}{1}>{2}</{0}>\n", part.element, attributes, data);
    }
    return test::graphML(text);
}

std::string dotOf(const Parts& parts) {
    std::ostringstream text;
    text << "digraph {";
    for (const Part& part : parts) {
        text << (part.element.empty() ? "graph" : "");
        for (const char* const name : {"id", "source", "target"}) {
            const auto found = std::ranges::find(part.attributes, name, &Pairs::value_type::first);
            if (found != part.attributes.end()) {
                text << (name == std::string_view("target") ? "->" : "")
                     << std::quoted(found->second);
            }
        }
        text << '[';
        for (const auto& [key, value] : part.data) {
            text << std::quoted(key) << '=' << std::quoted(value) << ',';
        }
        text << "]\n";
    }
    text << '}';
    return text.str();
}

RC_GTEST_PROP(OrderIndependence, shufflingPartsAndWhatTheySayChangesNothingInAnyReport, ()) {
    const Parts left = someParts();
    const Parts right = someParts();
    const Parts otherLeft = shuffled(left);
    const Parts otherRight = shuffled(right);
    for (const auto& write : {fileOf, dotOf}) {
        const Report report = test::compare(write(left), write(right));
        const Report other = test::compare(write(otherLeft), write(otherRight));
        RC_ASSERT(report.insights != nullptr);
        RC_ASSERT(test::jsonTextOf(other) == test::jsonTextOf(report));
        RC_ASSERT(test::textOf(other) == test::textOf(report));
        RC_ASSERT(!test::compare(write(left), write(otherLeft)).summary.showsDifference);
    }
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
