#include <dependency/comparisons/graph_subcomparator.h>

#include <fl/i18n/date_time.h>
#include <fl/i18n/message_catalog.h>

#include "subcomparators/detail_comparisons.h"
#include "subcomparators/property_pairing.h"

namespace dependency::comparisons {

using ::comparisons::ComparisonValue;
using ::comparisons::Side;

namespace {

// The displayed name decides, not the key: a key "timestamp" that has a message is an ordinary
// property, and any key whose message is "timestamp" stands for the analysis time.
constexpr std::u16string_view analysisTimeName = u"timestamp";

GraphProperty analysisTime(const graph::Graph& graph) {
    return {.name = fl::i18n::MessageCatalog::get_message(
                fl::i18n::MessageID("ORBITA:dependency:comparisons", "AnalysisTimestamp"),
                fl::i18n::Locale::global()),
            .value =
                fl::i18n::date_time::to_ustring(getTimeStamp(graph), fl::i18n::DateFormat::medium)};
}

std::vector<GraphProperty> collectGraphProperties(const std::shared_ptr<const graph::Graph>& graph,
                                                  DisplayedNames& names) {
    std::vector<GraphProperty> rows;
    for (const auto& key : graph->getPropertyKeys()) {
        const std::u16string& name = names[key];
        rows.push_back(name == analysisTimeName
                           ? analysisTime(*graph)
                           : GraphProperty{.name = name, .value = graph->getProperty(key)});
    }
    return rows;
}

const std::shared_ptr<const graph::Graph>& graphOf(const ItemEdit& edit, Side side) {
    return std::get<std::shared_ptr<const graph::Graph>>(edit[side].value());
}

}  // namespace

const std::string& get_type(const GraphPropertyComparison& /*comparison*/) {
    static const std::string type = "graph_property_comparison";
    return type;
}

bool operator<(const GraphPropertyEdit& a, const GraphPropertyEdit& b) {
    return anySide(a).name < anySide(b).name;
}

GraphSubcomparator::~GraphSubcomparator() = default;

bool GraphSubcomparator::canCompare(const ItemEdit& edit) const {
    return std::holds_alternative<std::shared_ptr<const graph::Graph>>(anySide(edit));
}

std::future<ComparisonValue> GraphSubcomparator::compare(const ItemEdit& edit) {
    auto names = DisplayedNames::ofGraphs();
    return ::comparisons::readyFuture(compareGraphProperties(edit, names));
}

GraphPropertyComparison compareGraphProperties(const ItemEdit& edit, DisplayedNames& names) {
    const auto& left = graphOf(edit, Side::left);
    const auto& right = graphOf(edit, Side::right);
    auto rows = collectGraphProperties(left, names);
    return pairByName(std::move(rows), collectGraphProperties(right, names));
}

}  // namespace dependency::comparisons
