#include "run.h"

#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <exception>
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
#include "progress.h"
#include "readers/build_graphs.h"
#include "readers/input.h"
#include "readers/read_graph.h"
#include "reports/counts_table.h"
#include "reports/json_report.h"
#include "reports/report.h"
#include "reports/text_report.h"
#include "reports/visible_text.h"
#include "terminal.h"

namespace depcompare {

namespace {

using fl::i18n::Locale;

enum ExitStatus : int { noDifference = 0, someDifference = 1, trouble = 2 };

std::string localeOfEnvironment() {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* value = std::getenv(name);  // NOLINT(concurrency-mt-unsafe): nobody writes it.
        if (value != nullptr && *value != '\0') {
            return value;
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

Report compare(const Options& options) {
    Progress progress(options.quiet ? When::never : options.progress);
    std::array<GraphDraft, 2> drafts;
    for (std::size_t side = 0; side < drafts.size(); ++side) {
        Input input = Input::open(options.inputs[side]);
        progress.stage("reading " + input.name());
        drafts[side] = readGraph(input, options.inputFormat);
    }
    progress.stage("building the graphs");
    auto inputs = buildGraphs(std::move(drafts));
    progress.stage("comparing");
    Report report = compareInputs(std::move(inputs), options.inputs, options.filters);
    if (!options.quiet) {
        completeLedger(report);
    }
    return report;
}

void writeReport(const Report& report, const Options& options, Output& output) {
    if (options.format == Format::json) {
        writeJsonReport(report, output);
    } else if (options.format == Format::summary) {
        writeCounts(report.summary, output);
    } else {
        const bool toScreen = !options.outputFile && isTerminal(STDOUT_FILENO);
        const TextStyle style{.colours = wantsColours(options.colour, toScreen),
                              .columns = toScreen ? terminalColumns(STDOUT_FILENO) : std::nullopt};
        writeTextReport(report, style, output);
    }
    output.flush();
}

void writeToStandardOutput(std::string_view text) {
    writeAll(STDOUT_FILENO, "standard output", text);
}

void deliver(const Report& report, const Options& options) {
    if (options.quiet) {
        return;
    }
    if (!options.outputFile) {
        Output output(writeToStandardOutput);
        writeReport(report, options, output);
        return;
    }
    OutputFile file(*options.outputFile);
    Output output([&](std::string_view text) { file.write(text); });
    writeReport(report, options, output);
    file.commit();
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
    const Report report = compare(options);
    deliver(report, options);
    return report.tree->showsDifference() ? someDifference : noDifference;
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
