#include "presentation/ledger_text.h"

#include <array>
#include <vector>

#include <fl/i18n/ustring.h>
#include <fmt/format.h>
#include <fmt/ranges.h>

#include "output/visible_text.h"
#include "presentation/counts_table.h"

namespace depcompare {

namespace {

using fl::i18n::ustring_to_utf8;
using fl::i18n::utf8_to_ustring;

class Ending {
  public:
    Ending(const TextStyle& style, Output& output) : style_(style), output_(output) {}

    void writeHidden(const Visibility& visibility) {
        std::vector<std::string> parts;
        for (const HiddenByFilter& hidden : visibility.hidden) {
            if (const std::string what = whatIsHidden(hidden); !what.empty()) {
                parts.push_back(
                    fmt::format("Hidden by the {} filter: {}", titleOf(hidden.filter), what));
            }
        }
        if (parts.empty()) {
            return;
        }
        parts.back() += "; show with --no-filter";
        for (const std::string& part : parts) {
            writeBroken(part, 0);
        }
        output_.write("\n");
    }

    void writeSides(const std::array<SideLedger, 2>& sides) {
        constexpr std::array<std::string_view, 2> names{"Left ", "Right"};
        for (std::size_t side = 0; side < sides.size(); ++side) {
            const std::string nodes = fmt::format("{}  {};", names[side], nodesOf(sides[side]));
            const std::string dependencies = dependenciesOf(sides[side]);
            if (nodes.size() + 1 + dependencies.size() <= columns()) {
                output_.print("{} {}\n", nodes, dependencies);
            } else {
                writeBroken(nodes, 0);
                writeBroken(dependencies, indent);
            }
            for (const std::string& warning : sides[side].warnings) {
                writeBroken("Warning: " + visible(warning), indent);
            }
        }
        output_.write("\n");
    }

  private:
    static std::string whatIsHidden(const HiddenByFilter& hidden) {
        std::vector<std::string> parts;
        add(parts, hidden.entries.graphs, "the graph", "graphs");
        add(parts, hidden.entries.files, "1 file", "files");
        add(parts, hidden.entries.groups, "1 group", "groups");
        add(parts, hidden.rows, "1 row", "rows");
        return fmt::format("{}", fmt::join(parts, ", "));
    }

    static void add(std::vector<std::string>& parts, std::size_t count, std::string_view one,
                    std::string_view several) {
        if (count != 0) {
            parts.push_back(count == 1 ? std::string(one) : fmt::format("{} {}", count, several));
        }
    }

    static std::string nodesOf(const SideLedger& side) {
        std::vector<std::string> parts{counted(side.files, "file", "files")};
        for (const auto& [type, count] : side.otherNodes) {
            parts.push_back(fmt::format("{} {}", count, visible(ustring_to_utf8(type))));
        }
        return fmt::format("{}: {}", counted(side.nodes, "node", "nodes"), fmt::join(parts, ", "));
    }

    static std::string dependenciesOf(const SideLedger& side) {
        std::vector<std::string> parts{fmt::format("{} compared", side.compared)};
        if (side.folded != 0) {
            parts.push_back(fmt::format("{} folded into an equal one", side.folded));
        }
        if (side.leavingOthers != 0) {
            parts.push_back(fmt::format("{} of nodes that are no files", side.leavingOthers));
        }
        return fmt::format("{}: {}", counted(side.dependencies, "dependency", "dependencies"),
                           fmt::join(parts, ", "));
    }

    [[nodiscard]] std::size_t columns() const {
        return style_.columns.value_or(columnsWithoutTerminal);
    }

    void writeBroken(const std::string& text, std::size_t firstIndent) {
        constexpr std::size_t fewest = 20;
        const auto lines =
            broken(utf8_to_ustring(text), std::max(columns(), fewest + indent) - indent);
        for (const std::u16string& line : lines) {
            const std::size_t end = line.find_last_not_of(u' ') + 1;
            output_.print("{:{}}{}\n", "", &line == lines.data() ? firstIndent : indent,
                          ustring_to_utf8(std::u16string_view(line).substr(0, end)));
        }
    }

    static constexpr std::size_t indent = 7;  // behind the name of a side

    const TextStyle& style_;
    Output& output_;
};

}  // namespace

void writeEnding(const Report& report, const TextStyle& style, Output& output) {
    Ending ending(style, output);
    ending.writeHidden(report.ledger.visibility);
    ending.writeSides(report.ledger.sides);
    writeCounts(report.summary, output);
}

std::string counted(std::size_t count, std::string_view one, std::string_view several) {
    return fmt::format("{} {}", count, count == 1 ? one : several);
}

}  // namespace depcompare
