#include "formats/dot/dot_labels.h"

#include <algorithm>

#include "formats/xml_parser.h"
#include "input/input.h"
#include "input/input_error.h"

namespace depcompare {

namespace {

class HtmlText final : public XmlEvents {
  public:
    void start(std::string_view element, const XmlAttributes& /*attributes*/) override {
        if (element == "BR" || element == "br") {
            text_ += ' ';
        }
    }
    void end() override {}
    void text(std::string_view part) override { text_ += part; }

    std::string text_;
};

std::string_view withoutBraces(std::string_view label) {
    if (label.size() >= 2 && label.front() == '{' && label.back() == '}') {
        label = label.substr(1, label.size() - 2);
    }
    return label;
}

}  // namespace

std::string labelText(std::string_view label, std::string_view id) {
    label = withoutBraces(label);
    std::string text;
    for (std::size_t i = 0; i < label.size(); ++i) {
        if (label[i] != '\\' || i + 1 == label.size()) {
            text += label[i];
            continue;
        }
        const char escaped = label[++i];
        if (escaped == 'N') {
            text += id;
        } else if (escaped == 'n') {
            text += ' ';
        } else if (escaped != 'l' && escaped != 'r') {
            text += escaped;
        }
    }
    return text;
}

std::string htmlLabelText(std::string_view label) {
    HtmlText events;
    try {
        Input input = Input::fromText("label", std::string("<x>").append(label) + "</x>");
        XmlParser().parse(input, events);
    } catch (const InputError&) {
        return std::string(label);
    }
    return events.text_;
}

std::string_view portName(std::string_view port) {
    constexpr std::string_view compass[] = {"n", "ne", "e", "se", "s", "sw", "w", "nw", "c", "_"};
    const std::string_view name = port.substr(0, port.find(':'));
    return std::ranges::find(compass, name) == std::end(compass) ? name : std::string_view();
}

}  // namespace depcompare
