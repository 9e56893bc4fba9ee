#include "reports/text/at_large_text.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <map>
#include <numeric>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <fl/i18n/ustring.h>
#include <fmt/format.h>

#include "output/visible_text.h"
#include "presentation/at_large.h"
#include "presentation/entry_label.h"
#include "presentation/ledger_text.h"
#include "reports/text/text_lines.h"

namespace depcompare {

namespace {

using fl::i18n::ustring_to_utf8;
using fl::i18n::utf8_to_ustring;

constexpr std::size_t titleColumns = 13;
constexpr std::size_t columnsForMore = 13;
constexpr std::size_t fewestColumns = 16;
constexpr std::size_t fewestOfName = 12;
constexpr std::size_t unlimited = std::numeric_limits<std::size_t>::max();
constexpr std::u16string_view gap = u"  ";
constexpr std::u16string_view betweenStatements = u"   ";

std::size_t without(std::size_t all, std::size_t taken) {
    return all - std::min(all, taken);
}

/// Returns: the greatest width such that names no wider fit into the columns together.
std::size_t commonWidth(std::vector<std::size_t> widths, std::size_t columns) {
    std::ranges::sort(widths);
    std::size_t names = widths.size();
    for (const std::size_t width : widths) {
        if (width > columns / names) {
            return columns / names;
        }
        columns -= width;
        --names;
    }
    return unlimited;
}

/// Returns: the last components of a path that fit after "…/", or else the text without its middle.
std::u16string shortenedName(std::u16string_view name, std::size_t columns) {
    if (displayWidth(name) <= columns) {
        return std::u16string(name);
    }
    for (std::size_t slash = name.find(u'/'); slash != name.npos;
         slash = name.find(u'/', slash + 1)) {
        if (const auto end = name.substr(slash); displayWidth(end) < columns) {
            return u"\u2026" + std::u16string(end);
        }
    }
    return shortened(name, columns);
}

std::u16string textOf(const Statement& statement, std::size_t mostOfName = unlimited) {
    std::u16string text;
    if (statement.edit) {
        text = {static_cast<char16_t>(signOf(*statement.edit)), u' '};
    }
    for (const Phrase& phrase : statement.phrases) {
        switch (phrase.kind) {
            case Phrase::Kind::words:
                text += phrase.text;
                break;
            case Phrase::Kind::name:
                text += shortenedName(visible(phrase.text), mostOfName);
                break;
            case Phrase::Kind::leadsTo:
                text += u" -> ";
                break;
        }
    }
    return text;
}

bool looksAlike(const std::vector<std::u16string>& names, std::size_t mostOfName) {
    std::map<std::u16string, std::u16string_view> byLook;
    return std::ranges::any_of(names, [&](const std::u16string& name) {
        return byLook.emplace(shortenedName(name, mostOfName), name).first->second != name;
    });
}

/// Returns: the text with names shortened so that it fits; the whole text if they would become too
///          short, or alike.
std::u16string fittedText(const Statement& statement, std::size_t columns) {
    std::u16string text = textOf(statement);
    const std::size_t width = displayWidth(text);
    std::vector<std::u16string> names;
    std::vector<std::size_t> widths;
    for (const Phrase& phrase : statement.phrases) {
        if (phrase.kind == Phrase::Kind::name) {
            widths.push_back(displayWidth(names.emplace_back(visible(phrase.text))));
        }
    }
    const std::size_t words = width - std::accumulate(widths.begin(), widths.end(), std::size_t{0});
    if (width <= columns || words > columns) {
        return text;
    }
    const std::size_t mostOfName = commonWidth(std::move(widths), columns - words);
    return mostOfName < fewestOfName || looksAlike(names, mostOfName)
               ? text
               : textOf(statement, mostOfName);
}

class AtLargeText {
  public:
    AtLargeText(const Report& report, const TextStyle& style, Output& output)
        : isFull_(report.insights && report.insights->full), style_(style), output_(output) {}

    void write(const std::vector<Topic>& topics) {
        for (const Topic& topic : topics) {
            write(topic);
        }
        if (isCut_) {
            writeColoured(faintColour, fmt::format("More: {}", howToSeeMore));
            output_.write("\n");
        }
    }

  private:
    struct Piece {
        std::string_view colour;
        std::u16string text;
    };
    struct Line {
        std::vector<Piece> pieces;
        std::size_t width = 0;

        void add(std::string_view colour, std::u16string text) {
            width += displayWidth(text);
            pieces.push_back({.colour = colour, .text = std::move(text)});
        }
    };

    void write(const Topic& topic) {
        // What one topic does not need may be another one's.
        const std::size_t taken = std::min<std::size_t>(spareLines_, 1);
        const std::size_t most = isFull_ ? unlimited : topic.mostLines + taken;
        const std::vector<Line> lines = linesOf(topic, most);
        spareLines_ = without(spareLines_ + topic.mostLines, lines.size());
        std::string_view title = topic.title;
        for (const Line& line : lines) {
            writeColoured(boldColour, title);
            output_.print("{:{}}", "", titleColumns - title.size());
            for (const Piece& piece : line.pieces) {
                const bool isFirst = title.empty() && &piece == line.pieces.data();
                writeColoured(piece.colour,
                              ustring_to_utf8(isFirst ? withoutCommand(piece.text) : piece.text));
            }
            output_.write("\n");
            title = "";
        }
    }

    [[nodiscard]] std::vector<Line> linesOf(const Topic& topic, std::size_t most) {
        const std::size_t columns = std::max(without(style_.width(), titleColumns), fewestColumns);
        std::vector<Line> lines;
        std::size_t shown = 0;
        for (const Statement& statement : topic.statements) {
            const bool isLast = shown + 1 == topic.statements.size() && topic.more == 0;
            const std::size_t kept = isLast || isFull_ ? 0 : columnsForMore;
            if (topic.flows && !lines.empty() &&
                joins(statement, without(columns, lines.size() == most ? kept : 0), lines.back())) {
                ++shown;
                continue;
            }
            if (lines.size() >= most ||
                !add(statement, without(columns, lines.size() + 1 == most ? kept : 0), most,
                     lines)) {
                break;
            }
            ++shown;
        }
        if (const std::size_t more = topic.statements.size() - shown + topic.more; more != 0) {
            const std::u16string text = utf8_to_ustring(fmt::format("({} more)", more));
            const bool fits = lines.back().width + gap.size() + displayWidth(text) <= columns;
            if (fits || lines.size() >= most) {
                lines.back().add({}, std::u16string(gap));
            } else {
                lines.emplace_back();
            }
            lines.back().add({}, text);
            isCut_ = !isFull_;
        }
        return lines;
    }

    [[nodiscard]] bool joins(const Statement& statement, std::size_t columns, Line& line) const {
        const std::size_t room = without(columns, line.width + betweenStatements.size());
        std::u16string text = isFull_ ? textOf(statement) : fittedText(statement, room);
        if (displayWidth(text) > room) {
            return false;
        }
        line.add({}, std::u16string(betweenStatements));
        line.add(colourOf(statement), std::move(text));
        return true;
    }

    /// Returns: whether there were lines enough.
    [[nodiscard]] bool add(const Statement& statement, std::size_t columns, std::size_t most,
                           std::vector<Line>& lines) const {
        const auto parts =
            broken(isFull_ ? textOf(statement) : fittedText(statement, columns), columns);
        if (parts.size() > without(most, lines.size()) && !lines.empty()) {
            return false;
        }
        for (const std::u16string& part : parts) {
            lines.emplace_back().add(colourOf(statement),
                                     part.substr(0, part.find_last_not_of(u' ') + 1));
        }
        return true;
    }

    static std::string_view colourOf(const Statement& statement) {
        return statement.edit ? depcompare::colourOf(*statement.edit) : std::string_view();
    }

    void writeColoured(std::string_view colour, std::string_view text) {
        if (style_.colours && !colour.empty() && !text.empty()) {
            output_.print("{}{}{}", colour, text, endOfColour);
        } else {
            output_.write(text);
        }
    }

    bool isFull_;
    bool isCut_ = false;
    std::size_t spareLines_ = 0;
    const TextStyle& style_;
    Output& output_;
};

}  // namespace

void writeAtLarge(const Report& report, const TextStyle& style, Output& output) {
    output.print("{}\n", verdictOf(report));
    for (const std::string& warning : report.ledger.warnings) {
        for (const auto& line : broken(utf8_to_ustring("Warning: " + warning), style.width())) {
            output.print("{}\n", ustring_to_utf8(line.substr(0, line.find_last_not_of(u' ') + 1)));
        }
    }
    output.write(countsTable(report.summary));
    if (const auto topics = atLarge(report); !topics.empty()) {
        output.write("\n");
        AtLargeText(report, style, output).write(topics);
    }
}

}  // namespace depcompare
