#include "deliver.h"

#include <unistd.h>

#include <functional>
#include <list>
#include <optional>
#include <string_view>
#include <vector>

#include <fmt/format.h>

#include "formats/csv/csv_writer.h"
#include "formats/jgf/jgf_writer.h"
#include "formats/lines/lines_writer.h"
#include "output/output.h"
#include "output/output_file.h"
#include "output/pager.h"
#include "output/terminal.h"
#include "reports/json/json_report.h"
#include "reports/markdown/markdown_report.h"
#include "reports/page/page_report.h"
#include "reports/renames/renames_report.h"
#include "reports/table/table_report.h"
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

TableForm tableForm(Format format, const Options& options) {
    TableForm form{.guarded = !options.rawCells};
    if (format == Format::tsv) {
        form.separator = '\t';
        form.endOfLine = "\n";
    }
    return form;
}

void writeReport(const Report& report, Format format, const Options& options,
                 const TextStyle& style, Output& output) {
    if (options.whenChanged && !report.tree->showsDifference()) {
        return;
    }
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
            writeMarkdownReport(report, options.mostBytes.value_or(mostMarkdownBytes), output);
            break;
        case Format::summary:
            writeSummaryReport(report, style, output);
            break;
        case Format::renames:
            writeRenames(report, output);
            break;
        case Format::csv:
        case Format::tsv:
            writeTableReport(report, tableForm(format, options), output);
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

/// The files that a command line names, open for writing.
class NamedFiles {
  public:
    /// Throws: `UsageError` if one would take the place of another, or of what standard output or
    ///         standard error is redirected to: a report or a message would be lost.
    explicit NamedFiles(const Options& options) {
        for (const FurtherReport& further : options.reports) {
            files_.emplace_back(further.path);
        }
        if (options.outputFile) {
            files_.emplace_back(*options.outputFile);
        }
        for (auto file = files_.begin(); file != files_.end(); ++file) {
            for (auto other = files_.begin(); other != file; ++other) {
                if (file->isSameAs(*other)) {
                    throw UsageError(
                        fmt::format("{} and {} are the same file; each report needs its own",
                                    other->path(), file->path()));
                }
            }
            if (!options.outputFile) {
                requireOther(*file, STDOUT_FILENO, "standard output");
            }
            requireOther(*file, STDERR_FILENO, "standard error");
        }
    }

    /// Order: that of the command line's reports; the output comes last.
    [[nodiscard]] std::list<OutputFile>& all() noexcept { return files_; }

    void finish() {
        std::vector<OutputFile*> files;
        for (OutputFile& file : files_) {
            files.push_back(&file);
        }
        OutputFile::finishAll(files);
    }

  private:
    static void requireOther(const OutputFile& file, int descriptor, std::string_view name) {
        if (file.replaces(descriptor)) {
            throw UsageError(fmt::format("{} is where {} goes; each report needs its own file",
                                         file.path(), name));
        }
    }

    std::list<OutputFile> files_;
};

/// Writes to standard output, or else to the file for it.
void deliver(const Options& options, std::string_view what, NamedFiles& files, Progress& progress,
             const Content& content) {
    if (options.outputFile) {
        OutputFile& file = files.all().back();
        fill(file, file.path(), progress, content);
    } else {
        StandardOutput output;
        fill(output, what, progress, content);
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
    NamedFiles files(options);
    auto file = files.all().begin();
    for (const FurtherReport& further : options.reports) {
        fill(*file, file->path(), progress,
             [&](Output& output) { writeReport(report, further.format, options, {}, output); });
        ++file;
    }
    const Content content = [&](Output& output) {
        writeReport(report, options.format, options, styleOfOutput(options), output);
    };
    if (!showPaged(options, progress, content)) {
        deliver(options, "the report", files, progress, content);
    }
    files.finish();
}

void deliverWhy(const Why& why, const Options& options, Progress& progress) {
    NamedFiles files(options);
    deliver(options, "the answer", files, progress,
            [&](Output& output) { writeWhy(why, options.names, styleOfOutput(options), output); });
    files.finish();
}

void deliverGraph(const dependency::graph::Graph& graph, const Options& options,
                  Progress& progress) {
    NamedFiles files(options);
    deliver(options, "the graph", files, progress, [&](Output& output) {
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
    files.finish();
}

}  // namespace depcompare
