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
using fl::i18n::utf8_to_ustring;

constexpr std::size_t gap = 2;
constexpr std::size_t signColumns = 2;
constexpr std::size_t indentBelow = 4;
constexpr std::u16string_view dependencyArrow = u" -> ";
constexpr std::u16string_view besideName = u"  ";

std::u16string withSign(EditType edit, std::u16string_view text) {
    std::u16string line{static_cast<char16_t>(signOf(edit)), u' '};
    return line.append(text);
}

std::u16string nameIn(const EntryLabel& label) {
    switch (label.kind) {
        case EntryKind::graph:
            return u"graph";
        case EntryKind::file:
            return visible(label.id) + (label.oldID ? u" \u2190 " + visible(*label.oldID) : u"");
        case EntryKind::group:
            break;
    }
    return u"-> " + visible(label.downstream);
}

/// Returns: "  1.0 \u2192 1.1", or nothing; a value of one side has its sign.
std::u16string rowsIn(const EntryLabel& label) {
    std::u16string text;
    for (const TableRow& row : label.rows) {
        text += u"  ";
        text += row.value.changed ? row.value.text() : withSign(row.edit, row.value.text());
    }
    return text;
}

/// Returns: " (lib, moved)" after the rows in the label, or nothing.
std::u16string noteIn(const EntryLabel& label) {
    std::vector<std::u16string> notes;
    if (label.downstreamType) {
        notes.push_back(visible(*label.downstreamType));
    }
    for (const std::string_view remark : label.remarks()) {
        notes.push_back(utf8_to_ustring(remark));
    }
    std::u16string text;
    for (const std::u16string& note : notes) {
        text += (text.empty() ? u" (" : u", ") + note;
    }
    return rowsIn(label) + (text.empty() ? text : text + u')');
}

std::size_t depthOf(const EntryLabel& label) {
    return label.kind == EntryKind::group ? 1 : 0;
}

/// Returns: the row's lines, the first one with its sign.
std::vector<std::u16string> signedLinesOf(const TableRow& row, const RowLayout& layout) {
    std::vector<std::u16string> lines = linesOf(row, layout);
    for (std::u16string& line : lines) {
        line = &line == lines.data() ? withSign(row.edit, line) : u"  " + withoutCommand(line);
    }
    return lines;
}

std::size_t widestName(const EntryTable& table, std::size_t most) {
    std::size_t widest = 0;
    for (const TableRow& row : table.rows) {
        if (!row.value.empty()) {
            widest = std::max(widest, displayWidth(row.name.text()));
        }
    }
    return std::min(widest, most);
}

}  // namespace

TextLines::TextLines(const TextStyle& style, std::size_t leftColumns, Output& output)
    : style_(style), output_(output), leftColumns_(std::min(leftColumns, style_.width() / 2)) {}

bool isWithoutCells(const TableRow& row) {
    return row.name.empty() && row.value.empty();
}

std::size_t widthOf(const EntryLabel& label) {
    return depthOf(label) * 2 + signColumns + displayWidth(nameIn(label)) +
           displayWidth(noteIn(label));
}

void TextLines::entry(const EntryLabel& label, bool isVisible) {
    finishLine();
    const std::size_t indent = depthOf(label) * 2;
    const std::size_t before = indent + (isVisible ? signColumns : 0);
    std::u16string text = nameIn(label);
    const std::u16string note = noteIn(label);
    if (style_.columns) {
        const std::size_t room = indent == 0 ? *style_.columns : leftColumns_;
        const std::size_t taken = before + displayWidth(note);
        constexpr std::size_t fewest = 16;
        text = shortened(text, std::max(room - std::min(room, taken), fewest));
    }
    text += note;
    output_.print("{:{}}", "", indent);
    if (isVisible) {
        writeColoured(colourOf(label.edit), withSign(label.edit, text));
    } else {
        text = withoutCommand(std::move(text));
        writeColoured(boldColour, text);
    }
    column_ = before + displayWidth(text);
}

void TextLines::headingBeside(const TableRow& heading) {
    const bool saysNoMore = heading.caption == headingBeside_.caption && isWithoutCells(heading);
    if (saysNoMore || heading == headingBeside_) {
        return;
    }
    headingBeside_ = heading;
    captionColumns_ = std::max(captionColumns_, displayWidth(heading.caption));
    for (const std::u16string& line : headingLinesOf(heading, layoutBeside())) {
        writeBeside(faintColour, u"  " + line);
    }
    finishLine();
}

void TextLines::rowsBeside(const EntryTable& table) {
    for (const TableRow& row : table.rows) {
        const std::size_t columns = displayWidth(row.caption);
        captionColumns_ =
            columns > layoutBeside().columns ? captionColumns_ : std::max(captionColumns_, columns);
    }
    RowLayout layout = layoutBeside();
    layout.nameColumns = widestName(table, layout.columns / 2);
    const TableRow* last = nullptr;
    for (const TableRow& next : table.rows) {
        const TableRow* const previous = std::exchange(last, &next);
        TableRow row = next;
        if (previous != nullptr && previous->caption == row.caption) {
            // After a caption alone it would seem to be another row's.
            if (!isWithoutCells(*previous) && joinsLine(row, layout)) {
                continue;
            }
            row.caption.clear();
        }
        for (const std::u16string& line : signedLinesOf(row, layout)) {
            writeBeside(colourOf(row.edit), line);
        }
    }
}

void TextLines::tableBelow(const EntryTable& table) {
    finishLine();
    if (table.rows.empty()) {
        return;
    }
    const std::size_t before = indentBelow + signColumns;
    RowLayout layout{.separator = besideName,
                     .columns = style_.width() - std::min(style_.width(), before),
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
    for (const TableRow& row : table.rows) {
        for (const std::u16string& line : signedLinesOf(row, layout)) {
            output_.print("{:{}}", "", indentBelow);
            writeColoured(colourOf(row.edit), line);
            output_.write("\n");
        }
    }
}

void TextLines::remark(EditType edit, const std::u16string& text, bool beside) {
    const std::size_t room = style_.width() - std::min(style_.width(), gap + signColumns);
    const std::u16string line =
        withSign(edit, style_.columns ? shortened(text, room) : std::u16string(text));
    if (!beside || column_ + gap + displayWidth(line) > style_.width()) {
        finishLine();
    }
    output_.print("{:{}}", "", gap);
    writeColoured(colourOf(edit), line);
    output_.write("\n");
    column_ = 0;
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
            .columns = style_.width() - std::min(style_.width(), before),
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

bool TextLines::joinsLine(const TableRow& row, const RowLayout& layout) {
    RowLayout alone = layout;
    alone.captionColumns = 0;
    alone.nameColumns = 0;
    TableRow withoutCaption = row;
    withoutCaption.caption.clear();
    const auto lines = linesOf(withoutCaption, alone);
    const std::size_t end = column_ + gap + signColumns + displayWidth(lines.front());
    if (lines.size() != 1 || lines.front().empty() || end > style_.width()) {
        return false;
    }
    output_.write("  ");
    writeColoured(colourOf(row.edit), withSign(row.edit, lines.front()));
    column_ = end;
    return true;
}

}  // namespace depcompare
