#include <algorithm>
#include <cctype>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "draft/graph_sink.h"
#include "formats/edge_data.h"
#include "formats/formats.h"
#include "formats/line_reader.h"

namespace depcompare {

namespace {

using Record = std::vector<std::string>;

/// Reads records as RFC 4180 has them, with any separator. Empty lines and lines that begin with
/// `#` are left out.
class CsvRecords {
  public:
    CsvRecords(Input& input, char separator)
        : lines_(input), separator_(separator), mostBytes_(input.limits().textBytes) {}

    /// Returns: whether there was another record.
    [[nodiscard]] bool next(Record& record) {
        record.clear();
        for (auto line = lines_.next(); line; line = lines_.next()) {
            if (const auto text = withoutReturn(*line); !text.empty() && text.front() != '#') {
                rest_ = *line;
                firstLine_ = lines_.line();
                do {
                    record.push_back(takeField());
                } while (takeSeparator());
                return true;
            }
        }
        return false;
    }

    /// Returns: the line where the last record begins.
    [[nodiscard]] std::size_t line() const { return firstLine_; }
    [[noreturn]] void fail(std::string_view problem) const { lines_.fail(problem); }

  private:
    std::string takeField() {
        if (!rest_.starts_with('"')) {
            std::string field(rest_.substr(0, rest_.find(separator_)));
            if (field.find('"') != std::string::npos) {
                fail("quotation mark inside a field that does not begin with one");
            }
            rest_.remove_prefix(field.size());
            return rest_.empty() ? std::string(withoutReturn(field)) : field;
        }
        rest_.remove_prefix(1);
        return takeQuoted();
    }

    std::string takeQuoted() {
        std::string field;
        for (;;) {
            const std::size_t quote = rest_.find('"');
            field += rest_.substr(0, quote);
            if (field.size() > mostBytes_) {
                fail("quoted field without an end, or too long (--max-text-bytes)");
            }
            if (quote == std::string_view::npos) {
                const auto line = lines_.next();
                if (!line) {
                    fail("quoted field without an end");
                }
                field += '\n';
                rest_ = *line;
            } else if (rest_.substr(quote + 1).starts_with('"')) {
                field += '"';
                rest_.remove_prefix(quote + 2);
            } else {
                rest_.remove_prefix(quote + 1);
                if (rest_ == "\r") {
                    rest_ = {};
                }
                return field;
            }
        }
    }

    bool takeSeparator() {
        if (rest_.empty()) {
            return false;
        }
        if (rest_.front() != separator_) {
            fail("text after a quoted field");
        }
        rest_.remove_prefix(1);
        return true;
    }

    LineReader lines_;
    char separator_;
    std::size_t mostBytes_;
    std::size_t firstLine_ = 0;
    std::string_view rest_;  // of the line
};

std::string normalized(std::string_view name) {
    std::string text(name);
    text.erase(0, text.find_first_not_of(' '));
    text.erase(text.find_last_not_of(' ') + 1);
    std::ranges::transform(text, text.begin(), [](char letter) {
        return static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    });
    return text;
}

/// The columns of a file, by what they mean.
struct Columns {
    std::vector<std::string> names;  // as written
    std::size_t source = 0;
    std::size_t target = 1;

    /// Returns: the columns that a header names; nothing if the record is not a header.
    static std::optional<Columns> of(const Record& record) {
        Columns columns{.names = record};
        Record names;
        std::ranges::transform(record, std::back_inserter(names), normalized);
        for (const auto& [from, to] : {std::pair("source", "target"), std::pair("from", "to")}) {
            const auto source = std::ranges::find(names, from);
            const auto target = std::ranges::find(names, to);
            if (source != names.end() && target != names.end()) {
                columns.source = static_cast<std::size_t>(source - names.begin());
                columns.target = static_cast<std::size_t>(target - names.begin());
                return columns;
            }
        }
        return std::nullopt;
    }
};

class CsvReader {
  public:
    CsvReader(Input& input, char separator)
        : records_(input, separator),
          sink_(input.name(), input.limits(), [this] { return records_.line(); }) {}

    GraphDraft read() {
        Record record;
        if (!records_.next(record)) {
            return sink_.finish();
        }
        if (auto columns = Columns::of(record)) {
            columns_ = *std::move(columns);
        } else {
            requireDefaultColumns(record);
            addRow(record);
        }
        while (records_.next(record)) {
            if (record.size() != columns_.names.size()) {
                records_.fail(fmt::format("{} fields, but {} in the first line", record.size(),
                                          columns_.names.size()));
            }
            addRow(record);
        }
        edgeData_.warnOfIgnored("columns");
        return sink_.finish();
    }

  private:
    void requireDefaultColumns(const Record& record) {
        if (record.size() != 2 && record.size() != 3) {
            records_.fail(
                "no header with \"source\" and \"target\", or \"from\" and \"to\", and "
                "not two or three fields");
        }
        columns_.names = {"source", "target", "type"};
        columns_.names.resize(record.size());
    }

    void addRow(const Record& record) {
        const std::string& source = record[columns_.source];
        const std::string& target = record[columns_.target];
        if (source.empty()) {
            records_.fail("row without a source");
        }
        const NodeNumber node = sink_.addNodeOnce(source);
        if (target.empty()) {
            describe(node, record);
        } else {
            sink_.addNodeOnce(target);
            addEdge(record);
        }
    }

    template <class Take>
    void forOthers(const Record& record, const Take& take) {
        for (std::size_t i = 0; i < record.size(); ++i) {
            if (i != columns_.source && i != columns_.target && !record[i].empty()) {
                take(columns_.names[i], record[i]);
            }
        }
    }

    void describe(NodeNumber node, const Record& record) {
        forOthers(record, [&](const std::string& column, const std::string& value) {
            if (const std::string name = normalized(column); name == "type") {
                sink_.setType(node, value);
            } else if (name == "name") {
                sink_.setName(node, value);
            } else {
                sink_.setProperty(node, column, value);
            }
        });
    }

    void addEdge(const Record& record) {
        const std::size_t edge = sink_.addEdge(record[columns_.source], record[columns_.target]);
        forOthers(record, [&](const std::string& column, const std::string& value) {
            edgeData_.set(edge, normalized(column), value, column);
        });
    }

    CsvRecords records_;
    GraphSink sink_;
    NamedEdgeData edgeData_{sink_};
    Columns columns_;
};

bool hasHeader(std::string_view firstBytes, char separator) {
    for (const std::string_view line : wholeLines(firstBytes)) {
        if (line.empty() || line.front() == '#') {
            continue;
        }
        Record names;
        for (std::string_view rest = line;;) {
            const std::size_t end = rest.find(separator);
            std::string_view name = rest.substr(0, end);
            if (name.size() >= 2 && name.front() == '"' && name.back() == '"') {
                name = name.substr(1, name.size() - 2);
            }
            names.emplace_back(name);
            if (end == std::string_view::npos) {
                return Columns::of(names).has_value();
            }
            rest.remove_prefix(end + 1);
        }
    }
    return false;
}

}  // namespace

bool looksLikeCSV(std::string_view firstBytes) {
    return hasHeader(firstBytes, ',');
}

GraphDraft readCSV(Input& input) {
    return CsvReader(input, ',').read();
}

bool looksLikeTSV(std::string_view firstBytes) {
    return hasHeader(firstBytes, '\t');
}

GraphDraft readTSV(Input& input) {
    return CsvReader(input, '\t').read();
}

}  // namespace depcompare
