#include "run.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <exception>
#include <list>
#include <memory>
#include <new>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <variant>
#include <vector>

#include <depcompare/messages/messages.h>
#include <fl/i18n/locale.h>
#include <fl/i18n/ustring.h>
#include <fmt/format.h>

#include "cli/command_line.h"
#include "deliver.h"
#include "formats/load_graphs.h"
#include "input/input.h"
#include "output/output.h"
#include "output/progress.h"
#include "output/terminal.h"
#include "output/visible_text.h"
#include "presentation/insights.h"
#include "presentation/report.h"
#include "reports/text/why_report.h"

namespace depcompare {

namespace {

using fl::i18n::Locale;

enum ExitStatus : int { noDifference = 0, someDifference = 1, failure = 2 };

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
        // An unreadable environment is not a reason to refuse the work.
        Locale::setGlobal(Locale());
    }
}

void warn(std::string_view warning) {
    writeAll(STDERR_FILENO, "standard error",
             fmt::format("depcompare: warning: {}\n", visible(warning)));
}

void warn(const LoadedGraph& input, const Options& options, Progress& progress) {
    progress.clear();
    const std::size_t count = options.quiet ? input.alarms : input.warnings.size();
    for (const std::string& warning : std::span(input.warnings).first(count)) {
        warn(fmt::format("{}: {}", input.source, warning));
    }
}

Input openInput(const Options& options, std::size_t side) {
    const std::string& name = options.names[side];
    return Input::open(options.inputs[side], name == "-" ? "standard input" : name,
                       options.reading.limits);
}

Inputs load(const Options& options, Progress& progress, const ChooseRenames& chooseRenames) {
    // Both are opened before either is read: a missing file must not wait for standard input.
    auto inputs = loadGraphs(
        {openInput(options, 0), openInput(options, 1)}, options.reading,
        [&](std::string_view name) { progress.stage(name); }, chooseRenames);
    for (const LoadedGraph& input : inputs) {
        warn(input, options, progress);
    }
    // A pattern with a slip in it would hide what a check is to find.
    for (const std::string& glob : unmatchedLinkTypes(inputs, options.insights)) {
        progress.clear();
        warn(fmt::format("--link-type {}: no dependency has such a type", glob));
    }
    return inputs;
}

void convert(const Options& options, Progress& progress) {
    const LoadedGraph input = loadGraph(openInput(options, 0), options.reading,
                                        [&](std::string_view name) { progress.stage(name); });
    warn(input, options, progress);
    deliverGraph(*input.graph, options, progress);
}

/// `insights` are null unless they are asked for.
bool differs(const PresentedTree& tree, const Insights* insights, FailOn failOn) {
    switch (failOn) {
        case FailOn::any:
            return tree.showsDifference();
        case FailOn::structural:
            return tree.showsStructuralDifference();
        case FailOn::cycles:
            return haveNewCycles(*insights);
        case FailOn::none:
            break;
    }
    return false;
}

/// Never destroyed: exiting frees the memory faster than the destructors would.
template <class Value>
const Value& keepToTheEnd(Value value) {
    static auto& kept = *std::make_unique<std::list<Value>>().release();
    return kept.emplace_back(std::move(value));
}

TellingKeys tellingKeysFor(const Inputs& inputs, const Options& options) {
    return options.showsTelling ? tellingKeysOf(inputs) : TellingKeys();
}

bool compareQuietly(const Inputs& inputs, std::optional<std::vector<ListedRename>> renames,
                    const Options& options) {
    const bool asksForCycles = options.failOn == FailOn::cycles;
    const Insights* insights = nullptr;
    if (options.asksForInsights || asksForCycles) {
        insights = &keepToTheEnd(findInsights(inputs, options.insights, std::move(renames)));
    }
    if (asksForCycles) {
        return haveNewCycles(*insights);
    }
    const auto& tree = keepToTheEnd(std::make_unique<PresentedTree>(
        dependency::comparisons::compareGraphs(inputs[0].graph, inputs[1].graph), options.filters,
        inputs[0].oldIDs, tellingKeysFor(inputs, options)));
    return differs(*tree, insights, options.failOn);
}

bool showWhy(const Inputs& inputs, const Options& options, Progress& progress) {
    const Why& why = keepToTheEnd(findWhy(inputs, options.insights, *options.why));
    if (!options.quiet) {
        deliverWhy(why, options, progress);
    }
    return options.failOn != FailOn::none && why.differs;
}

bool compare(const Options& options, Progress& progress) {
    std::optional<std::vector<ListedRename>> renames;
    ChooseRenames chooseRenames;
    if (options.insights.renames == RenameMode::apply) {
        chooseRenames = [&](const Inputs& inputs) {
            progress.stage("looking for renames");
            renames = listRenames(inputs, options.insights);
            return applyRenames(*renames);
        };
    }
    Inputs inputs = load(options, progress, chooseRenames);
    progress.stage("comparing");
    if (options.why) {
        return showWhy(inputs, options, progress);
    }
    if (options.quiet) {
        return compareQuietly(inputs, std::move(renames), options);
    }
    TellingKeys telling = tellingKeysFor(inputs, options);
    const Report& report =
        keepToTheEnd(makeReport(std::move(inputs), options.names, options.filters, options.insights,
                                std::move(renames), std::move(telling)));
    deliverReports(report, options, progress);
    return differs(*report.tree, report.insights.get(), options.failOn);
}

int perform(int argc, const char* const* argv) {
    const auto parsed = parseCommandLine(argc, argv);
    if (const auto* information = std::get_if<Information>(&parsed)) {
        StandardOutput().write(information->text);
        return noDifference;
    }
    const auto& options = std::get<Options>(parsed);
    for (const std::string& warning : options.warnings) {
        warn(warning);
    }
    setLocale(options);
    messages::registerMessages();
    Progress progress(options.quiet ? When::never : options.progress);
    if (options.conversion) {
        convert(options, progress);
        return noDifference;
    }
    return compare(options, progress) ? someDifference : noDifference;
}

/// Takes no memory.
void complainOfMemory() noexcept {
    constexpr std::string_view line = "depcompare: out of memory\n";
    // If it fails, there is nowhere left to report it but the exit status.
    static_cast<void>(::write(STDERR_FILENO, line.data(), line.size()) < 0);
}

void complain(std::string_view problem) noexcept {
    constexpr std::size_t longest = 2000;  // names of files included
    try {
        const std::u16string text = visible(fl::i18n::utf8_to_ustring(problem));
        const std::string line =
            fmt::format("depcompare: {}\n",
                        fl::i18n::ustring_to_utf8(shortened(text, longest, Measure::units)));
        writeAll(STDERR_FILENO, "standard error", line);
    } catch (const std::bad_alloc&) {
        complainOfMemory();
    } catch (...) {
        return;  // Nowhere left to report it but the exit status.
    }
}

/// Complains of the exception that is being handled; there is none if no memory was left to throw it.
void complainOfException() noexcept {
    try {
        if (std::current_exception() == nullptr) {
            complainOfMemory();
        } else {
            throw;
        }
    } catch (const std::bad_alloc&) {
        complainOfMemory();
    } catch (const std::exception& error) {
        complain(error.what());
    } catch (...) {
        complain("unknown error");
    }
}

/// Ends the process if an exception cannot be caught: it left a destructor or a thread. Unfinished files
/// have no names, and go with the process.
[[noreturn]] void endUncaught() noexcept {
    complainOfException();
    std::_Exit(failure);
}

/// Libraries that do not check their allocations crash if there is no memory left.
void endIfOutOfMemory(int /*signal*/) noexcept {
    constexpr std::size_t little = 1U << 24U;
    if (::mmap(nullptr, little, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0) ==
        MAP_FAILED) {  // NOLINT(performance-no-int-to-ptr): the system's constant.
        complainOfMemory();
        std::_Exit(failure);
    }
    // The instruction is repeated, and ends the process as usual.
}

/// Before any object is made, since that takes memory.
[[gnu::constructor(101)]] void watchForUncaught() noexcept {
    std::set_terminate(endUncaught);
    struct sigaction former {};
    if (::sigaction(SIGSEGV, nullptr, &former) == 0 && former.sa_handler == SIG_DFL) {
        struct sigaction once {};
        once.sa_handler = endIfOutOfMemory;
        once.sa_flags = static_cast<int>(SA_RESETHAND);
        ::sigaction(SIGSEGV, &once, nullptr);
    }
}

/// Opens standard descriptors that are closed: else the next file that is opened becomes one, and gets
/// what is meant for it. Reading and writing them fails.
void openStandardDescriptors() noexcept {
    for (const int number : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        // NOLINTBEGIN(cppcoreguidelines-pro-type-vararg): the system's interface.
        if (::fcntl(number, F_GETFD) < 0) {
            // The lowest free number, which is this one.
            static_cast<void>(::open("/dev/null", O_PATH));
        }
        // NOLINTEND(cppcoreguidelines-pro-type-vararg)
    }
}

/// Ends the process as the signal would have if the reader of the output has gone: it has seen
/// enough, and that is no error.
void endIfBrokenPipe(const std::system_error& error) noexcept {
    if (error.code() == std::error_code(EPIPE, std::generic_category())) {
        std::signal(SIGPIPE, SIG_DFL);  // NOLINT(cert-err33-c): it cannot fail for this signal.
        std::raise(SIGPIPE);            // NOLINT(cert-err33-c): what comes after it is the answer.
    }
}

}  // namespace

int run(int argc, const char* const* argv) noexcept {
    // Unfinished files are removed and the terminal is tidied up before the process ends.
    std::signal(SIGPIPE, SIG_IGN);  // NOLINT(cert-err33-c): it cannot fail for this signal.
    // A file that grows beyond its limit is a failed write.
    std::signal(SIGXFSZ, SIG_IGN);  // NOLINT(cert-err33-c): likewise.
    openStandardDescriptors();
    try {
        return perform(argc, argv);
    } catch (const std::system_error& error) {
        endIfBrokenPipe(error);
        complainOfException();
    } catch (...) {
        complainOfException();
    }
    return failure;
}

}  // namespace depcompare
