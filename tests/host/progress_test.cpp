// The progress line of the program, on terminals and elsewhere.
#include <algorithm>
#include <string>
#include <tuple>
#include <utility>

#include <gtest/gtest.h>

#include "program.h"

namespace depcompare::test {
namespace {

// What a terminal shows at the end.
std::string screenOf(const std::string& sent) {
    const std::string wipe = "\x1b[K";
    std::string screen;
    std::string line;
    std::size_t column = 0;
    for (std::size_t i = 0; i < sent.size(); ++i) {
        if (sent[i] == '\r') {
            column = 0;
        } else if (sent[i] == '\n') {
            screen += line + '\n';
            line.clear();
            column = 0;
        } else if (sent.compare(i, wipe.size(), wipe) == 0) {
            line.resize(std::min(column, line.size()));
            i += wipe.size() - 1;
        } else {
            line.resize(std::max(line.size(), column + 1), ' ');
            line[column++] = sent[i];
        }
    }
    return screen + line;
}

class ProgressLine : public Program {
  protected:
    // What the terminal gets. A progress line is drawn before the input comes; then the program's
    // threads show in "masks" which signals they block.
    [[nodiscard]] std::string sentTo(bool progress, const std::string& input,
                                     const std::string& environment,
                                     const std::string& arguments) const {
        const std::string wait =
            progress ? "timeout 20 sh -c 'until grep -q reading out; do sleep 0.02; done';"
                       "for p in /proc/[0-9]*; do [ $p/exe -ef $P ] && [ $p/cwd -ef . ] &&"
                       " grep -hs SigBlk $p/task/*/status >masks; done;"
                     : "";
        return onTerminal("{ " + wait + " cat '" + input + "'; } | " + environment,
                          (progress ? "--progress always " : "--progress never ") + arguments)
            .output;
    }
};

TEST_F(ProgressLine, everyStageIsALineWhereThereIsNoTerminal) {
    fs::copy_file(EXAMPLES "/notes-1.0.graphml", folder_ / "old");
    fs::copy_file(EXAMPLES "/notes-1.1.graphml", folder_ / "new");
    const std::string compared =
        "depcompare: reading old and new\n"
        "depcompare: building the graphs\n"
        "depcompare: comparing\n";
    const std::string converted =
        "depcompare: reading old\n"
        "depcompare: building the graph\n";
    const std::pair<const char*, std::string> cases[] = {
        {"old new", compared + "depcompare: writing the report\n"},
        {"-o x --report html=page --report json=y old new",
         compared + "depcompare: writing page\ndepcompare: writing y\ndepcompare: writing x\n"},
        {"--convert jgf -o graph old", converted + "depcompare: writing graph\n"},
        {"--textconv old", converted + "depcompare: writing the graph\n"},
        {"-q old new", ""},
    };
    for (const auto& [arguments, stages] : cases) {
        EXPECT_EQ(run(std::string("--progress always ") + arguments).error, stages);
        EXPECT_EQ(run(arguments).error, "");
    }
}

TEST_F(ProgressLine, nothingOfItStaysOnATerminal) {
    write("odd", R"({"graph": {"nodes": {"n0": {"metadata": {"type": "lib"}}, "n1": {}},)"
                 R"( "edges": [{"source": "n0", "target": "n2"}]}})");
    write("broken", "<graphml>\n<x>");
    const std::string older = EXAMPLES "/notes-1.0.graphml";
    const std::string toNewer = " - '" EXAMPLES "/notes-1.1.graphml' ";
    const std::tuple<std::string, const char*, std::string> cases[] = {
        {older, "PAGER=cat", toNewer},
        {older, "PAGER='sed s/^/:/'", toNewer},
        {older, "PAGER=nowhere", toNewer},
        {older, "PAGER=", "--report json=y" + toNewer},
        {older, "PAGER=", "-f markdown -o /dev/tty" + toNewer},
        {older, "PAGER=", toNewer + "| sort"},
        {"odd", "PAGER=", " - odd"},
        {"odd", "PAGER=cat", " - odd"},
        {"odd", "PAGER=", "--textconv -"},
        {"broken", "PAGER=", " - odd"},
    };
    for (const auto& [input, pager, arguments] : cases) {
        const std::string sent = sentTo(true, input, pager, arguments);
        EXPECT_NE(sent.find("\rreading standard input"), std::string::npos) << arguments;
        EXPECT_EQ(screenOf(sent), screenOf(sentTo(false, input, pager, arguments)))
            << input << ' ' << pager << ' ' << arguments;
    }
}

// A signal that its thread took would not wait for files that are put in their places.
TEST_F(ProgressLine, itsThreadTakesNoSignal) {
    (void)sentTo(true, EXAMPLES "/notes-1.0.graphml",
                 "PAGER=", " - '" EXAMPLES "/notes-1.1.graphml'");
    EXPECT_EQ(shell("cut -c1-24 masks | sort | uniq").output,
              "SigBlk:\t0000000000000000\nSigBlk:\tfffffffe7ffbfeff\n");
}

TEST_F(ProgressLine, itIsNeverWiderThanTheTerminal) {
    const std::string name = std::string(100, 'x') + "-end";
    fs::copy_file(EXAMPLES "/notes-1.0.graphml", folder_ / name);
    const std::string sent =
        sentTo(true, name, "{ stty columns 40 </dev/tty;", "-f summary - " + name + "; }");
    EXPECT_NE(sent.find("\rreading s...xxxxxxxxxxxxxxx-end (0.0 s)\x1b[K"), std::string::npos)
        << sent;
    EXPECT_EQ(screenOf(sent).find("reading"), std::string::npos) << sent;
}

}  // namespace
}  // namespace depcompare::test
