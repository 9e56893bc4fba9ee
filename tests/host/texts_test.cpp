// Texts in, texts out: documents and what is read from them, pairs of graphs and what is reported.
#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

#include <depcompare/messages/messages.h>
#include <gtest/gtest.h>
#include <boost/algorithm/string/replace.hpp>

#include "cli/options.h"
#include "formats/csv/csv_writer.h"
#include "formats/lines/lines_writer.h"
#include "host_texts.h"
#include "reports/json/json_report.h"
#include "reports/markdown/markdown_report.h"
#include "reports/text/text_report.h"
#include "text_cases.h"

namespace depcompare {
namespace {

using test::TextCase;
using test::written;

// What was read and warned of, or the graph as it is converted.
std::string textOf(const LoadedGraph& loaded, const Options& options) {
    if (options.conversion == GraphForm::lines) {
        return written([&](Output& output) { writeLines(*loaded.graph, output); });
    }
    if (options.conversion == GraphForm::csv) {
        const std::string table = written([&](Output& output) { writeCSV(*loaded.graph, output); });
        return boost::replace_all_copy(table, "\r", "\u240d");
    }
    std::string text = test::textOf(loaded);
    for (const std::string& warning : loaded.warnings) {
        text += "warning: " + warning + '\n';
    }
    return text;
}

// A document of one line may be in place of what the case is about.
std::string readingOf(const TextCase& example) {
    const auto& [about, words, parts] = example;
    const bool converts = words.find("conv") != words.npos;
    Options options = test::optionsOf(words + (converts ? " old" : " old new"));
    options.reading.requireFiles = false;
    if (parts.size() == 2) {
        return textOf(test::load(parts[0].empty() ? about : parts[0], options.reading), options);
    }
    const auto loaded = test::loadPair(parts[0], parts[1], options.reading);
    return textOf(loaded[0], options) + '\n' + textOf(loaded[1], options);
}

// The graphs are as `graphOf` has them, or documents. The last option may be the width of a terminal.
std::string reportOf(const TextCase& example) {
    const std::size_t end = example.options.find("--columns ");
    const Options options = test::optionsOf(example.options.substr(0, end) + " old new");
    TextStyle style{.colours = options.colour == When::always, .columns = std::nullopt};
    if (end != example.options.npos) {
        style.columns = std::stoul(example.options.substr(example.options.find(' ', end)));
    }
    const auto document = [](const std::string& part) {
        return part.starts_with('{') || part.starts_with('<') ? part : test::graphOf(part);
    };
    Inputs inputs =
        test::loadPair(document(example.parts[0]), document(example.parts[1]), options.reading);
    TellingKeys telling = options.showsTelling ? tellingKeysOf(inputs) : TellingKeys();
    const Report report = makeReport(std::move(inputs), {"old", "new"}, options.filters,
                                     options.insights, std::nullopt, std::move(telling));
    const std::string text = written([&](Output& output) {
        if (options.format == Format::json) {
            writeJsonReport(report, output);
        } else if (options.format == Format::markdown) {
            writeMarkdownReport(report, options.mostBytes.value_or(mostMarkdownBytes), output);
        } else if (options.format == Format::summary) {
            writeSummaryReport(report, style, output);
        } else {
            writeTextReport(report, style, output);
        }
    });
    return boost::replace_all_copy(text, "\x1b", "\u241b");
}

std::string resultOr(std::string (*resultOf)(const TextCase&), const TextCase& example) {
    try {
        return resultOf(example);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
}

TEST(Texts, documentsAreReadAsTheySay) {
    const auto cases = test::casesIn(READINGS);
    EXPECT_GT(cases.size(), 200U);
    for (const TextCase& each : cases) {
        test::expectResult(each, resultOr(readingOf, each));
    }
}

TEST(Texts, reportsSayWhatDiffers) {
    messages::registerMessages();
    const auto cases = test::casesIn(REPORTS);
    EXPECT_GT(cases.size(), 10U);
    for (const TextCase& each : cases) {
        test::expectResult(each, resultOr(reportOf, each));
    }
}

}  // namespace
}  // namespace depcompare
