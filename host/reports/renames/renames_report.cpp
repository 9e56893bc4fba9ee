#include "reports/renames/renames_report.h"

#include <stdexcept>
#include <string>
#include <string_view>

#include <fl/i18n/ustring.h>
#include <fmt/format.h>

#include "output/visible_text.h"

namespace depcompare {

namespace {

std::string wordOf(std::u16string_view id) {
    std::string text = fl::i18n::ustring_to_utf8(id);
    if (text.starts_with('!') || text.find_first_of("\t\r\n") != std::string::npos) {
        throw std::runtime_error(fmt::format(
            "the list of renames cannot hold the node ID {}: it begins with ! or has a tab or a "
            "line break",
            visible(text)));
    }
    return text;
}

std::string_view remarkOn(const ListedRename& rename) {
    return rename.found.stated       ? "stated"
           : rename.found.ambiguous  ? "ambiguous"
           : rename.found.probable() ? "probable"
                                     : "possible";
}

}  // namespace

void writeRenames(const Report& report, Output& output) {
    for (const ListedRename& rename : report.insights->renames) {
        output.print("{}\t{}\t{} {:.2f}\n", wordOf(rename.ids.left), wordOf(rename.ids.right),
                     remarkOn(rename), rename.found.score);
    }
}

}  // namespace depcompare
