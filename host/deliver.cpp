#include "deliver.h"

#include <sys/stat.h>
#include <unistd.h>

#include <functional>
#include <list>
#include <optional>
#include <string_view>

#include <fmt/format.h>

#include "formats/jgf/jgf_writer.h"
#include "formats/lines/lines_writer.h"
#include "output/output.h"
#include "output/pager.h"
#include "output/terminal.h"
#include "presentation/counts_table.h"
#include "reports/json/json_report.h"
#include "reports/markdown/markdown_report.h"
#include "reports/page/page_report.h"
#include "reports/text/text_report.h"

namespace depcompare {

namespace {

using Write = std::function<void(Output&)>;

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
            writeCounts(report.summary, output);
            break;
    }
}

bool isRegularFile(int file) {
    struct stat status {};
    return ::fstat(file, &status) == 0 && S_ISREG(status.st_mode);
}

/// What is no regular file may end on the terminal where the progress line is, so that line is
/// cleared before the first piece.
void writeTo(const Output::Write& sink, bool isRegular, Progress& progress, const Write& write) {
    Output output([&](std::string_view text) {
        if (!isRegular) {
            progress.clear();
        }
        sink(text);
    });
    write(output);
    output.flush();
}

void writeToFile(OutputFile& file, Progress& progress, const Write& write) {
    progress.stage(fmt::format("writing {}", file.path()));
    writeTo([&](std::string_view text) { file.write(text); }, file.isRegular(), progress, write);
}

void deliver(const Options& options, std::string_view what, Progress& progress,
             const Write& write) {
    if (options.outputFile) {
        OutputFile file(*options.outputFile);
        writeToFile(file, progress, write);
        file.commit();
        return;
    }
    progress.stage(fmt::format("writing {}", what));
    writeTo([](std::string_view text) { writeAll(STDOUT_FILENO, "standard output", text); },
            isRegularFile(STDOUT_FILENO), progress, write);
}

bool showPaged(const Options& options, Progress& progress, const Write& write) {
    if (!options.pager || options.outputFile || options.format != Format::text ||
        !isTerminal(STDOUT_FILENO)) {
        return false;
    }
    const auto command = pagerCommand();
    if (!command) {
        return false;
    }
    progress.clear();
    return showInPager(*command, write);
}

}  // namespace

void deliverReports(const Report& report, const Options& options, Progress& progress) {
    std::list<OutputFile> files;  // they take their names when everything is written
    for (const auto& further : options.reports) {
        writeToFile(files.emplace_back(further.path), progress, [&](Output& output) {
            writeReport(report, further.format, options, {}, output);
        });
    }
    const Write write = [&](Output& output) {
        writeReport(report, options.format, options, styleOfOutput(options), output);
    };
    if (!showPaged(options, progress, write)) {
        deliver(options, "the report", progress, write);
    }
    for (OutputFile& file : files) {
        file.commit();
    }
}

void deliverGraph(const dependency::graph::Graph& graph, const Options& options,
                  Progress& progress) {
    deliver(options, "the graph", progress, [&](Output& output) {
        switch (*options.conversion) {
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
