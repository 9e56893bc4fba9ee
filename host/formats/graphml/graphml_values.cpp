#include "formats/graphml/graphml_values.h"

#include <fmt/format.h>

#include "input/input_error.h"

namespace depcompare {

namespace {

using Meaning = GraphMLKey::Meaning;

std::string trimmed(std::string_view text) {
    constexpr std::string_view space = " \t\r\n";
    const std::size_t first = text.find_first_not_of(space);
    return first == std::string_view::npos
               ? std::string()
               : std::string(text.substr(first, text.find_last_not_of(space) - first + 1));
}

GraphMLKey keyFor(GraphMLCarrier carrier, std::string_view name, std::string_view graphics) {
    if (graphics.empty()) {
        return graphMLKey(carrier, name);
    }
    GraphMLKey key;
    if (carrier == GraphMLCarrier::node && graphics == "nodegraphics") {
        key.meaning = Meaning::nodeLabel;
    } else if (carrier == GraphMLCarrier::edge && graphics == "edgegraphics") {
        key.meaning = Meaning::edgeLabel;
    }
    return key;
}

}  // namespace

void GraphMLValues::startKey(const XmlAttributes& attributes) {
    const std::string_view id = attributes.find("id").value_or("");
    const auto name = attributes.find("attr.name");
    // Keys for another tool's graphics have no name, but an attribute of that tool.
    const auto graphics = name ? std::nullopt : attributes.find("yfiles.type");
    declared_ = {.id = std::string(id),
                 .carriers = graphMLCarriers(attributes.find("for")),
                 .name = std::string(name.value_or(id)),
                 .graphics = std::string(graphics.value_or(""))};
}

void GraphMLValues::endKey() {
    for (const GraphMLCarrier carrier : declared_.carriers) {
        const GraphMLKey key = keyFor(carrier, declared_.name, declared_.graphics);
        if (!keys_.declare(carrier, declared_.id, key)) {
            sink_.fail(fmt::format("key {} is declared twice or after its first use",
                                   inQuotes(declared_.id)));
        }
        if (declared_.defaultValue) {
            line_ = declared_.defaultLine;
            setDefault(key, *declared_.defaultValue);
        }
    }
    line_ = 0;
}

void GraphMLValues::startDefault(std::size_t line) {
    startValue(nullptr, line);
}

void GraphMLValues::endDefault() {
    if (!holdsElements_) {
        declared_.defaultValue = text_;
        declared_.defaultLine = line_;
    }
    line_ = 0;
}

void GraphMLValues::startData(GraphMLCarrier carrier, std::string_view key,
                              const XmlParser& parser) {
    const GraphMLKey& found = keys_.find(carrier, key);
    // Asking for the line of every value would slow the reading down.
    startValue(&found, found.meaning == Meaning::graphProperty ? parser.line() : 0);
}

void GraphMLValues::startValue(const GraphMLKey* key, std::size_t line) {
    text_.clear();
    key_ = key;
    line_ = line;
    depth_ = 0;
    labelDepth_ = 0;
    holdsElements_ = false;
}

bool GraphMLValues::isGraphics() const {
    return key_ != nullptr &&
           (key_->meaning == Meaning::nodeLabel || key_->meaning == Meaning::edgeLabel);
}

void GraphMLValues::startElement(std::string_view name) {
    ++depth_;
    holdsElements_ = true;
    // A group has several labels, of which one is shown at a time; the first one counts.
    if (isGraphics() && text_.empty() && labelDepth_ == 0 &&
        (name == "NodeLabel" || name == "EdgeLabel")) {
        labelDepth_ = depth_;
    }
}

void GraphMLValues::endElement() {
    if (labelDepth_ == depth_) {
        labelDepth_ = 0;
        text_ = trimmed(text_);
    }
    --depth_;
}

void GraphMLValues::text(std::string_view part) {
    if (depth_ != labelDepth_ || (isGraphics() && depth_ == 0)) {
        return;
    }
    if (text_.size() + part.size() > limits_.textBytes) {
        sink_.fail(tooLongText(limits_));
    }
    text_ += part;
}

void GraphMLValues::endData(std::size_t number) {
    // igraph for Python writes this if a vertex lacks a text.
    const bool isAbsent = isIgraph_ && text_ == "None";
    if (holdsElements_ == isGraphics() && !isAbsent) {
        put(*key_, number);
    }
    line_ = 0;
}

void GraphMLValues::endNode(NodeNumber node) {
    for (auto* candidate : {&igraphID_, &igraphName_}) {
        if (*candidate) {
            sink_.addIdCandidate(node, **candidate);
        }
        candidate->reset();
    }
}

void GraphMLValues::put(const GraphMLKey& key, std::size_t number) {
    const auto node = static_cast<NodeNumber>(number);
    switch (key.meaning) {
        case Meaning::ignored:
            break;
        case Meaning::graphProperty:
            sink_.setGraphProperty(key.property, text_);
            break;
        case Meaning::nodeProperty:
            if (isIgraph_ && key.property == "id") {
                igraphID_ = text_;
            } else {
                countKey(key.property);
                sink_.setProperty(node, key.property, text_);
            }
            break;
        case Meaning::nodeName:
            sink_.setName(node, text_);
            if (isIgraph_) {
                igraphName_ = text_;
            }
            break;
        case Meaning::nodeType:
            sink_.setType(node, text_);
            break;
        case Meaning::nodeLabel:
            if (!text_.empty()) {
                sink_.setName(node, text_);
                sink_.addIdCandidate(node, text_);
            }
            break;
        case Meaning::edgeColumn:
            sink_.set(number, key.column, text_);
            break;
        case Meaning::edgeLabel:
            if (!text_.empty()) {
                sink_.set(number, EdgeColumn::type, text_);
            }
            break;
    }
}

// A file states the name of a key once, but every node that has the key has a copy of it.
void GraphMLValues::countKey(std::string_view name) {
    constexpr std::size_t usualBytes = 256;
    constexpr std::uint64_t mostBytes = 64U << 20U;
    longKeyBytes_ += name.size() > usualBytes ? name.size() : 0;
    if (longKeyBytes_ > mostBytes) {
        sink_.fail(
            fmt::format("keys with names of more than {} bytes are out of proportion to the "
                        "file's size",
                        usualBytes));
    }
}

void GraphMLValues::setDefault(const GraphMLKey& key, const std::string& value) {
    switch (key.meaning) {
        case Meaning::ignored:
        case Meaning::nodeLabel:
        case Meaning::edgeLabel:
            break;
        case Meaning::graphProperty:
            sink_.setDefaultGraphProperty(key.property, value);
            break;
        case Meaning::nodeProperty:
            sink_.setDefaultProperty(key.property, value);
            break;
        case Meaning::nodeName:
            sink_.setDefaultName(value);
            break;
        case Meaning::nodeType:
            sink_.setDefaultType(value);
            break;
        case Meaning::edgeColumn:
            sink_.setDefault(key.column, value);
            break;
    }
}

}  // namespace depcompare
