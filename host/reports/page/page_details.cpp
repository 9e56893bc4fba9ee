#include "reports/page/page_details.h"

#include <optional>
#include <string_view>
#include <variant>

#include <comparisons/side.h>
#include <fmt/format.h>

#include "output/json_writer.h"

namespace depcompare {

namespace {

using ::comparisons::Side;
using dependency::comparisons::Item;
using dependency::comparisons::ItemEdit;
using dependency::comparisons::ParallelDependencies;
using dependency::graph::Graph;
using dependency::graph::Node;
using Row = ::comparisons::viewmodel::parameter::tessel::Entry;

constexpr std::size_t blockSize = 1U << 18U;

bool lookAlike(const Node& one, const Node& other) {
    return one.getName() == other.getName() && *one.getType() == *other.getType() &&
           one.getType()->getName() == other.getType()->getName();
}

bool lookAlike(const Item& left, const Item& right) {
    if (const auto* group = std::get_if<ParallelDependencies>(&left)) {
        const auto& other = std::get<ParallelDependencies>(right);
        return lookAlike(*group->upstream, *other.upstream) &&
               lookAlike(*group->downstream, *other.downstream);
    }
    if (const auto* file = std::get_if<std::shared_ptr<Node>>(&left)) {
        return lookAlike(**file, *std::get<std::shared_ptr<Node>>(right));
    }
    return true;
}

class EntryWriter {
  public:
    explicit EntryWriter(Output& output) : json_(output) {}

    void write(const ItemEdit& edit, const SwitchedDetail& detail) {
        json_.beginArray();
        writeEnds(edit);
        json_.beginArray();
        for (const SwitchedTable& table : detail.tables) {
            writeTable(table);
        }
        json_.endArray();
        json_.endArray();
    }

    // The ends of one side.
    void operator()(const std::shared_ptr<const Graph>& /*graph*/) {}
    void operator()(const std::shared_ptr<Node>& file) { writeNode(*file); }
    void operator()(const ParallelDependencies& group) {
        writeNode(*group.upstream);
        writeNode(*group.downstream);
    }

  private:
    // Nearly always both sides agree, and the page's columns have their names and types.
    void writeEnds(const ItemEdit& edit) {
        const auto& left = edit[Side::left];
        const auto& right = edit[Side::right];
        if (!left || !right || lookAlike(*left, *right)) {
            json_.null();
            return;
        }
        json_.beginArray();
        for (const auto* item : {&*left, &*right}) {
            json_.beginArray();
            std::visit(*this, *item);
            json_.endArray();
        }
        json_.endArray();
    }

    void writeNode(const Node& node) {
        json_.beginArray();
        json_.text(node.getName());
        json_.text(node.getType()->getName());
        json_.endArray();
    }

    void writeTable(const SwitchedTable& table) {
        json_.beginArray();
        for (const std::u16string& label : table.table->getViewOptions()->getColumnLabels()) {
            json_.text(label);
        }
        json_.beginArray();
        std::size_t next = 0;
        for (const Row& row : table.table->getEntries()) {
            writeRow(row, table.choices[next++]);
        }
        json_.endArray();
        json_.endArray();
    }

    void writeRow(const Row& row, Choices choices) {
        json_.beginArray();
        json_.number(static_cast<unsigned>(row->getEditTypes()[0]));
        json_.number(choices);
        for (const auto& side : row->getParameters()) {
            const auto& parameter = side->getParameter();
            if (!parameter) {
                json_.null();
                continue;
            }
            json_.beginArray();
            json_.text(parameter->getName());
            json_.text(parameter->getValue());
            json_.endArray();
        }
        json_.endArray();
    }

    JsonWriter json_;
};

}  // namespace

void writePacked(std::string_view name, PackedBytes& bytes, Output& output) {
    const auto packed = bytes.take();
    output.print("<script type=\"application/octet-stream\" id=\"data-{}\" data-packing=\"{}\">",
                 name, packed.packing == PackedBytes::Packing::plain ? "plain" : "deflate");
    output.write(packed.letters);
    output.write("</script>\n");
}

void PageDetails::add(std::size_t entry) {
    if (!block_) {
        block_ = std::make_unique<PackedBytes>();
        firstEntries_.push_back(entry);
    }
    Output output(*block_);
    output.write(block_->size() == 0 ? "[" : ",");
    const auto match = trees_.unfiltered().entries()[entry].match;
    EntryWriter(output).write(trees_.unfiltered().compared(match).edit, trees_.detail(entry));
    output.flush();
    if (block_->size() >= blockSize) {
        finish();
    }
}

void PageDetails::finish() {
    if (block_) {
        block_->write("]");
        writePacked(fmt::format("block-{}", firstEntries_.size() - 1), *block_, output_);
        block_.reset();
    }
}

}  // namespace depcompare
