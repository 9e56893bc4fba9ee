#include "run.h"

#include <unistd.h>

#include <array>
#include <csignal>
#include <exception>
#include <functional>
#include <list>
#include <new>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include <depcompare/messages/messages.h>
#include <fl/i18n/locale.h>
#include <fmt/format.h>

#include "command_line.h"
#include "output.h"
#include "pager.h"
#include "progress.h"
#include "readers/input.h"
#include "readers/load_graphs.h"
#include "reports/counts_table.h"
#include "reports/json_report.h"
#include "reports/markdown_report.h"
#include "reports/page_report.h"
#include "reports/report.h"
#include "reports/text_report.h"
#include "reports/visible_text.h"
#include "terminal.h"
#include "writers/jgf_writer.h"
#include "writers/lines_writer.h"

namespace depcompare {

namespace {

using fl::i18n::Locale;

enum ExitStatus : int { noDifference = 0, someDifference = 1, trouble = 2 };

std::string localeOfEnvironment() {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const auto value = environment(name);
        if (value && !value->empty()) {
            return std::string(*value);
        }
    }
    return {};
}

void setLocale(const Options& options) {
    if (options.locale) {
        Locale::setGlobal(Locale(*options.locale));
        return;
    }
    try {
        Locale::setGlobal(Locale(localeOfEnvironment()));
    } catch (const fl::i18n::InvalidLocaleName&) {
        // An environment that nobody can read is no reason to refuse the work.
        Locale::setGlobal(Locale());
    }
}

void warn(const LoadedGraph& input, const Options& options) {
    if (options.quiet) {
        return;
    }
    for (const std::string& warning : input.warnings) {
        writeAll(
            STDERR_FILENO, "standard error",
            fmt::format("depcompare: warning: {}: {}\n", visible(input.source), visible(warning)));
    }
}

Input openInput(const Options& options, std::size_t side) {
    const std::string& name = options.names[side];
    return Input::open(options.inputs[side], name == "-" ? "standard input" : name,
                       options.reading.limits);
}

Report compare(const Options& options) {
    Progress progress(options.quiet ? When::never : options.progress);
    // Both are opened before either is read: a missing file must not wait for standard input.
    auto inputs = loadGraphs({openInput(options, 0), openInput(options, 1)}, options.reading,
                             [&](const std::string& name) { progress.stage(name); });
    for (const LoadedGraph& input : inputs) {
        warn(input, options);
    }
    progress.stage("comparing");
    Report report = compareInputs(std::move(inputs), options.names, options.filters);
    if (!options.quiet) {
        completeLedger(report);
    }
    return report;
}

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

void writeToStandardOutput(std::string_view text) {
    writeAll(STDOUT_FILENO, "standard output", text);
}

void deliver(const Options& options, const std::function<void(Output&)>& write) {
    if (!options.outputFile) {
        Output output(writeToStandardOutput);
        write(output);
        output.flush();
        return;
    }
    OutputFile file(*options.outputFile);
    Output output([&](std::string_view text) { file.write(text); });
    write(output);
    output.flush();
    file.commit();
}

bool showPaged(const Report& report, const Options& options) {
    if (!options.pager || options.outputFile || options.format != Format::text ||
        !isTerminal(STDOUT_FILENO)) {
        return false;
    }
    const auto command = pagerCommand();
    return command && showInPager(*command, [&](Output& output) {
               writeReport(report, options.format, options, styleOfOutput(options), output);
           });
}

void deliverReports(const Report& report, const Options& options) {
    std::list<OutputFile> files;  // they take their names when everything is written
    for (const auto& [format, path] : options.reports) {
        OutputFile& file = files.emplace_back(path);
        Output output([&](std::string_view text) { file.write(text); });
        writeReport(report, format, options, {}, output);
        output.flush();
    }
    if (!showPaged(report, options)) {
        deliver(options, [&](Output& output) {
            writeReport(report, options.format, options, styleOfOutput(options), output);
        });
    }
    for (OutputFile& file : files) {
        file.commit();
    }
}

void convert(const Options& options) {
    const LoadedGraph input = loadGraph(openInput(options, 0), options.reading);
    warn(input, options);
    deliver(options, [&](Output& output) {
        switch (*options.conversion) {
            case GraphForm::jgf:
                writeJGF(*input.graph, output);
                break;
            case GraphForm::lines:
                writeLines(*input.graph, output);
                break;
        }
    });
}

bool fails(const Report& report, FailOn failOn) {
    switch (failOn) {
        case FailOn::any:
            return report.tree->showsDifference();
        case FailOn::structural:
            return report.tree->showsStructuralDifference();
        case FailOn::none:
            break;
    }
    return false;
}

int perform(int argc, const char* const* argv) {
    const auto parsed = parseCommandLine(argc, argv);
    if (const auto* information = std::get_if<Information>(&parsed)) {
        writeToStandardOutput(information->text);
        return noDifference;
    }
    const auto& options = std::get<Options>(parsed);
    setLocale(options);
    messages::registerMessages();
    if (options.conversion) {
        convert(options);
        return noDifference;
    }
    const Report report = compare(options);
    if (!options.quiet) {
        deliverReports(report, options);
    }
    return fails(report, options.failOn) ? someDifference : noDifference;
}

void complain(std::string_view problem) noexcept {
    try {
        writeAll(STDERR_FILENO, "standard error",
                 fmt::format("depcompare: {}\n", visible(problem)));
    } catch (...) {
        return;  // There is nobody left to tell; the exit status still does.
    }
}

}  // namespace

int run(int argc, const char* const* argv) noexcept {
    // A reader that has gone is reported like any other failed write.
    std::signal(SIGPIPE, SIG_IGN);  // NOLINT(cert-err33-c): it cannot fail for this signal.
    try {
        return perform(argc, argv);
    } catch (const std::bad_alloc&) {
        complain("out of memory");
    } catch (const std::exception& error) {
        complain(error.what());
    } catch (...) {
        complain("unknown error");
    }
    return trouble;
}

}  // namespace depcompare
