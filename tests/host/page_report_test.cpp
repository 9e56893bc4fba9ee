// What of the page needs no browser: its tables under every choice of filters, and its plain part.
#include "reports/page/page_report.h"

#include <string>
#include <vector>

#include <fl/i18n/ustring.h>
#include <gtest/gtest.h>

#include "host_texts.h"
#include "presentation/entry_table.h"
#include "presentation/switched_trees.h"
#include "reports/page/html_text.h"

namespace depcompare {
namespace {

using test::compare;
using test::graphOf;

std::string older() {
    return graphOf(
        "@ timestamp=2026-01-01 tool=1; a checksum=1 k=1 same=; b; x type=lib; a>b; a>x; a>a");
}

std::string newer() {
    return graphOf(
        "@ timestamp=2026-02-01 tool=1; a checksum=2 k=2 same= new=; b; x type=lib name=X; a>b; "
        "a>x;"
        "a>b upstream_component=f; a>b type=use downstream_component=g");
}

std::string pageOf(const Report& report) {
    return test::written([&](Output& output) { writePage(report, output); });
}

std::string textOfRow(const ::comparisons::viewmodel::parameter::tessel::Entry& row) {
    std::string text = std::to_string(static_cast<unsigned>(row->getEditTypes()[0]));
    for (const auto& side : row->getParameters()) {
        const auto& shown = side->getParameter();
        text += shown ? " " + fl::i18n::ustring_to_utf8(shown->getName()) + "=" +
                            fl::i18n::ustring_to_utf8(shown->getValue())
                      : " none";
    }
    return text;
}

TEST(SwitchedTrees, everyChoiceShowsTheEntriesAndRowsOfItsOwnTree) {
    const Report report = compare(older(), newer());
    const SwitchedTrees trees(report.comparison, *report.tree);
    const auto choices = allChoicesOfFilters();
    ASSERT_EQ(choices.size(), 4U);
    for (std::size_t choice = 0; choice < choices.size(); ++choice) {
        EXPECT_EQ(placeOfChoice(choices[choice]), choice);
        const PresentedTree tree(report.comparison, choices[choice]);
        for (std::size_t entry = 0; entry < tree.entries().size(); ++entry) {
            EXPECT_EQ((trees.choicesThatShow(entry) >> choice) & 1U,
                      tree.entries()[entry].visible != 0 ? 1U : 0U);
            const SwitchedDetail detail = trees.detail(entry);
            std::vector<std::string> rows;
            std::vector<std::string> expected;
            for (const SwitchedTable& table : detail.tables) {
                for (std::size_t i = 0; i < table.choices.size(); ++i) {
                    if (((table.choices[i] >> choice) & 1U) != 0) {
                        rows.push_back(textOfRow(table.table->getEntries()[i]));
                    }
                }
            }
            const auto shown = tree.shownDetail(tree.entries()[entry].match);
            for (const auto& table : tablesOf(*shown)) {
                for (const auto& row : table->getEntries()) {
                    expected.push_back(textOfRow(row));
                }
            }
            EXPECT_EQ(rows, expected) << "entry " << entry << ", choice " << choice;
        }
    }
}

/// Returns: the part of the page that needs no scripts, lists in brackets, without other elements.
std::string plainPartOf(const Report& report) {
    const std::string page = pageOf(report);
    const std::size_t begin = page.find("<p class=\"inputs\">");
    std::string plain = page.substr(begin, page.find("</section>", begin) - begin);
    for (auto tag = plain.find('<'); tag != plain.npos; tag = plain.find('<', tag)) {
        const std::size_t end = plain.find('>', tag) + 1;
        const std::string name = plain.substr(tag, 4);
        plain.replace(tag, end - tag,
                      name == "<ul>" || name == "<ul " ? "["
                      : name == "</ul"                 ? "]"
                                                       : "");
    }
    return plain;
}

TEST(PageReport, thePlainPartHasTheCountsAndTheVisibleChanges) {
    Report report = compare(older(), newer());
    report.ledger.sides[0].warnings = {"<odd>"};
    EXPECT_EQ(
        plainPartOf(report),
        "old (2 files, 3 dependencies) compared with new (2 files, 4 dependencies)\n"
        "Warning: old: &lt;odd&gt;\n"
        "+ added\u2212 removed~ changed= unchanged\n"
        "Files0011\n"
        "Links0120\n"
        "Dependencies2102\n"
        "File properties1021\n"
        "Graph properties0011\n"
        "\n\nOverview\nThe structure changed.\n"
        "\nCycles\n1 \u2192 0: 1 gone\n\u2212 1 node, opened by loss of a \u2192 a\n"
        "Links\n-1: 1 rewired\n~2: 1 in types, 1 in an end only\n\n\n"
        "Changes\n[\n"
        "~ graph[~ Analysis time: Jan 1, 2026, 12:00:00\u202fAM \u2192 "
        "Feb 1, 2026, 12:00:00\u202fAM= tool: 1]\n"
        "~ a[~ Checksum: 1 \u2192 2~ k: 1 \u2192 2+ new= same][\u2212 \u2192 a[\u2212 depends ]\n"
        "~ \u2192 b[= depends + depends f+ use  \u2192 g]\n"
        "~ \u2192 x lib name or type of an end changed[= depends ]\n"
        "]\n= b\n]\n");
    const std::string filtered =
        plainPartOf(compare(older(), newer(), filtersNamed({"nonstructural"})));
    EXPECT_NE(
        filtered.find("Hidden by the non-structural filter: the graph, 1 file, 1 link, 4 rows.\n"),
        std::string::npos);
    EXPECT_EQ(filtered.substr(filtered.find("Changes\n")),
              "Changes\n[\n"
              "a[\u2212 \u2192 a[\u2212 depends ]\n"
              "~ \u2192 b[+ depends f+ use  \u2192 g]\n"
              "]\n]\n");
    EXPECT_NE(plainPartOf(compare(older(), older())).find("No differences.\n"), std::string::npos);
}

TEST(PageReport, theDataHaveNamesThatAreNotTheID) {
    EXPECT_NE(pageOf(compare(graphOf("b"), graphOf("a name=X; b")))
                  .find(R"(id="data-names" )"
                        R"(data-packing="plain">WA==<)"),
              std::string::npos);
}

TEST(PageReport, aLongPlainPartEndsAndSaysSo) {
    std::string files;
    for (int i = 0; i < 3000; ++i) {
        files += std::to_string(i) + ";";
    }
    const std::string page = pageOf(compare(graphOf(""), graphOf(files)));
    EXPECT_NE(page.find("1001 more entries are not in this list"), std::string::npos);
}

TEST(HtmlText, nothingOfItIsMarkup) {
    const std::pair<std::u16string, std::string> cases[] = {
        {u"</script><b a='\"&", "&lt;/script&gt;&lt;b a=&#39;&quot;&amp;"},
        {u"a\u202eb\n", "a\\u202eb\\n"},
        {u"\xd800", "\ufffd"},
        {std::u16string(399, u'a') + u"\U0001F600b",
         std::string(132, 'a') + "..." + std::string(262, 'a') + "\U0001F600b (402 characters)"},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(htmlText(text), expected);
    }
}

}  // namespace
}  // namespace depcompare
