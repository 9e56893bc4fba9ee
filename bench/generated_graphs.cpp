#include "generated_graphs.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <dependency/graph/graph_builder.h>
#include <boost/date_time/posix_time/posix_time.hpp>

#include "generated_text.h"

namespace depcompare::bench {

namespace {

using dependency::graph::GraphBuilder;

constexpr std::array<std::string_view, 2> timeStamps{"2024-03-01T08:30:00", "2024-09-15T17:05:00"};
constexpr std::string_view project = "generated";

std::u16string wide(std::string_view ascii) {
    return {ascii.begin(), ascii.end()};
}

// The position of each link among all links in content order. Component numbers order as their
// names do.
std::vector<std::size_t> contentRanks(const GeneratedPair& pair, std::size_t side) {
    std::vector<std::uint32_t> files(pair.changedProperty.size());
    std::iota(files.begin(), files.end(), 0U);
    std::vector<std::string> ids(files.size());
    std::ranges::transform(files, ids.begin(), fileID);
    std::ranges::sort(files, {},
                      [&](std::uint32_t file) -> const std::string& { return ids[file]; });
    std::vector<std::uint32_t> rankOfFile(files.size());
    for (std::uint32_t rank = 0; rank < files.size(); ++rank) {
        rankOfFile[files[rank]] = rank;
    }

    const std::vector<Link>& links = pair.sides[side].links;
    std::vector<std::size_t> order(links.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::sort(order, {}, [&](std::size_t at) {
        const Link& link = links[at];
        return std::tuple(link.type, rankOfFile[link.upstream], rankOfFile[link.downstream],
                          link.upstreamComponent, link.downstreamComponent);
    });
    std::vector<std::size_t> ranks(links.size());
    for (std::size_t rank = 0; rank < order.size(); ++rank) {
        ranks[order[rank]] = rank;
    }
    return ranks;
}

std::u16string dependencyID(std::size_t rank, std::size_t width) {
    const std::string digits = std::to_string(rank);
    return std::u16string(width - digits.size(), u'0') + wide(digits);
}

std::vector<std::shared_ptr<dependency::graph::Node>> addNodes(const GeneratedPair& pair,
                                                               std::size_t side,
                                                               GraphBuilder& builder) {
    std::vector<std::shared_ptr<dependency::graph::Node>> nodes(pair.changedProperty.size());
    for (const std::uint32_t file : pair.sides[side].files) {
        std::vector<dependency::graph::Property> properties;
        for (std::size_t i = 0; i < propertyKeys.size(); ++i) {
            properties.emplace_back(wide(propertyKeys[i]),
                                    wide(propertyValue(file, i, isChanged(pair, side, file, i))));
        }
        const std::string id = fileID(file);
        nodes[file] = builder.addNode(wide(id), wide(fileName(id)), dependency::graph::Type::FILE(),
                                      std::move(properties));
    }
    return nodes;
}

void writeData(std::ostream& out, std::string_view key, std::string_view value) {
    out << "  <data key=\"" << key << "\">" << value << "</data>\n";
}

void writeKey(std::ostream& out, std::string_view kind, std::string_view id,
              std::string_view name) {
    out << "<key id=\"" << id << "\" for=\"" << kind << "\" attr.name=\"" << name
        << "\" attr.type=\"string\"/>\n";
}

std::string propertyKeyID(std::size_t property) {
    static_assert(propertyKeys.size() <= 10);
    return {'p', static_cast<char>('0' + property)};
}

void writeKeys(std::ostream& out) {
    writeKey(out, "graph", "g0", "project");
    writeKey(out, "graph", "g1", "timestamp");
    writeKey(out, "node", "n", "name");
    writeKey(out, "node", "t", "type");
    for (std::size_t i = 0; i < propertyKeys.size(); ++i) {
        writeKey(out, "node", propertyKeyID(i), propertyKeys[i]);
    }
    writeKey(out, "edge", "e", "type");
    writeKey(out, "edge", "uc", "upstream_component");
    writeKey(out, "edge", "ut", "upstream_component_type");
    writeKey(out, "edge", "dc", "downstream_component");
    writeKey(out, "edge", "dt", "downstream_component_type");
}

void writeNode(std::ostream& out, const GeneratedPair& pair, std::size_t side, std::uint32_t file) {
    const std::string id = fileID(file);
    out << "<node id=\"" << id << "\">\n";
    writeData(out, "n", fileName(id));
    writeData(out, "t", "file");
    for (std::size_t i = 0; i < propertyKeys.size(); ++i) {
        writeData(out, propertyKeyID(i), propertyValue(file, i, isChanged(pair, side, file, i)));
    }
    out << "</node>\n";
}

void writeEdge(std::ostream& out, const Link& link) {
    out << "<edge source=\"" << fileID(link.upstream) << "\" target=\"" << fileID(link.downstream)
        << "\">\n";
    writeData(out, "e", dependencyTypes[link.type]);
    writeData(out, "uc", componentName(link.upstream, link.upstreamComponent));
    writeData(out, "ut", componentType(link.upstreamComponent));
    writeData(out, "dc", componentName(link.downstream, link.downstreamComponent));
    writeData(out, "dt", componentType(link.downstreamComponent));
    out << "</edge>\n";
}

}  // namespace

std::shared_ptr<const dependency::graph::Graph> makeGraph(const GeneratedPair& pair,
                                                          std::size_t side) {
    GraphBuilder builder;
    builder.setProperty(u"project", wide(project));
    builder.setProperty(u"timestamp", wide(timeStamps[side]));
    builder.setTimeStamp(
        boost::posix_time::from_iso_extended_string(std::string(timeStamps[side])));
    const auto nodes = addNodes(pair, side, builder);

    const std::vector<Link>& links = pair.sides[side].links;
    const std::vector<std::size_t> ranks = contentRanks(pair, side);
    const std::size_t width = std::to_string(links.size()).size();
    const auto component = [&](std::uint32_t file, std::uint8_t number) {
        const std::u16string type = wide(componentType(number));
        return builder.component(wide(componentName(file, number)), builder.type(type, type));
    };
    for (std::size_t i = 0; i < links.size(); ++i) {
        const Link& link = links[i];
        const std::u16string type = wide(dependencyTypes[link.type]);
        builder.addDependency(dependencyID(ranks[i], width), nodes[link.upstream],
                              nodes[link.downstream], builder.type(type, type),
                              component(link.upstream, link.upstreamComponent),
                              component(link.downstream, link.downstreamComponent));
    }
    return builder.finish();
}

void writeGraphML(const GeneratedPair& pair, std::size_t side, std::ostream& out) {
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<graphml xmlns=\"http://graphml.graphdrawing.org/xmlns\">\n";
    writeKeys(out);
    out << "<graph edgedefault=\"directed\">\n";
    writeData(out, "g0", project);
    writeData(out, "g1", timeStamps[side]);
    for (const std::uint32_t file : pair.sides[side].files) {
        writeNode(out, pair, side, file);
    }
    for (const Link& link : pair.sides[side].links) {
        writeEdge(out, link);
    }
    out << "</graph>\n</graphml>\n";
}

}  // namespace depcompare::bench
