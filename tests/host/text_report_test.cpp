#include "reports/text/text_report.h"

#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "host_texts.h"

namespace depcompare {
namespace {

using test::compare;
using test::graphOf;
using test::textOf;

TEST(TextReport, namesCannotSteerTheTerminalNorTheLogOfABuild) {
    const std::string name = "\u00a0::warning" + std::string(90, ':');
    const std::string older = graphOf(name + ";##[group]");
    const std::string newer = graphOf(name + " k=::error" + std::string(99, ':') + ";##[group];" +
                                      name + ">##[group];##[group]>" + name);
    std::istringstream log(textOf(compare(older, newer)) +
                           textOf(compare(older, newer, filtersNamed({"nonstructural"}))));
    for (std::string line; std::getline(log, line);) {
        line.erase(0, line.find_first_not_of(" \u00a0"));
        EXPECT_FALSE(line.starts_with("::") || line.find("##[") != line.npos) << line;
    }
    const std::string text = textOf(
        compare(test::graphML(""),
                test::graphML(
                    // NOLINTNEXTLINE(misc-misleading-bidirectional): that is what is tested.
                    "<node id='a&#10;b\u202e\u009b1m'><data key='k&#9;'>\u009b2m</data></node>")));
    EXPECT_NE(text.find("+ a\\nb\\u202e\\x9b1m\n"), std::string::npos) << text;
    EXPECT_NE(text.find("+ k\\t  \\x9b2m\n"), std::string::npos) << text;
}

}  // namespace
}  // namespace depcompare
