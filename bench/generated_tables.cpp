#include "generated_tables.h"

#include "generated_text.h"

namespace depcompare::bench {

void writeFileTable(const GeneratedPair& pair, std::size_t side, std::ostream& out) {
    for (const std::uint32_t file : pair.sides[side].files) {
        const std::string id = fileID(file);
        out << id << '\t' << fileName(id) << "\tfile";
        for (std::size_t i = 0; i < propertyKeys.size(); ++i) {
            out << '\t' << propertyValue(file, i, isChanged(pair, side, file, i));
        }
        out << '\n';
    }
}

void writeDependencyTable(const GeneratedPair& pair, std::size_t side, std::ostream& out) {
    for (const Link& link : pair.sides[side].links) {
        out << fileID(link.upstream) << '\t' << fileID(link.downstream) << '\t'
            << dependencyTypes[link.type] << '\t'
            << componentName(link.upstream, link.upstreamComponent) << '\t'
            << componentType(link.upstreamComponent) << '\t'
            << componentName(link.downstream, link.downstreamComponent) << '\t'
            << componentType(link.downstreamComponent) << '\n';
    }
}

}  // namespace depcompare::bench
