#include "run.h"

#include <unistd.h>

#include <array>
#include <csignal>
#include <exception>
#include <list>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include <depcompare/messages/messages.h>
#include <fl/i18n/locale.h>
#include <fmt/format.h>

#include "cli/command_line.h"
#include "deliver.h"
#include "formats/load_graphs.h"
#include "input/input.h"
#include "output/output.h"
#include "output/progress.h"
#include "output/terminal.h"
#include "output/visible_text.h"
#include "presentation/report.h"

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

void warn(const LoadedGraph& input, const Options& options, Progress& progress) {
    if (options.quiet) {
        return;
    }
    progress.clear();
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

Report compare(const Options& options, Progress& progress) {
    // Both are opened before either is read: a missing file must not wait for standard input.
    auto inputs = loadGraphs({openInput(options, 0), openInput(options, 1)}, options.reading,
                             [&](std::string_view name) { progress.stage(name); });
    for (const LoadedGraph& input : inputs) {
        warn(input, options, progress);
    }
    progress.stage("comparing");
    Report report = compareInputs(std::move(inputs), options.names, options.filters);
    if (!options.quiet) {
        completeLedger(report);
    }
    return report;
}

void convert(const Options& options, Progress& progress) {
    const LoadedGraph input = loadGraph(openInput(options, 0), options.reading,
                                        [&](std::string_view name) { progress.stage(name); });
    warn(input, options, progress);
    deliverGraph(*input.graph, options, progress);
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

// The system takes the memory of an ended process back faster than a large report could be taken
// apart, so nobody does.
const Report& keepToTheEnd(Report report) {
    static auto& kept = *std::make_unique<std::list<Report>>().release();
    return kept.emplace_back(std::move(report));
}

int perform(int argc, const char* const* argv) {
    const auto parsed = parseCommandLine(argc, argv);
    if (const auto* information = std::get_if<Information>(&parsed)) {
        writeAll(STDOUT_FILENO, "standard output", information->text);
        return noDifference;
    }
    const auto& options = std::get<Options>(parsed);
    setLocale(options);
    messages::registerMessages();
    Progress progress(options.quiet ? When::never : options.progress);
    if (options.conversion) {
        convert(options, progress);
        return noDifference;
    }
    const Report& report = keepToTheEnd(compare(options, progress));
    if (!options.quiet) {
        deliverReports(report, options, progress);
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
