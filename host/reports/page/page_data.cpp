#include "reports/page/page_data.h"

#include <array>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include <comparisons/side.h>
#include <fl/i18n/locale.h>
#include <fl/i18n/ustring.h>
#include <fmt/format.h>

#include "output/json_writer.h"
#include "presentation/account_json.h"
#include "presentation/insights_json.h"
#include "presentation/switched_trees.h"
#include "reports/page/packed_bytes.h"
#include "reports/page/page_details.h"

namespace depcompare {

namespace {

using ::comparisons::Side;
using dependency::comparisons::Item;
using dependency::comparisons::ItemEdit;
using dependency::comparisons::ParallelDependencies;
using dependency::graph::Graph;
using dependency::graph::Node;
using Match = PresentedTree::Match;

/// Texts one after the other, with a column of their lengths in UTF-16 units.
struct TextColumn {
    PackedBytes letters;
    PackedBytes lengths;

    void add(std::u16string_view text) {
        letters.write(fl::i18n::ustring_to_utf8(text));
        lengths.addNumber(text.size());
    }
};

/// The nodes of all entries by number: files in the order of the tree, then others.
class NodeTable {
  public:
    /// Returns: its number. Its name and type are those of the first occurrence.
    std::size_t add(const Node& node) {
        const auto [place, isNew] = numbers_.try_emplace(idOf(node), numbers_.size());
        if (isNew) {
            const std::u16string name = node.getName();
            ids_.add(place->first);
            names_.add(name == place->first ? std::u16string_view() : name);
            types_.addNumber(typeNumber(node));
        }
        return place->second;
    }

    void write(Output& output) {
        writePacked("ids", ids_.letters, output);
        writePacked("id-lengths", ids_.lengths, output);
        writePacked("names", names_.letters, output);
        writePacked("name-lengths", names_.lengths, output);
        writePacked("types", types_, output);
    }

    [[nodiscard]] std::size_t size() const { return numbers_.size(); }
    [[nodiscard]] const std::vector<std::u16string>& typeNames() const { return typeNames_; }

  private:
    std::size_t typeNumber(const Node& node) {
        const auto type = node.getType();
        const auto [place, isNew] = typeNumbers_.try_emplace(type->getID(), typeNames_.size());
        if (isNew) {
            typeNames_.push_back(type->getName());
        }
        return place->second;
    }

    std::map<std::u16string_view, std::size_t> numbers_;  // views the graphs' own IDs
    std::map<std::u16string, std::size_t> typeNumbers_;
    std::vector<std::u16string> typeNames_;
    TextColumn ids_;
    TextColumn names_;
    PackedBytes types_;
};

const Item& newestSide(const ItemEdit& edit) {
    const auto& right = edit[Side::right];
    return right ? *right : *edit[Side::left];
}

/// The columns of the tree: those of entries, of files and of groups.
class EntryColumns {
  public:
    explicit EntryColumns(const SwitchedTrees& trees) : trees_(trees) {
        // Files have the first numbers, so that a file's place is its node's number.
        for (const auto& entry : tree().entries()) {
            if (const auto* file = std::get_if<std::shared_ptr<Node>>(
                    &newestSide(tree().compared(entry.match).edit))) {
                nodes_.add(**file);
                ++files_;
            }
        }
        for (std::size_t i = 0; i < tree().entries().size(); ++i) {
            add(i);
        }
        endFile();
    }

    void write(Output& output) {
        writePacked("entries", codes_, output);
        writePacked("changes", changes_, output);
        writePacked("group-counts", groupCounts_, output);
        writePacked("targets", targets_, output);
        nodes_.write(output);
    }

    void writeSizes(JsonWriter& json) const {
        json.member("files", files_);
        json.member("groups", groups_);
        json.member("nodes", nodes_.size());
        json.key("types");
        json.beginArray();
        for (const std::u16string& name : nodes_.typeNames()) {
            json.text(name);
        }
        json.endArray();
    }

    // What an item adds to the columns of files and groups.
    void operator()(const std::shared_ptr<const Graph>& /*graph*/) {}
    void operator()(const std::shared_ptr<Node>& /*file*/) {
        endFile();
        inFile_ = true;
    }
    void operator()(const ParallelDependencies& group) {
        ++groupsOfFile_;
        ++groups_;
        targets_.addNumber(nodes_.add(*group.downstream));
    }

  private:
    [[nodiscard]] const PresentedTree& tree() const { return trees_.unfiltered(); }

    void add(std::size_t index) {
        const Match match = tree().entries()[index].match;
        const auto metrics = tree().metrics(match).value_or(::comparisons::DiffMetrics<2>());
        const auto edit = match->getEditTypes().front();
        codes_.addByte(static_cast<unsigned>(edit) | (PresentedTree::isMoved(match) ? 4U : 0U) |
                       (tree().changedWithoutRow(match) ? 8U : 0U) |
                       static_cast<unsigned>(trees_.choicesThatShow(index)) << 4U);
        for (const std::uint32_t count : {metrics.rightOnly, metrics.leftOnly, metrics.changed}) {
            changes_.addNumber(count);
        }
        std::visit(*this, newestSide(tree().compared(match).edit));
    }

    void endFile() {
        if (inFile_) {
            groupCounts_.addNumber(groupsOfFile_);
        }
        groupsOfFile_ = 0;
    }

    const SwitchedTrees& trees_;
    NodeTable nodes_;
    std::size_t files_ = 0;
    std::size_t groups_ = 0;
    std::size_t groupsOfFile_ = 0;
    bool inFile_ = false;
    PackedBytes codes_;
    PackedBytes changes_;
    PackedBytes groupCounts_;
    PackedBytes targets_;
};

void writeChoice(const PresentedTree& tree, JsonWriter& json) {
    const Visibility visibility = tree.visibility();
    json.beginObject();
    json.key("hidden");
    json.beginArray();
    for (const HiddenByFilter& hidden : visibility.hidden) {
        json.beginObject();
        json.member("filter", titleOf(hidden.filter));
        json.member("graphs", hidden.differingEntries.graphs);
        json.member("files", hidden.differingEntries.files);
        json.member("groups", hidden.differingEntries.groups);
        json.member("rows", hidden.differingRows);
        json.endObject();
    }
    json.endArray();
    json.key("differs");
    json.boolean(tree.showsDifference());
    json.endObject();
}

/// Writes per entry with telling edits its place, and of each edit both values.
void writeTellingValues(const PresentedTree& tree, JsonWriter& json) {
    const auto writeSide = [&](const auto& property) {
        if (property) {
            json.text(property->value);
        } else {
            json.null();
        }
    };
    json.beginArray();
    for (std::size_t place = 0; place < tree.entries().size(); ++place) {
        const auto edits = tree.tellingEdits(tree.entries()[place].match);
        if (edits.empty()) {
            continue;
        }
        json.beginArray();
        json.number(place);
        json.beginArray();
        for (const auto& edit : edits) {
            json.beginArray();
            writeSide(edit[Side::left]);
            writeSide(edit[Side::right]);
            json.endArray();
        }
        json.endArray();
        json.endArray();
    }
    json.endArray();
}

void writeHead(const Report& report, const SwitchedTrees& trees, const EntryColumns& entries,
               const std::vector<std::size_t>& blocks, JsonWriter& json) {
    json.beginObject();
    json.member("version", std::uint64_t{1});
    json.member("locale", fl::i18n::Locale::global().name());
    writeAccount(report, json);
    json.key("filters");
    json.beginArray();
    for (const Filters& filter : allFilters()) {
        json.beginObject();
        json.member("name", nameOf(filter));
        json.member("title", titleOf(filter));
        json.member("hides", hiddenThingsOf(filter));
        json.endObject();
    }
    json.endArray();
    json.key("choices");
    json.beginArray();
    for (const auto& tree : trees.trees()) {
        writeChoice(*tree, json);
    }
    json.endArray();
    json.member("choice", placeOfChoice(report.tree->filters()));
    entries.writeSizes(json);
    json.key("blocks");
    json.beginArray();
    for (const std::size_t first : blocks) {
        json.number(first);
    }
    json.endArray();
    json.key("renamed");
    json.beginArray();
    for (const auto& [newID, oldID] : report.inputs[0].oldIDs) {
        json.beginArray();
        json.text(newID);
        json.text(oldID);
        json.endArray();
    }
    json.endArray();
    json.key("tellingValues");
    writeTellingValues(trees.unfiltered(), json);
    json.endObject();
}

void writeJson(std::string_view name, Output& output,
               const std::function<void(JsonWriter&)>& write) {
    PackedBytes packed;
    Output packing(packed);
    JsonWriter json(packing);
    write(json);
    packing.flush();
    writePacked(name, packed, output);
}

}  // namespace

void writePageData(const Report& report, Output& output) {
    const SwitchedTrees trees(report.comparison, *report.tree);
    PageDetails details(trees, output);
    for (std::size_t entry = 0; entry < trees.unfiltered().entries().size(); ++entry) {
        details.add(entry);
    }
    details.finish();
    EntryColumns entries(trees);
    entries.write(output);
    writeJson("head", output, [&](JsonWriter& json) {
        writeHead(report, trees, entries, details.firstEntries(), json);
    });
    if (report.insights) {
        writeJson("insights", output,
                  [&](JsonWriter& json) { writeInsights(*report.insights, json); });
    }
}

}  // namespace depcompare
