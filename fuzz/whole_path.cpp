#include "whole_path.h"

#include <array>
#include <cstddef>
#include <exception>
#include <optional>
#include <stdexcept>
#include <utility>
#include <vector>

#include <fl/i18n/locale.h>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "formats/jgf/jgf_writer.h"
#include "formats/load_graphs.h"
#include "host/host_texts.h"
#include "host/report_contract.h"
#include "input/input.h"
#include "input/input_error.h"
#include "path_case.h"
#include "presentation/report.h"
#include "reader_fuzzing.h"
#include "reports/json/json_report.h"
#include "reports/markdown/markdown_report.h"
#include "reports/page/page_report.h"
#include "reports/renames/renames_report.h"
#include "reports/table/table_report.h"
#include "reports/text/text_report.h"

namespace depcompare::fuzz {

namespace {

using nlohmann::json;
using test::BrokenRule;
using test::written;

void require(bool holds, const char* rule) {
    if (!holds) {
        throw BrokenRule(rule);
    }
}

/// What varies besides the documents, each by a setting of its own.
struct Settings {
    explicit Settings(const PathCase& tried)
        : filters(allChoicesOfFilters()[tried.setting(0, 4)]),
          showsTelling(tried.setting(1, 2) == 1),
          insights{
              .detail = tried.setting(2, 2) == 0 ? InsightDetail::full : InsightDetail::shortened,
              .renames = std::array{RenameMode::report, RenameMode::off,
                                    RenameMode::apply}[tried.setting(3, 3)]},
          locale(std::array{"en", "de", "ja", "tr"}[tried.setting(4, 4)]),
          form(tried.setting(5, 8)),
          nodeID(std::array{"auto", "id", "name"}[tried.setting(6, 3)]),
          isNarrow(tried.setting(7, 2) == 1) {}

    EnabledFilters filters;
    bool showsTelling;
    InsightOptions insights;
    const char* locale;
    std::size_t form;
    const char* nodeID;
    bool isNarrow;
};

class WholePath {
  public:
    explicit WholePath(const PathCase& tried)
        : settings_(tried), documents_{tried.left(), tried.right()} {}

    void requireAll() {
        auto loaded = load(documents_[0], documents_[1]);
        auto swapped = load(documents_[1], documents_[0]);
        require(loaded.has_value() == swapped.has_value(),
                "two documents are refused on whichever side they are");
        if (!loaded) {
            return;
        }
        const Report report = makeReport(std::move(*loaded), {"old", "new"});
        const std::string text = textOf(report);
        const json content = json::parse(text);
        test::requireContract(content);
        require(report.tree->showsDifference() == test::showsDifference(content.at("tree")),
                "the exit status says whether the report shows a difference");
        requireWriters(report);
        require(textOf(report) == text, "a report that is written twice is the same");
        if (settings_.filters.empty() && settings_.insights.renames != RenameMode::apply) {
            const Report mirrored = makeReport(std::move(*swapped), {"new", "old"});
            test::requireMirrorImage(content, json::parse(textOf(mirrored)));
        }
        requireEqualToItself();
    }

  private:
    /// Returns: nothing if they are refused.
    std::optional<Inputs> load(const std::string& left, const std::string& right) {
        ReadOptions options{.nodeID = settings_.nodeID, .limits = limits};
        ChooseRenames choose;
        renames_.reset();
        if (settings_.insights.renames == RenameMode::apply) {
            choose = [&](const Inputs& inputs) {
                renames_ = listRenames(inputs, settings_.insights);
                return applyRenames(*renames_);
            };
        }
        try {
            return loadGraphs(
                {Input::fromText("old", left, limits), Input::fromText("new", right, limits)},
                options, [](std::string_view) {}, choose);
        } catch (const InputError&) {
            return std::nullopt;
        }
    }

    Report makeReport(Inputs inputs, std::array<std::string, 2> names) {
        TellingKeys telling = settings_.showsTelling ? tellingKeysOf(inputs) : TellingKeys();
        return depcompare::makeReport(std::move(inputs), std::move(names), settings_.filters,
                                      settings_.insights, renames_, std::move(telling));
    }

    static std::string textOf(const Report& report) {
        return written([&](Output& output) { writeJsonReport(report, output); });
    }

    // One of them at a time: the page alone takes as long as everything else.
    void requireWriters(const Report& report) const {
        const TextStyle style{
            .colours = settings_.isNarrow,
            .columns = settings_.isNarrow ? std::optional<std::size_t>(30) : std::nullopt};
        const std::size_t most = settings_.isNarrow ? fewestMarkdownBytes : mostMarkdownBytes;
        const std::string text = written([&](Output& output) {
            switch (settings_.form) {
                case 0:
                    return writeTextReport(report, style, output);
                case 1:
                    return writeSummaryReport(report, style, output);
                case 2:
                    return writeMarkdownReport(report, most, output);
                case 3:
                    return writePage(report, output);
                case 4:
                    return writeTableReport(report, {.guarded = settings_.isNarrow}, output);
                case 5:
                    return writeListOfRenames(report, output);
                default:
                    return writeJGF(*report.inputs[1].graph, output);
            }
        });
        require(settings_.form != 2 || text.size() <= most,
                "a Markdown report stays within its limit");
    }

    static void writeListOfRenames(const Report& report, Output& output) {
        try {
            writeRenames(report, output);
        } catch (const std::runtime_error&) {
            output.write("an ID has a character that separates renames\n");
        }
    }

    void requireEqualToItself() {
        settings_.filters.clear();
        auto loaded = load(documents_[0], documents_[0]);
        if (!loaded) {
            return;
        }
        const Report report = makeReport(std::move(*loaded), {"old", "old"});
        require(!report.summary.showsDifference && !report.tree->showsDifference(),
                "a graph compared with itself does not differ");
        test::requireNoDifference(json::parse(textOf(report)));
    }

    Settings settings_;
    std::array<std::string, 2> documents_;
    std::optional<std::vector<ListedRename>> renames_;  // of what was loaded last, if applied
};

}  // namespace

std::string brokenRule(std::string_view bytes) {
    const PathCase tried = PathCase::of(bytes);
    fl::i18n::Locale::setGlobal(fl::i18n::Locale(Settings(tried).locale));
    std::string problem;
    try {
        WholePath(tried).requireAll();
    } catch (const BrokenRule& broken) {
        problem = broken.what();
    } catch (const std::exception& error) {
        problem = fmt::format("an exception other than the reader's: {}", error.what());
    }
    fl::i18n::Locale::setGlobal(fl::i18n::Locale());
    return problem.empty()
               ? problem
               : fmt::format("{}\n--- settings and edits: {}\n--- left\n{}\n--- right\n{}\n",
                             problem, tried.letters, tried.left(), tried.right());
}

}  // namespace depcompare::fuzz
