#include "reports/page/page_report.h"

#include <array>
#include <string_view>

#include "reports/page/embedded_page.h"
#include "reports/page/html_text.h"
#include "reports/page/page_changes.h"
#include "reports/page/page_data.h"

namespace depcompare {

namespace {

std::string_view withoutFolders(std::string_view path) {
    return path.substr(path.rfind('/') + 1);
}

void writeTitle(const Report& report, Output& output) {
    const std::array<std::string_view, 2> paths{report.inputs[0].source, report.inputs[1].source};
    const std::array<std::string_view, 2> names{withoutFolders(paths[0]), withoutFolders(paths[1])};
    const auto& shown = names[0] == names[1] ? paths : names;
    output.print("{} \u2192 {}", htmlText(shown[0]), htmlText(shown[1]));
}

}  // namespace

void writePage(const Report& report, Output& output) {
    for (const PagePiece& piece : embeddedPage()) {
        output.write(piece.text);
        switch (piece.next) {
            case PageSlot::none:
                break;
            case PageSlot::title:
                writeTitle(report, output);
                break;
            case PageSlot::changes:
                writePageChanges(report, output);
                break;
            case PageSlot::data:
                writePageData(report, output);
                break;
        }
    }
}

}  // namespace depcompare
