#include "reports/text/text_lines.h"

#include <algorithm>
#include <utility>

#include <fl/i18n/ustring.h>

#include "output/visible_text.h"
#include "reports/text/row_layout.h"

namespace depcompare {

namespace {

using ::comparisons::EditType;
using fl::i18n::ustring_to_utf8;

constexpr std::size_t gap = 2;
constexpr std::size_t signColumns = 2;
constexpr std::size_t indentBelow = 4;
constexpr std::u16string_view dependencyArrow = u" -> ";
constexpr std::u16string_view besideName = u"  ";

char16_t signOf(const Look& look) {
    return static_cast<char16_t>(look.sign);
}

bool isEmpty(const TextRow& row) {
    return row.name.empty() && row.value.empty();
}

std::size_t widestName(const TextTable& table, std::size_t most) {
    std::size_t widest = 0;
    for (const TextRow& row : table.rows) {
        if (!row.value.empty()) {
            widest = std::max(widest, displayWidth(row.name.text()));
        }
    }
    return std::min(widest, most);
}

}  // namespace

TextLines::TextLines(const TextStyle& style, std::size_t leftColumns, Output& output)
    : style_(style), output_(output), leftColumns_(std::min(leftColumns, columns() / 2)) {}

void TextLines::entry(std::size_t depth, std::optional<EditType> edit, const EntryLabel& label) {
    finishLine();
    const std::size_t indent = depth * 2;
    const std::size_t before = indent + (edit ? signColumns : 0);
    std::u16string text = label.text;
    if (style_.columns) {
        const std::size_t room = depth == 0 ? *style_.columns : leftColumns_;
        const std::size_t taken = before + displayWidth(label.note);
        constexpr std::size_t fewest = 16;
        text = shortened(text, std::max(room - std::min(room, taken), fewest));
    }
    text += label.note;
    output_.print("{:{}}", "", indent);
    if (edit) {
        const Look look = lookOf(*edit);
        writeColoured(look.colour, std::u16string{signOf(look), u' '} + text);
    } else {
        writeColoured(boldColour, text);
    }
    column_ = before + displayWidth(text);
}

void TextLines::headingBeside(const TextRow& heading) {
    if (heading == headingBeside_) {
        return;
    }
    headingBeside_ = heading;
    captionColumns_ = std::max(captionColumns_, displayWidth(heading.caption));
    for (const std::u16string& line : headingLinesOf(heading, layoutBeside())) {
        writeBeside(faintColour, u"  " + line);
    }
    finishLine();
}

void TextLines::rowsBeside(const TextTable& table) {
    for (const TextRow& row : table.rows) {
        captionColumns_ = std::max(captionColumns_, displayWidth(row.caption));
    }
    RowLayout layout = layoutBeside();
    layout.nameColumns = widestName(table, layout.columns / 2);
    const TextRow* last = nullptr;
    for (const TextRow& next : table.rows) {
        const TextRow* const previous = std::exchange(last, &next);
        TextRow row = next;
        if (previous != nullptr && previous->caption == row.caption) {
            // Behind a caption alone it would seem to be another row's.
            if (!isEmpty(*previous) && joinsLine(row, layout)) {
                continue;
            }
            row.caption.clear();
        }
        const Look look = lookOf(row.edit);
        char16_t sign = signOf(look);
        for (const std::u16string& line : linesOf(row, layout)) {
            writeBeside(look.colour, std::u16string{sign, u' '} + line);
            sign = u' ';
        }
    }
}

void TextLines::tableBelow(const TextTable& table) {
    finishLine();
    if (table.rows.empty()) {
        return;
    }
    const std::size_t before = indentBelow + signColumns;
    RowLayout layout{.separator = besideName,
                     .columns = columns() - std::min(columns(), before),
                     .captionColumns = 0,
                     .nameColumns = 0,
                     .shortens = style_.columns.has_value()};
    layout.nameColumns = widestName(table, layout.columns / 2);
    if (table.heading != headingBelow_) {
        headingBelow_ = table.heading;
        for (const std::u16string& line : headingLinesOf(table.heading, layout)) {
            output_.print("{:{}}", "", before);
            writeColoured(faintColour, line);
            output_.write("\n");
        }
    }
    for (const TextRow& row : table.rows) {
        writeBelow(row, layout);
    }
}

void TextLines::finishLine() {
    if (column_ != 0) {
        output_.write("\n");
        column_ = 0;
    }
}

RowLayout TextLines::layoutBeside() const {
    const std::size_t before = leftColumns_ + gap + signColumns;
    return {.separator = dependencyArrow,
            .columns = columns() - std::min(columns(), before),
            .captionColumns = captionColumns_,
            .nameColumns = 0,
            .shortens = style_.columns.has_value()};
}

void TextLines::writeColoured(std::string_view colour, const std::u16string& text) {
    if (style_.colours) {
        output_.print("{}{}{}", colour, ustring_to_utf8(text), endOfColour);
    } else {
        output_.write(ustring_to_utf8(text));
    }
}

void TextLines::writeBeside(std::string_view colour, const std::u16string& text) {
    if (column_ > leftColumns_) {
        finishLine();
    }
    output_.print("{:{}}", "", leftColumns_ + gap - column_);
    writeColoured(colour, text);
    column_ = leftColumns_ + gap + displayWidth(text);
}

bool TextLines::joinsLine(const TextRow& row, const RowLayout& layout) {
    RowLayout alone = layout;
    alone.captionColumns = 0;
    alone.nameColumns = 0;
    TextRow withoutCaption = row;
    withoutCaption.caption.clear();
    const auto lines = linesOf(withoutCaption, alone);
    const std::size_t end = column_ + gap + signColumns + displayWidth(lines.front());
    if (lines.size() != 1 || lines.front().empty() || end > columns()) {
        return false;
    }
    const Look look = lookOf(row.edit);
    output_.write("  ");
    writeColoured(look.colour, std::u16string{signOf(look), u' '} + lines.front());
    column_ = end;
    return true;
}

void TextLines::writeBelow(const TextRow& row, const RowLayout& layout) {
    const Look look = lookOf(row.edit);
    char16_t sign = signOf(look);
    for (const std::u16string& line : linesOf(row, layout)) {
        output_.print("{:{}}", "", indentBelow);
        writeColoured(look.colour, std::u16string{sign, u' '} + line);
        output_.write("\n");
        sign = u' ';
    }
}

}  // namespace depcompare
