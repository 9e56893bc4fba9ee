// Runs the program itself: what only a process has, and the bundled graphs.
#include <algorithm>
#include <filesystem>
#include <sstream>
#include <string>
#include <tuple>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "program.h"

namespace depcompare::test {
namespace {

using nlohmann::json;

// NOLINTBEGIN(cert-err58-cpp): a test that cannot even copy a path may end.
const std::string older = EXAMPLES "/ninja-v1.8.2.graphml";
const std::string newer = EXAMPLES "/ninja-v1.12.1.graphml";
const std::string bothInQuotes = "'" + older + "' '" + newer + "'";
// NOLINTEND(cert-err58-cpp)

class ProgramOnSamples : public Program {
  protected:
    void expectNumbers(const fs::path& samples, const json& pair) const {
        const std::string about = pair["old"].get<std::string>();
        const Outcome outcome = run("--format json --no-filter " + pair.value("options", "") +
                                    " '" + (samples / about).string() + "' '" +
                                    (samples / pair["new"].get<std::string>()).string() + "'");
        ASSERT_EQ(outcome.status, 1) << about << outcome.error;
        EXPECT_EQ(outcome.error, "") << about;
        const json summary = json::parse(outcome.output)["summary"];
        for (const char* kind : {"files", "groups"}) {
            json counted = summary[kind];
            counted["common"] = counted["changed"].get<int>() + counted["unchanged"].get<int>();
            for (const auto& [number, expected] : pair[kind].items()) {
                EXPECT_EQ(counted[number], expected) << about << ' ' << kind << ' ' << number;
            }
        }
    }
};

TEST_F(ProgramOnSamples, theTrueNumbersOfAllSamplePairsComeOut) {
    for (const auto& [samples, leastPairs] :
         {std::pair(fs::path(EXAMPLES), 5U), std::pair(fs::path(TEST_DATA), 14U)}) {
        const json truth = json::parse(contentOf(samples / "true_numbers.json"));
        ASSERT_GE(truth.size(), leastPairs);
        for (const json& pair : truth) {
            expectNumbers(samples, pair);
        }
    }
}

TEST_F(Program, theStatusIsThatOfDiff) {
    EXPECT_EQ(run("-q " + bothInQuotes).status, 1);
    EXPECT_EQ(run("-q " + bothInQuotes).output, "");
    EXPECT_EQ(run("-q '" + older + "' '" + older + "'").status, 0);
    const Outcome missing = run("nowhere '" + older + "'");
    EXPECT_EQ(missing.status, 2);
    EXPECT_EQ(missing.output, "");
    EXPECT_EQ(missing.error, "depcompare: nowhere: No such file or directory\n");
    EXPECT_EQ(run(". '" + older + "'").error, "depcompare: .: Is a directory\n");
    EXPECT_EQ(run("--locale '!' " + bothInQuotes).error,
              "depcompare: '!' is not the name of a locale\n");
    EXPECT_EQ(run("").status, 2);
    EXPECT_EQ(run("--help").status, 0);
}

TEST_F(Program, theStatusIsThatOfWhatTheFiltersLeave) {
    const auto file = [](const std::string& node, const std::string& edge = "") {
        return "<graphml><graph><node id='a'/>" + node + "<node id='c'/>" + edge +
               "<edge source='a' target='b'/></graph></graphml>";
    };
    write("one", file("<node id='b'/>"));
    write("same", file("<node id='b'></node>"));
    write("property", file("<node id='b'><data key='k'>1</data></node>"));
    write("edge", file("<node id='b'/>", "<edge source='a' target='c'/>"));
    const std::tuple<const char*, const char*, int> cases[] = {
        {"same", "", 0},
        {"same", "--no-filter ", 0},
        {"property", "", 0},
        {"property", "--no-filter ", 1},
        {"property", "--filter unchanged ", 1},
        {"property", "--filter unchanged --filter nonstructural ", 0},
        {"edge", "", 1},
        {"edge", "--no-filter ", 1},
        {"edge", "--filter unchanged ", 1},
        {"edge", "--filter nonstructural ", 1},
    };
    for (const auto& [other, options, status] : cases) {
        for (const char* form : {"", "-q ", "-f json ", "-f summary "}) {
            EXPECT_EQ(run(std::string(form) + options + "one " + other).status, status)
                << form << options << other;
        }
    }
    EXPECT_EQ(run("--no-filter --filter unchanged one same").status, 2);

    write("other", file("<node id='other'/><node id='b'/>"));
    write("named", file("<node id='b'><data key='name'>B</data></node>"));
    const std::tuple<const char*, const char*, int> causes[] = {
        {"property", "structural", 0}, {"property", "none", 0},    {"property", "any", 1},
        {"edge", "structural", 1},     {"edge", "none", 0},        {"other", "structural", 1},
        {"same", "structural", 0},     {"named", "structural", 1}, {"nowhere", "none", 2},
    };
    for (const auto& [other, cause, status] : causes) {
        EXPECT_EQ(
            run(std::string("--no-filter -f summary --fail-on ") + cause + " one " + other).status,
            status)
            << cause << ' ' << other;
    }
}

TEST_F(Program, aPipedReportFitsEightyColumns) {
    fs::copy_file(older, folder_ / "old");
    fs::copy_file(newer, folder_ / "new");
    for (const char* filters : {"", "--no-filter ", "--filter unchanged "}) {
        std::istringstream report(run(std::string(filters) + "old new").output);
        std::size_t lines = 0;
        for (std::string line; std::getline(report, line); ++lines) {
            // Arrows are one column and three bytes.
            const auto arrows = std::count(line.begin(), line.end(), '\xE2');
            EXPECT_LE(line.size() - 2 * static_cast<std::size_t>(arrows), 80U) << line;
        }
        EXPECT_GT(lines, 100U);
    }
}

TEST_F(Program, standardInputIsAGraph) {
    const Outcome outcome = shell("$P -f json - '" + older + "' <'" + older + "'");
    EXPECT_EQ(outcome.status, 0) << outcome.error;
    EXPECT_EQ(json::parse(outcome.output)["left"]["source"], "-");
    EXPECT_EQ(shell("echo '<graphml>' | $P - '" + older + "'").error,
              "depcompare: standard input:2: not well-formed XML: no element found\n");
}

TEST_F(Program, ofTwoFaultyInputsTheLeftOneIsTold) {
    write("one", "<graphml>\n<x>");
    write("other", "<html/>");
    EXPECT_EQ(run("one other").error, "depcompare: one:2: not well-formed XML: no element found\n");
    EXPECT_EQ(run("other one").error,
              "depcompare: other:1: not GraphML: the outermost element is \"html\"\n");
    // A missing file is told before standard input is read.
    EXPECT_EQ(shell("$P - nowhere </dev/zero").error,
              "depcompare: nowhere: No such file or directory\n");
}

TEST_F(Program, warningsAreLinesOnStandardErrorAndStandInTheLedger) {
    write("one", R"({"graph": {"nodes": {"n0": {"metadata": {"type": "lib"}}, "n1": {}},)"
                 R"( "edges": [{"source": "n0", "target": "n2"}]}})");
    const Outcome outcome = run("-f json one one");
    const std::string added = R"(the node "n2" stands in edges only; it was added)";
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.error.find("depcompare: warning: one: " + added + "\n"), 0U) << outcome.error;
    EXPECT_EQ(std::count(outcome.error.begin(), outcome.error.end(), '\n'), 4);
    EXPECT_EQ(json::parse(outcome.output)["ledger"]["right"]["warnings"][0], added);
    EXPECT_NE(run("one one").output.find("Warning: the node \"n2\" stands in edges only"),
              std::string::npos);
    EXPECT_EQ(run("-q one one").error, "");
}

TEST_F(Program, aConvertedGraphIsNoDifferentFromItsOrigin) {
    ASSERT_EQ(run("--convert jgf -o new.jgf '" + newer + "'").status, 0);
    EXPECT_EQ(run("--no-filter '" + newer + "' new.jgf").status, 0);
    EXPECT_TRUE(run("--convert jgf new.jgf").output == contentOf(folder_ / "new.jgf"));
    EXPECT_EQ(run("--convert jgf broken").status, 2);
}

TEST_F(Program, onlyForGitAnEmptyFileIsAGraph) {
    write("empty", "");
    const std::string pair = " empty '" + newer + "'";
    EXPECT_EQ(run("-q" + pair).status, 2);
    EXPECT_EQ(run("-q /dev/null '" + newer + "'").status, 2);
    EXPECT_EQ(run("--git" + pair).status, 0);
    EXPECT_EQ(run("--fail-on any -q --git" + pair).status, 1);
    EXPECT_EQ(run("--textconv empty").status, 0);
    EXPECT_EQ(run("--convert jgf empty").status, 2);
}

TEST_F(Program, theOutputFileIsWholeOrUntouched) {
    write("report", "old");
    const std::string newerThere = "'" + newer + "'";
    EXPECT_EQ(run("-o report '" + older + "' broken").status, 2);
    write("broken", "<graphml>");
    EXPECT_EQ(run("-o report '" + older + "' broken").status, 2);
    EXPECT_EQ(contentOf(folder_ / "report"), "old");
    const auto files = filesInFolder();
    const Outcome outcome = run("-o report '" + older + "' " + newerThere);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(contentOf(folder_ / "report"), run("'" + older + "' " + newerThere).output);
    EXPECT_EQ(filesInFolder(), files);
    EXPECT_EQ(run("-q -o quiet '" + older + "' " + newerThere).status, 1);
    EXPECT_FALSE(fs::exists(folder_ / "quiet"));
}

TEST_F(Program, theOutputFileKeepsItsLinkAndPermissions) {
    const Outcome outcome = shell(
        "echo old >real; chmod 604 real; ln -s real link; umask 027; for file in link new; do "
        "$P -f summary -o $file " +
        bothInQuotes + "; done; cmp real new; stat -c '%n %A' link real new");
    EXPECT_EQ(outcome.output, "link lrwxrwxrwx\nreal -rw----r--\nnew -rw-r-----\n");
}

TEST_F(Program, severalReportsAreWrittenAtOnceOrNone) {
    const Outcome outcome =
        run("-f summary --report json=a.json --report markdown=b.md " + bothInQuotes);
    EXPECT_EQ(outcome.status, 1) << outcome.error;
    EXPECT_EQ(outcome.output, run("-f summary " + bothInQuotes).output);
    EXPECT_EQ(outcome.output.find("                     added   removed"), 0U);
    EXPECT_TRUE(run(bothInQuotes).output.ends_with(outcome.output));
    EXPECT_EQ(contentOf(folder_ / "a.json"), run("-f json " + bothInQuotes).output);
    EXPECT_EQ(contentOf(folder_ / "b.md"), run("-f markdown " + bothInQuotes).output);
    EXPECT_EQ(run("--report json=c.json --report html=nowhere/d.html " + bothInQuotes).status, 2);
    EXPECT_EQ(shell("$P --report json=c.json " + bothInQuotes + " >/dev/full").status, 2);
    EXPECT_FALSE(fs::exists(folder_ / "c.json"));
}

TEST_F(Program, aReportThatCannotBeWrittenIsTrouble) {
    const std::string command = "$P '" + older + "' '" + newer + "'";
    EXPECT_EQ(shell(command + " >/dev/full").error,
              "depcompare: standard output: No space left on device\n");
    EXPECT_EQ(shell(command + " >&-").status, 2);
    EXPECT_EQ(shell("{ sleep 0.2; " + command + "; echo $? >status; } | true; sleep 1").error,
              "depcompare: standard output: Broken pipe\n");
    EXPECT_EQ(contentOf(folder_ / "status"), "2\n");
    EXPECT_EQ(shell(command + " -o nowhere/report").status, 2);
    EXPECT_EQ(shell("$P --version >/dev/full").status, 2);
}

TEST_F(Program, optionsThenTheEnvironmentDecideAboutColours) {
    const std::tuple<const char*, const char*, bool> cases[] = {
        {"TERM=xterm", "", false},
        {"TERM=xterm", "--color always ", true},
        {"CLICOLOR_FORCE=1", "", true},
        {"CLICOLOR_FORCE=0", "", false},
        {"CLICOLOR_FORCE=1 NO_COLOR=1", "", false},
        {"CLICOLOR_FORCE=1 NO_COLOR=", "", true},
        {"CLICOLOR_FORCE=1", "--color never ", false},
        {"NO_COLOR=1", "--color always ", true},
        {"TERM=xterm GIT_PAGER_IN_USE=true", "", true},
        {"TERM=dumb GIT_PAGER_IN_USE=true", "", false},
    };
    for (const auto& [environment, options, coloured] : cases) {
        const Outcome outcome =
            shell(std::string("export ") + environment + "; $P " + options + bothInQuotes);
        EXPECT_EQ(outcome.output.find("\x1b[32m+ ") != std::string::npos, coloured)
            << environment << ' ' << options;
    }
}

TEST_F(Program, aPagerShowsTextOnATerminal) {
    struct Case {
        const char* environment;
        const char* options;
        const char* paged;  // first word that the pager got; none if it did not run
        bool direct;        // whether the terminal got the report
    };
    const Case cases[] = {
        {"DEPCOMPARE_PAGER='cat >paged' PAGER=false", "", "Comparing", false},
        {"PAGER='cat >paged'", "", "Comparing", false},
        {"PAGER='echo $LESS >paged'", "", "FRX", false},
        {"LESS=i PAGER='echo $LESS >paged'", "", "i", false},
        {"PAGER='cat >paged' DEPCOMPARE_PAGER=", "", "", true},
        {"PAGER='cat >paged' DEPCOMPARE_PAGER=cat", "", "", true},
        {"PAGER='cat >paged' TERM=dumb", "", "", true},
        {"PAGER='cat >paged'", "--no-pager ", "", true},
        {"PAGER='cat >paged'", "-f summary ", "", true},
        {"PAGER='cat >paged'", "-q ", "", false},
        {"PAGER='cat >paged'", "-o file ", "", false},
        {"PAGER='nowhere >paged'", "", "", true},
        {"PAGER='cat >paged'", "--fail-on any --git ", "Comparing", false},
    };
    for (const auto& [environment, options, paged, direct] : cases) {
        const std::string about = std::string(environment) + ' ' + options;
        const Outcome outcome = onTerminal(environment, options + bothInQuotes);
        EXPECT_EQ(outcome.status, 1) << about << outcome.output;
        std::istringstream shown(contentOf(folder_ / "paged"));
        std::string word;
        shown >> word;
        EXPECT_EQ(word, paged) << about;
        EXPECT_EQ(outcome.output.find("Graph properties") != std::string::npos, direct) << about;
    }
    fs::remove(folder_ / "paged");
    EXPECT_EQ(shell("PAGER='cat >paged' $P " + bothInQuotes).output.find("Comparing"), 0U);
    EXPECT_FALSE(fs::exists(folder_ / "paged"));
}

TEST_F(Program, quittingThePagerEarlyIsNotAnError) {
    const std::string pair =
        "--no-filter '" EXAMPLES "/redis-6.2.0.graphml' '" EXAMPLES "/redis-7.4.0.graphml'";
    for (const char* pager : {"true", "head -n 1", "exit 3"}) {
        const Outcome outcome = onTerminal("PAGER='" + std::string(pager) + "'", pair);
        EXPECT_EQ(outcome.status, 1) << pager;
        EXPECT_EQ(outcome.output.find("depcompare: "), std::string::npos) << outcome.output;
    }
}

TEST_F(Program, theLocaleComesFromTheOptionThenFromTheEnvironment) {
    const std::string command = "$P -f json '" + older + "' '" + older + "' | head -c 100";
    const std::pair<const char*, const char*> cases[] = {
        {"", "\"locale\":\"en\""},
        {"LC_ALL= LC_MESSAGES=tr_TR.UTF-8 LANG=de_DE", "\"locale\":\"tr_TR\""},
        {"LC_ALL= LC_MESSAGES= LANG=de_DE.UTF-8", "\"locale\":\"de_DE\""},
        {"LC_ALL=12/!", "\"locale\":\"en\""},
    };
    for (const auto& [environment, expected] : cases) {
        const Outcome outcome = shell(std::string(environment) + " " + command);
        EXPECT_NE(outcome.output.find(expected), std::string::npos) << outcome.output;
    }
    EXPECT_NE(
        run("-f json --locale ja '" + older + "' '" + older + "'").output.find("\"locale\":\"ja\""),
        std::string::npos);
}

}  // namespace
}  // namespace depcompare::test
