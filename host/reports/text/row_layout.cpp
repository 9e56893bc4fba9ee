#include "reports/text/row_layout.h"

#include <algorithm>

#include "output/visible_text.h"

namespace depcompare {

namespace {

using Lines = std::vector<std::u16string>;

constexpr std::u16string_view arrow = u" \u2192 ";
constexpr std::size_t gap = 2;
constexpr std::size_t fewestColumns = 16;

std::u16string padded(std::u16string text, std::size_t columns) {
    const std::size_t width = displayWidth(text);
    return text.append(columns - std::min(columns, width), u' ');
}

std::size_t remaining(std::size_t columns, std::size_t taken) {
    return std::max(columns - std::min(columns, taken), fewestColumns);
}

std::u16string shortenedChange(const TableCell& cell, std::size_t columns) {
    const std::size_t forTexts = remaining(columns, arrow.size());
    const std::size_t before = displayWidth(cell.before);
    const std::size_t after = displayWidth(cell.after);
    const std::size_t half = forTexts / 2;
    const std::size_t forBefore = std::max(half, forTexts - std::min(forTexts, after));
    const std::size_t forAfter = std::max(half, forTexts - std::min(forTexts, before));
    TableCell shown{.before = shortened(cell.before, std::min(before, forBefore)),
                    .after = shortened(cell.after, std::min(after, forAfter)),
                    .changed = true};
    return shown.before == shown.after ? std::u16string() : shown.text();
}

/// Returns: empty if shortening would hide what changed.
std::u16string shortenedCell(const TableCell& cell, std::size_t columns) {
    std::u16string text = cell.text();
    if (displayWidth(text) <= columns) {
        return text;
    }
    return cell.changed ? shortenedChange(cell, columns) : shortened(text, columns);
}

Lines brokenCell(const TableCell& cell, std::size_t columns) {
    const std::u16string text = cell.text();
    if (!cell.changed || displayWidth(text) <= columns) {
        return broken(text, columns);
    }
    Lines lines = broken(cell.before, columns);
    std::ranges::move(broken(std::u16string(arrow.substr(1)) + cell.after, columns),
                      std::back_inserter(lines));
    return lines;
}

Lines cellLines(const TableCell& cell, std::size_t columns, bool shortens) {
    if (shortens) {
        if (std::u16string text = shortenedCell(cell, columns); !text.empty()) {
            return {std::move(text)};
        }
    }
    return brokenCell(cell, columns);
}

void append(Lines& lines, const std::u16string& lead, const Lines& more) {
    const std::u16string indent(displayWidth(lead), u' ');
    for (const std::u16string& line : more) {
        lines.push_back((&line == more.data() ? lead : indent) + line);
    }
}

/// Returns: the lines after the caption.
Lines bodyOf(const TableRow& row, const RowLayout& layout, std::size_t columns) {
    if (row.value.empty()) {
        return row.name.empty() ? Lines{u""} : cellLines(row.name, columns, layout.shortens);
    }
    std::u16string lead = padded(row.name.text(), layout.nameColumns);
    const std::size_t leadWidth = displayWidth(lead) + layout.separator.size();
    Lines lines;
    if (leadWidth + std::min(displayWidth(row.value.text()), fewestColumns) <= columns) {
        lead += layout.separator;
        append(lines, lead, cellLines(row.value, columns - leadWidth, layout.shortens));
        return lines;
    }
    // The name takes the line, the value goes below.
    lines = cellLines(row.name, columns, layout.shortens);
    const std::u16string below(layout.separator.substr(layout.separator.size() > 2 ? 1 : 0));
    append(lines, below,
           cellLines(row.value, remaining(columns, displayWidth(below)), layout.shortens));
    return lines;
}

}  // namespace

std::vector<std::u16string> linesOf(const TableRow& row, const RowLayout& layout) {
    std::u16string lead = row.caption;
    Lines lines;
    if (displayWidth(lead) > layout.columns) {
        // The caption takes lines of its own.
        lines =
            layout.shortens ? Lines{shortened(lead, layout.columns)} : broken(lead, layout.columns);
        lead.clear();
    }
    if (layout.captionColumns != 0) {
        lead = padded(std::move(lead), layout.captionColumns + gap);
    }
    if (lines.empty() || !row.name.empty() || !row.value.empty()) {
        append(lines, lead, bodyOf(row, layout, remaining(layout.columns, displayWidth(lead))));
    }
    for (std::u16string& line : lines) {
        line.erase(line.find_last_not_of(u' ') + 1);
    }
    return lines;
}

std::vector<std::u16string> headingLinesOf(const TableRow& heading, const RowLayout& layout) {
    std::u16string caption = heading.caption;
    if (layout.captionColumns != 0) {
        caption = padded(std::move(caption), layout.captionColumns + gap);
    }
    const std::u16string name = heading.name.text();
    const std::u16string value = heading.value.text();
    std::u16string line = caption + name;
    if (!value.empty()) {
        line += std::u16string(layout.separator) + value;
    }
    if (value.empty() || displayWidth(line) <= layout.columns) {
        line.erase(line.find_last_not_of(u' ') + 1);
        return {line};
    }
    const std::u16string below = std::u16string(layout.separator.substr(1)) + value;
    const std::size_t room = layout.columns - std::min(layout.columns, displayWidth(below));
    return {caption + name, std::u16string(std::min(displayWidth(caption), room), u' ') + below};
}

}  // namespace depcompare
