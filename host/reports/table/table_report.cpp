#include "reports/table/table_report.h"

#include <array>
#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include <comparisons/edit_type.h>
#include <comparisons/side.h>
#include <comparisons/stateful_edit.h>
#include <dependency/comparisons/dependency_subcomparator.h>
#include <dependency/comparisons/graph_subcomparator.h>
#include <dependency/comparisons/item.h>
#include <dependency/comparisons/node_subcomparator.h>
#include <dependency/graph/component.h>
#include <dependency/graph/dependency.h>
#include <dependency/graph/graph.h>
#include <dependency/graph/node.h>

#include "draft/marked_id.h"
#include "presentation/detail_edits.h"
#include "presentation/entry_label.h"
#include "presentation/presented_tree.h"
#include "presentation/shown_names.h"
#include "presentation/shown_rows.h"

namespace depcompare {

namespace {

using ::comparisons::BySide;
using ::comparisons::EditType;
using ::comparisons::Side;
using ::comparisons::sides;
using dependency::comparisons::DependencyEdit;
using dependency::comparisons::GraphPropertyEdit;
using dependency::comparisons::Item;
using dependency::comparisons::ItemEdit;
using dependency::comparisons::NodePropertyEdit;
using dependency::comparisons::ParallelDependencies;
using dependency::graph::Component;
using dependency::graph::Dependency;
using dependency::graph::Graph;
using dependency::graph::Node;
using Match = PresentedTree::Match;
using Text = std::u16string;

/// What differs, with its value on each side.
struct Attribute {
    Text name;
    BySide<Text> values;
};

/// What the lines of an entry or a row have in common.
struct Line {
    std::string_view kind;
    EditType edit = EditType::unchanged;
    Text upstream = {};
    Text downstream = {};
    Text dependencyType = {};
    Text upstreamComponent = {};
    Text downstreamComponent = {};
};

Text wide(std::string_view ascii) {
    return {ascii.begin(), ascii.end()};
}

template <class Value>
const Value& newestSide(const ::comparisons::StatefulEdit<std::optional<Value>, 2>& edit) {
    const auto& right = edit[Side::right];
    return right ? *right : edit[Side::left].value();
}

/// Keeps of the attributes of both sides those that differ.
class Differences {
  public:
    void add(Text name, Text left, Text right) {
        if (left != right) {
            attributes_.push_back(
                {.name = std::move(name), .values = {std::move(left), std::move(right)}});
        }
    }

    void add(const Text& prefix, const Node& left, const Node& right) {
        add(prefix + u"name", left.getName(), right.getName());
        add(prefix + u"type", left.getType()->getID(), right.getType()->getID());
    }

    void add(const Text& name, const Component& left, const Component& right) {
        add(name, left.getName(), right.getName());
        add(name + u"_type", left.getType()->getID(), right.getType()->getID());
    }

    [[nodiscard]] std::vector<Attribute> take() { return std::move(attributes_); }

  private:
    std::vector<Attribute> attributes_;
};

std::vector<Attribute> differencesOf(const ItemEdit& edit) {
    Differences differences;
    if (hasBothSides(edit)) {
        const Item& left = *edit[Side::left];
        const Item& right = *edit[Side::right];
        if (const auto* file = std::get_if<std::shared_ptr<Node>>(&left)) {
            differences.add(u"", **file, *std::get<std::shared_ptr<Node>>(right));
        } else if (const auto* group = std::get_if<ParallelDependencies>(&left)) {
            const auto& other = std::get<ParallelDependencies>(right);
            differences.add(u"upstream_", *group->upstream, *other.upstream);
            differences.add(u"downstream_", *group->downstream, *other.downstream);
        }
    }
    return differences.take();
}

std::vector<Attribute> differencesOf(const DependencyEdit& edit) {
    Differences differences;
    if (hasBothSides(edit)) {
        const Dependency& left = **edit[Side::left];
        const Dependency& right = **edit[Side::right];
        differences.add(u"upstream_component", *left.getUpstreamComponent(),
                        *right.getUpstreamComponent());
        differences.add(u"downstream_component", *left.getDownstreamComponent(),
                        *right.getDownstreamComponent());
    }
    return differences.take();
}

/// Reads the properties of an item by the names that rows show.
class PropertyReader {
  public:
    /// Key and value.
    using Properties = std::map<Text, std::pair<Text, Text>>;

    Properties operator()(const std::shared_ptr<const Graph>& graph) {
        return read(*graph, shownNameOfGraphProperty);
    }
    Properties operator()(const std::shared_ptr<Node>& file) {
        return read(*file, [&](const Text& key) -> const Text& {
            const auto [name, isNew] = names_.try_emplace(key);
            if (isNew) {
                name->second = shownNameOfFileProperty(key);
            }
            return name->second;
        });
    }
    Properties operator()(const ParallelDependencies& /*group*/) { return {}; }

  private:
    template <class Owner, class NameOf>
    static Properties read(const Owner& owner, const NameOf& nameOf) {
        Properties properties;
        for (const Text& key : owner.getPropertyKeys()) {
            // Of several keys with one name, rows show the last.
            properties[nameOf(key)] = {key, owner.getProperty(key)};
        }
        return properties;
    }

    std::map<Text, Text> names_;  // of keys of files
};

class TableReport {
  public:
    TableReport(const PresentedTree& tree, const TableForm& form, Output& output)
        : tree_(tree), table_(output, form) {}

    void write() {
        table_.row({u"kind", u"edit", u"upstream", u"downstream", u"dependency_type",
                    u"upstream_component", u"downstream_component", u"property", u"old", u"new"});
        for (const auto& entry : tree_.entries()) {
            if (entry.visible != 0) {
                writeEntry(entry.match);
                writeRows(entry.match);
            }
        }
    }

    // What the lines of an entry begin with, by the kind of item.
    void operator()(const std::shared_ptr<const Graph>& /*graph*/) {}
    void operator()(const std::shared_ptr<Node>& file) { line_.upstream = idAsRead(file->getID()); }
    void operator()(const ParallelDependencies& group) {
        line_.upstream = idAsRead(group.upstream->getID());
        line_.downstream = idAsRead(group.downstream->getID());
    }

  private:
    void writeEntry(Match match) {
        const ItemEdit& edit = tree_.compared(match).edit;
        line_ = {.kind = nameOf(kindOf(anySide(edit))), .edit = match->getEditTypes().front()};
        std::visit(*this, newestSide(edit));
        if (line_.edit != EditType::unchanged) {
            writeLines(differencesOf(edit));
        }
    }

    void writeRows(Match match) {
        const auto metrics = tree_.metrics(match);
        if (!metrics || metrics->areZero()) {
            return;
        }
        const auto& entry = tree_.compared(match);
        for (const Side side : sides) {
            const auto& item = entry.edit[side];
            properties_[side] = item ? std::visit(reader_, *item) : PropertyReader::Properties();
        }
        const std::vector<bool> shown = shownRows(tree_, match);
        std::size_t next = 0;
        forEachEdit(entry.detail.get(), [&](const auto& row) {
            line_.edit = ::comparisons::editType(row);
            if (shown[next++] && line_.edit != EditType::unchanged) {
                writeRow(row);
            }
        });
    }

    void writeRow(const DependencyEdit& row) {
        const Dependency& dependency = *newestSide(row);
        line_.kind = "dependency";
        line_.dependencyType = dependency.getType()->getID();
        line_.upstreamComponent = dependency.getUpstreamComponent()->getName();
        line_.downstreamComponent = dependency.getDownstreamComponent()->getName();
        writeLines(differencesOf(row));
    }
    void writeRow(const GraphPropertyEdit& row) {
        line_.kind = "graph_property";
        writeLine(propertyNamed(anySide(row).name));
    }
    void writeRow(const NodePropertyEdit& row) {
        line_.kind = "file_property";
        writeLine(propertyNamed(anySide(row).name));
    }

    [[nodiscard]] Attribute propertyNamed(const Text& name) const {
        Attribute attribute;
        for (const Side side : sides) {
            const auto& properties = properties_[side];
            if (const auto found = properties.find(name); found != properties.end()) {
                attribute.name = found->second.first;
                attribute.values[side] = found->second.second;
            }
        }
        return attribute;
    }

    void writeLines(const std::vector<Attribute>& attributes) {
        if (attributes.empty()) {
            writeLine({});
        }
        for (const Attribute& attribute : attributes) {
            writeLine(attribute);
        }
    }

    void writeLine(const Attribute& attribute) {
        table_.row({wide(line_.kind), wide(nameOf(line_.edit)), line_.upstream, line_.downstream,
                    line_.dependencyType, line_.upstreamComponent, line_.downstreamComponent,
                    attribute.name, attribute.values[Side::left], attribute.values[Side::right]});
    }

    const PresentedTree& tree_;
    TableWriter table_;
    Line line_;
    PropertyReader reader_;
    BySide<PropertyReader::Properties> properties_;  // of the entry
};

}  // namespace

void writeTableReport(const Report& report, const TableForm& form, Output& output) {
    TableReport(*report.tree, form, output).write();
}

}  // namespace depcompare
