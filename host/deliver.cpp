#include "deliver.h"

#include <unistd.h>

#include <functional>
#include <list>
#include <optional>
#include <string_view>

#include <fmt/format.h>

#include "formats/csv/csv_writer.h"
#include "formats/jgf/jgf_writer.h"
#include "formats/lines/lines_writer.h"
#include "output/output.h"
#include "output/pager.h"
#include "output/terminal.h"
#include "presentation/ledger_text.h"
#include "reports/json/json_report.h"
#include "reports/markdown/markdown_report.h"
#include "reports/page/page_report.h"
#include "reports/text/text_report.h"

namespace depcompare {

namespace {

/// Writes a report or a graph.
using Content = std::function<void(Output&)>;

TextStyle styleOfOutput(const Options& options) {
    const bool toScreen = !options.outputFile && isTerminal(STDOUT_FILENO);
    return {.colours = wantsColours(options.colour, toScreen),
            .columns = toScreen ? terminalColumns(STDOUT_FILENO) : std::nullopt};
}

void writeReport(const Report& report, Format format, const Options& options,
                 const TextStyle& style, Output& output) {
    switch (format) {
        case Format::text:
            writeTextReport(report, style, output);
            break;
        case Format::json:
            writeJsonReport(report, output);
            break;
        case Format::html:
            writePage(report, output);
            break;
        case Format::markdown:
            writeMarkdownReport(report, options.mostBytes, output);
            break;
        case Format::summary:
            output.write(countsTable(report.summary));
            break;
    }
}

/// Anything but a regular file may be the terminal, so this clears the progress line first.
class SinkOnTerminal final : public Sink {
  public:
    SinkOnTerminal(Sink& sink, Progress& progress) : sink_(sink), progress_(progress) {}

    void write(std::string_view text) override {
        progress_.clear();
        sink_.write(text);
    }

  private:
    Sink& sink_;
    Progress& progress_;
};

void fill(Sink& sink, const Content& content) {
    Output output(sink);
    content(output);
    output.flush();
}

template <class FileSink>
void fill(FileSink& file, std::string_view name, Progress& progress, const Content& content) {
    progress.stage(fmt::format("writing {}", name));
    if (file.isRegularFile()) {
        fill(file, content);
    } else {
        SinkOnTerminal sink(file, progress);
        fill(sink, content);
    }
}

void deliver(const Options& options, std::string_view what, Progress& progress,
             const Content& content) {
    if (options.outputFile) {
        OutputFile file(*options.outputFile);
        fill(file, file.path(), progress, content);
        file.finish();
    } else {
        StandardOutput output;
        fill(output, what, progress, content);
        output.finish();
    }
}

/// Returns: false if nothing was shown.
bool showPaged(const Options& options, Progress& progress, const Content& content) {
    if (!options.pager || options.outputFile || options.format != Format::text ||
        !isTerminal(STDOUT_FILENO)) {
        return false;
    }
    const auto command = pagerCommand();
    if (!command) {
        return false;
    }
    progress.clear();
    Pager pager(*command);
    try {
        fill(pager, content);
    } catch (const Pager::Quit&) {  // NOLINT(bugprone-empty-catch): the rest is discarded.
    }
    pager.finish();
    return pager.wasFound();
}

}  // namespace

void deliverReports(const Report& report, const Options& options, Progress& progress) {
    std::list<OutputFile> files;  // finished when everything is written
    for (const auto& further : options.reports) {
        OutputFile& file = files.emplace_back(further.path);
        fill(file, file.path(), progress,
             [&](Output& output) { writeReport(report, further.format, options, {}, output); });
    }
    const Content content = [&](Output& output) {
        writeReport(report, options.format, options, styleOfOutput(options), output);
    };
    if (!showPaged(options, progress, content)) {
        deliver(options, "the report", progress, content);
    }
    for (OutputFile& file : files) {
        file.finish();
    }
}

void deliverGraph(const dependency::graph::Graph& graph, const Options& options,
                  Progress& progress) {
    deliver(options, "the graph", progress, [&](Output& output) {
        switch (*options.conversion) {
            case GraphForm::csv:
                writeCSV(graph, output);
                break;
            case GraphForm::jgf:
                writeJGF(graph, output);
                break;
            case GraphForm::lines:
                writeLines(graph, output);
                break;
        }
    });
}

}  // namespace depcompare
