#include "host_texts.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <sstream>
#include <utility>
#include <variant>

#include <boost/date_time/posix_time/posix_time.hpp>

#include <depcompare/messages/messages.h>
#include <fl/i18n/ustring.h>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "cli/command_line.h"
#include "draft/marked_id.h"
#include "formats/load_graphs.h"
#include "input/input.h"
#include "input/input_error.h"
#include "reports/json/json_report.h"

namespace depcompare::test {

namespace {

using dependency::graph::Component;
using dependency::graph::Dependency;
using dependency::graph::Node;
using fl::i18n::ustring_to_utf8;

std::string endOf(const Node& node, const Component& component) {
    std::string text = ustring_to_utf8(idAsRead(node.getID()));
    if (!component.getName().empty()) {
        text += "/" + ustring_to_utf8(component.getName());
    }
    if (!component.getType()->getID().empty()) {
        text += ":" + ustring_to_utf8(component.getType()->getID());
    }
    return text;
}

std::string lineOf(const Node& node) {
    std::string line =
        fmt::format("{} \"{}\" [{}]", ustring_to_utf8(idAsRead(node.getID())),
                    ustring_to_utf8(node.getName()), ustring_to_utf8(node.getType()->getID()));
    for (const auto& key : node.getPropertyKeys()) {
        line += fmt::format(" {}={}", ustring_to_utf8(key), ustring_to_utf8(node.getProperty(key)));
    }
    return line + "\n";
}

std::string lineOf(const Dependency& dependency) {
    return fmt::format("{} {} -> {} [{}]\n", ustring_to_utf8(dependency.getID()),
                       endOf(*dependency.getUpstreamNode(), *dependency.getUpstreamComponent()),
                       endOf(*dependency.getDownstreamNode(), *dependency.getDownstreamComponent()),
                       ustring_to_utf8(dependency.getType()->getID()));
}

}  // namespace

std::string graphML(std::string_view contentOfGraph) {
    return fmt::format(
        "<graphml xmlns='http://graphml.graphdrawing.org/xmlns'><graph edgedefault='directed'>\n"
        "{}</graph></graphml>\n",
        contentOfGraph);
}

std::string graphOf(std::string_view parts) {
    std::string content;
    std::istringstream all{std::string(parts)};
    for (std::string part; std::getline(all, part, ';');) {
        std::istringstream words(part);
        std::string what;
        words >> what;
        std::string data;
        for (std::string word; words >> word;) {
            const std::size_t end = word.find('=');
            std::ranges::replace(word.begin() + static_cast<std::ptrdiff_t>(end), word.end(), '_',
                                 ' ');
            data +=
                fmt::format("<data key='{}'>{}</data>", word.substr(0, end), word.substr(end + 1));
        }
        const std::size_t arrow = what.find('>');
        content += what == "@" ? data
                   : arrow == what.npos
                       ? fmt::format("<node id='{}'>{}</node>", what, data)
                       : fmt::format("<edge source='{}' target='{}'>{}</edge>",
                                     what.substr(0, arrow), what.substr(arrow + 1), data);
    }
    return graphML(content);
}

Options optionsOf(const std::string& words) {
    std::istringstream text("depcompare " + words);
    const std::vector<std::string> list{std::istream_iterator<std::string>(text), {}};
    std::vector<const char*> pointers;
    std::ranges::transform(list, std::back_inserter(pointers), &std::string::c_str);
    return std::get<Options>(parseCommandLine(static_cast<int>(pointers.size()), pointers.data()));
}

LoadedGraph load(const std::string& file, const ReadOptions& options) {
    return loadGraph(Input::fromText("in", file, options.limits), options, [](auto) {});
}

std::array<LoadedGraph, 2> loadPair(const std::string& left, const std::string& right,
                                    const ReadOptions& options) {
    return loadGraphs({Input::fromText("old", left, options.limits),
                       Input::fromText("new", right, options.limits)},
                      options, [](auto) {});
}

std::string textOf(const LoadedGraph& loaded) {
    const auto& graph = *loaded.graph;
    std::string text;
    for (const auto& key : graph.getPropertyKeys()) {
        text +=
            fmt::format("{}={}\n", ustring_to_utf8(key), ustring_to_utf8(graph.getProperty(key)));
    }
    if (const auto time = getTimeStamp(graph); !time.is_not_a_date_time()) {
        text += fmt::format("@ {} {}\n", to_iso_extended_string(time.date()),
                            to_simple_string(time.time_of_day()));
    }
    std::string dependencies;
    for (const auto& node : graph.getNodes()) {
        text += lineOf(*node);
        for (const auto& dependency : graph.getDownstreamDependencies(node)) {
            dependencies += lineOf(*dependency);
        }
    }
    return text + dependencies;
}

std::string read(const std::string& file, const ReadOptions& options) {
    try {
        return textOf(load(file, options));
    } catch (const InputError& error) {
        return error.what();
    }
}

Report compare(const std::string& left, const std::string& right, const EnabledFilters& filters,
               const ReadOptions& options) {
    messages::registerMessages();
    return makeReport(loadPair(left, right, options), {"old", "new"}, filters);
}

std::vector<EnabledFilters> allFilterSettings() {
    return {{},
            filtersNamed({"nonstructural"}),
            filtersNamed({"unchanged"}),
            filtersNamed({"nonstructural", "unchanged"})};
}

std::string jsonTextOf(const Report& report) {
    return written([&](Output& output) { writeJsonReport(report, output); });
}

nlohmann::json jsonOf(const Report& report) {
    return nlohmann::json::parse(jsonTextOf(report));
}

std::string textOf(const Report& report, const TextStyle& style) {
    return written([&](Output& output) { writeTextReport(report, style, output); });
}

}  // namespace depcompare::test
