// What of the page needs no browser: its tables under every choice of filters, and its plain part.
#include "reports/page/page_report.h"

#include <zlib.h>

#include <string>
#include <vector>

#include <fl/i18n/ustring.h>
#include <gtest/gtest.h>
#include <boost/archive/iterators/binary_from_base64.hpp>
#include <boost/archive/iterators/transform_width.hpp>

#include "host_texts.h"
#include "presentation/switched_trees.h"
#include "reports/page/html_text.h"
#include "reports/page/packed_bytes.h"

namespace depcompare {
namespace {

using test::compare;
using test::graphML;

std::string older() {
    return graphML(
        "<data key='timestamp'>2026-01-01</data><data key='tool'>1</data>"
        "<node id='a'><data key='checksum'>1</data><data key='k'>1</data><data key='same'/></node>"
        "<node id='b'/><node id='x'><data key='type'>lib</data></node>"
        "<edge source='a' target='b'/><edge source='a' target='x'/>");
}

std::string newer() {
    return graphML(
        "<data key='timestamp'>2026-02-01</data><data key='tool'>1</data>"
        "<node id='a'><data key='checksum'>2</data><data key='k'>2</data><data key='same'/>"
        "<data key='new'/></node>"
        "<node id='b'/><node id='x'><data key='type'>lib</data><data key='name'>X</data></node>"
        "<edge source='a' target='b'/><edge source='a' target='x'/>"
        "<edge source='a' target='b'><data key='upstream_component'>f</data></edge>");
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

TEST(PageReport, thePlainPartHasTheCountsAndTheVisibleChanges) {
    const std::string page = pageOf(compare(older(), newer(), filtersNamed({"nonstructural"})));
    const std::size_t begin = page.find("<ul class=\"changes\">");
    std::string plain = page.substr(begin, page.find("</section>", begin) - begin);
    for (auto tag = plain.find('<'); tag != plain.npos; tag = plain.find('<', tag)) {
        plain.erase(tag, plain.find('>', tag) - tag + 1);
    }
    EXPECT_EQ(plain, "\na~ \u2192 b+ depends f\n\n\n");
    EXPECT_NE(page.find("<tr><th scope=\"row\">Dependencies</th><td>1</td><td>0</td><td>0</td>"),
              std::string::npos);
    EXPECT_NE(pageOf(compare(older(), older())).find("<p>No differences.</p>"), std::string::npos);
}

TEST(PageReport, aLongPlainPartEndsAndSaysSo) {
    std::string files;
    for (int i = 0; i < 3000; ++i) {
        files += "<node id='" + std::to_string(i) + "'/>";
    }
    const std::string page = pageOf(compare(graphML(""), graphML(files)));
    EXPECT_NE(page.find("1001 more entries are not in this list"), std::string::npos);
}

TEST(HtmlText, nothingOfItIsMarkup) {
    const std::pair<std::u16string, std::string> cases[] = {
        {u"</script><b a='\"&", "&lt;/script&gt;&lt;b a=&#39;&quot;&amp;"},
        {u"a\u202eb\n", "a\\u202eb\\n"},
        {u"\xd800", "\ufffd"},
        {std::u16string(399, u'a') + u"\U0001F600b",
         std::string(399, 'a') + "\u2026 (402 characters)"},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(htmlText(text), expected);
    }
}

std::string bytesOf(const std::string& base64) {
    using namespace boost::archive::iterators;
    using Bytes = transform_width<binary_from_base64<std::string::const_iterator>, 8, 6>;
    return {Bytes(base64.begin()), Bytes(base64.end())};
}

TEST(PackedBytes, muchIsAZlibStreamAndLittleIsPlain) {
    PackedBytes little;
    little.add("ab");
    little.addNumber(300);
    const auto plain = little.take();
    EXPECT_EQ(plain.packing, PackedBytes::Packing::plain);
    EXPECT_EQ(plain.letters, "YWKsAg==");

    PackedBytes much;
    std::string all;
    for (int i = 0; i < 100000; ++i) {
        all += static_cast<char>(i % 251 * i % 251);
    }
    much.add(all);
    much.add(all);
    all += all;
    const auto packed = much.take();
    EXPECT_EQ(packed.packing, PackedBytes::Packing::deflate);
    const std::string bytes = bytesOf(packed.letters.substr(0, packed.letters.find('=')));
    std::string unpacked(all.size() + 1, '\0');
    uLongf size = unpacked.size();
    ASSERT_EQ(::uncompress(reinterpret_cast<Bytef*>(unpacked.data()), &size,
                           reinterpret_cast<const Bytef*>(bytes.data()), bytes.size()),
              Z_OK);
    unpacked.resize(size);
    EXPECT_TRUE(unpacked == all);
}

}  // namespace
}  // namespace depcompare
