// What a file says counts, and not the order in which it says it.
#include <algorithm>
#include <string>
#include <vector>

#include <fmt/format.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <nlohmann/json.hpp>

#include "host_texts.h"
#include "json_faults.h"

namespace depcompare {
namespace {

using Parts = std::vector<std::string>;

std::string idOf(int number) {
    return std::string(static_cast<std::size_t>(number % 3) + 1,
                       static_cast<char>('a' + number / 3));
}

std::string text(const char* key, const std::string& value) {
    return fmt::format("<data key='{}'>{}</data>", key, value);
}

rc::Gen<std::string> word() {
    return rc::gen::element<std::string>("", "a", "A", "b", "ab");
}

rc::Gen<std::string> nodeWith(int number) {
    return rc::gen::map(
        rc::gen::tuple(rc::gen::element<std::string>("file", "file", "lib"), word(), word()),
        [number](const std::tuple<std::string, std::string, std::string>& texts) {
            const auto& [type, name, value] = texts;
            return fmt::format("<node id='{}'>{}{}{}</node>\n", idOf(number), text("type", type),
                               text("name", name), text("k", value));
        });
}

rc::Gen<std::string> edgeAmong(int nodes) {
    return rc::gen::map(
        rc::gen::tuple(rc::gen::inRange(0, nodes), rc::gen::inRange(0, nodes), word(), word(),
                       word()),
        [](const std::tuple<int, int, std::string, std::string, std::string>& edge) {
            const auto& [source, target, type, component, componentType] = edge;
            return fmt::format("<edge source='{}' target='{}'>{}{}{}</edge>\n", idOf(source),
                               idOf(target), text("type", type),
                               text("upstream_component", component),
                               text("downstream_component_type", componentType));
        });
}

Parts someParts() {
    const int nodes = *rc::gen::inRange(1, 9);
    Parts parts;
    for (int i = 0; i < nodes; ++i) {
        parts.push_back(*nodeWith(i));
    }
    for (const auto& edge : *rc::gen::container<Parts>(edgeAmong(nodes))) {
        parts.push_back(edge);
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
    RC_ASSERT(test::jsonTextOf(other) == test::jsonTextOf(report));
    RC_ASSERT(test::textOf(other) == test::textOf(report));
}

RC_GTEST_PROP(OrderIndependence, everyReportKeepsItsContractUnderEveryFilterSetting, ()) {
    const std::string left = fileOf(someParts());
    const std::string right = fileOf(someParts());
    for (const EnabledFilters& filters : test::allFilterSettings()) {
        const Report report = test::compare(left, right, filters);
        const auto written = test::jsonOf(report);
        RC_ASSERT(test::faultsOf(written) == std::vector<std::string>());
        RC_ASSERT(report.tree->showsDifference() == test::showsDifference(written["tree"]));
    }
}

RC_GTEST_PROP(OrderIndependence, aShuffledFileEqualsItself, ()) {
    const Parts parts = someParts();
    const Report report = test::compare(fileOf(parts), fileOf(shuffled(parts)));
    RC_ASSERT(!report.summary.showsDifference);
    RC_ASSERT(!report.tree->showsDifference());
}

}  // namespace
}  // namespace depcompare
