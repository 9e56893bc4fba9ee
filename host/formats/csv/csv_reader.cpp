#include <algorithm>
#include <iterator>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "draft/graph_sink.h"
#include "formats/edge_data.h"
#include "formats/first_row.h"
#include "formats/formats.h"
#include "formats/line_reader.h"
#include "input/input_error.h"

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
            if (rest_.empty() && field.ends_with('\r')) {
                field.pop_back();
            }
            if (field.find('\r') != std::string::npos) {
                fail("carriage return inside a field; a line ends with a line feed");
            }
            return field;
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
            hasHeader_ = true;
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
        if (!hasHeader_) {
            firstRow_.warnOfHeader(sink_);
        }
        if (!padded_.empty()) {
            sink_.warn(fmt::format("IDs with blanks around them, which count: {} (first: {})",
                                   padded_.size(), inQuotes(*padded_.begin())));
        }
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
        firstRow_.take(source, target);
        notePadding(source);
        notePadding(target);
        const NodeNumber node = sink_.addNodeOnce(source);
        if (target.empty()) {
            describe(node, record);
        } else {
            sink_.addNodeOnce(target);
            addEdge(record);
        }
    }

    void notePadding(const std::string& id) {
        constexpr std::string_view blanks = " \t";
        const bool isPadded = !id.empty() && (blanks.find(id.front()) != blanks.npos ||
                                              blanks.find(id.back()) != blanks.npos);
        if (isPadded) {
            padded_.insert(id);
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
            const std::string name = normalized(column);
            // As Gephi writes it.
            if (name == "type" && normalized(value) == "undirected") {
                sink_.failForUndirected(record[columns_.source], record[columns_.target]);
            }
            if (hasHeader_) {
                edgeData_.set(edge, name, value, column);
            } else {
                edgeData_.setUnnamed(edge, value);
            }
        });
    }

    CsvRecords records_;
    GraphSink sink_;
    NamedEdgeData edgeData_{sink_};
    Columns columns_;
    bool hasHeader_ = false;
    FirstRow firstRow_;
    std::set<std::string> padded_;  // IDs
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
