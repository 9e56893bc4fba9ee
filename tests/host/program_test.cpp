// Runs the program itself: what only a process has, and the bundled graphs.
#include <algorithm>
#include <filesystem>
#include <iterator>
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
const std::string older = "'" EXAMPLES "/ninja-v1.8.2.graphml'";
const std::string newer = "'" EXAMPLES "/ninja-v1.12.1.graphml'";
const std::string both = older + ' ' + newer;
// NOLINTEND(cert-err58-cpp)

class SamplePairs : public Program {
  protected:
    // Changed versions, and nothing else of a file on both sides, are visible by default.
    void expectVersions(const json& pair, const std::string& words) const {
        const json report = json::parse(run("-f json " + words).output);
        ASSERT_EQ(report.contains("telling"), pair.contains("versions")) << words;
        if (!pair.contains("versions")) {
            return;
        }
        EXPECT_EQ(report["versions"], pair["versions"]) << words;
        std::size_t changed = 0;
        for (const json& file : report["tree"]["children"]) {
            if (file["edit"] == "changed" && file["visible"] == true) {
                ++changed;
                EXPECT_EQ(file["detail"]["rows"].size(), 1U);
                EXPECT_EQ(file["detail"]["rows"][0]["left"]["name"], "version");
            }
        }
        std::size_t expected = 0;
        for (const json& count : pair["versions"]) {
            expected += count.get<std::size_t>();
        }
        EXPECT_EQ(changed, expected) << words;
        const json filtered = json::parse(run("-f json --filter nonstructural " + words).output);
        EXPECT_FALSE(filtered.contains("telling") || filtered.contains("versions")) << words;
    }
};

TEST_F(SamplePairs, theTrueNumbersOfAllSamplePairsComeOut) {
    for (const auto& [samples, leastPairs] :
         {std::pair(fs::path(EXAMPLES), 5U), std::pair(fs::path(TEST_DATA), 31U)}) {
        const json truth = json::parse(contentOf(samples / "true_numbers.json"));
        ASSERT_GE(truth.size(), leastPairs);
        for (const json& pair : truth) {
            const std::string about = pair["old"].get<std::string>();
            const std::string words = pair.value("options", "") + " '" +
                                      (samples / about).string() + "' '" +
                                      (samples / pair["new"].get<std::string>()).string() + "'";
            const Outcome outcome = run("--format json --no-filter " + words);
            ASSERT_EQ(outcome.status, 1) << about << outcome.error;
            EXPECT_EQ(outcome.error, "") << about;
            const json report = json::parse(outcome.output);
            const json& summary = report["summary"];
            for (const char* kind : {"files", "groups"}) {
                json counted = summary[kind];
                counted["common"] = counted["changed"].get<int>() + counted["unchanged"].get<int>();
                for (const auto& [number, expected] : pair[kind].items()) {
                    EXPECT_EQ(counted[number], expected) << about << ' ' << kind << ' ' << number;
                }
            }
            const json insights = pair.value("insights", json::object());
            for (const auto& [place, expected] : insights.items()) {
                const json& found = report["insights"][json::json_pointer(place)];
                EXPECT_EQ(found.is_array() ? json(found.size()) : found, expected) << place;
            }
            expectVersions(pair, words);
        }
    }
}

TEST_F(Program, theLineOfVersionsTakesNoneThatReachNeeds) {
    const std::string text =
        run("'" TEST_DATA "/npm/lock-1.0.json' '" TEST_DATA "/npm/lock-1.1.json'").output;
    EXPECT_NE(text.find("+ notes -> ms@2.1.3: 1 file gains 1\n"), text.npos) << text;
}

TEST_F(Program, errorsAreOneLineAndStatusTwo) {
    write("cut", "<graphml>\n<x>");
    write("html", "<html/>");
    write("empty", "");
    const std::pair<std::string, const char*> cases[] = {
        {"nowhere " + older, "nowhere: No such file or directory"},
        {". " + older, ".: a folder, not the file of a graph"},
        {"--locale '!' " + both, "'!' is not the name of a locale"},
        {"", "two graphs are needed, the old and the new one; --help says more"},
        {"cut html", "cut:2: not well-formed XML: no element found"},
        {"html cut",
         "html: looks like a web page, which is not read; the server may ask for a login, or the "
         "address be that of a page about the file"},
        {"- " + older + " <cut", "standard input:2: not well-formed XML: no element found"},
        // A missing file is told before standard input is read.
        {"- nowhere </dev/zero", "nowhere: No such file or directory"},
        {"empty " + older,
         "empty: the file is empty or blank; did the command that wrote it fail?"},
        {"--git - empty </dev/null", "./-: No such file or directory"},
        {"--convert jgf empty",
         "empty: the file is empty or blank; did the command that wrote it fail?"},
        {both + " >/dev/full", "standard output: No space left on device"},
        {"--version >/dev/full", "standard output: No space left on device"},
        {both + " >&-", "standard output: Bad file descriptor"},
        {both + " -o nowhere/report", "nowhere/report: No such file or directory"},
    };
    for (const auto& [words, expected] : cases) {
        const Outcome outcome = run(words);
        EXPECT_EQ(outcome.status, 2) << words;
        EXPECT_EQ(outcome.output, "") << words;
        EXPECT_EQ(outcome.error, std::string("depcompare: ") + expected + "\n");
    }
    const Outcome standardError = shell("$P --report json=r " + both + " 2>>r; cat r");
    EXPECT_EQ(standardError.output,
              "depcompare: r is where standard error goes; each report needs its own file\n");
    // A reader that has seen enough ends the process as the signal would.
    EXPECT_EQ(shell("{ sleep 0.2; $P " + both + "; echo $? >status; } | true; sleep 1").error, "");
    EXPECT_EQ(contentOf(folder_ / "status"), "141\n");
}

TEST_F(Program, optionsOfInsightsAreCheckedBeforeAnythingIsWritten) {
    write("old", "a x\na y/x\n");
    write("new", "a b\na y/x\n");
    write("bad", "x\ta\n\nx a\n");
    const std::pair<const char*, const char*> cases[] = {
        {"--insights all", "--insights: \"all\" is none of off, short, full"},
        {"--area-depth 0", "--area-depth: Value 0 not in range 1 to 1000"},
        {"--area p --area-depth 2", "--area-depth excludes --area"},
        {"--area p", "new: no node has the property \"p\", here or in the other graph (--area)"},
        {"--area-separator ''", "--area-separator: the text is empty"},
        {"--link-type '!'", "--link-type: \"!\" names no type"},
        {"--fail-on cycles --insights off", "--fail-on cycles excludes --insights off"},
        {"--report renames=r --renames off",
         "a report of renames excludes --insights off and --renames off"},
        {"--rename x", "--rename: x is not OLD=NEW; IDs with a = can be in a file for --renames"},
        {"--rename x=b --renames off", "stated renames exclude --renames off"},
        {"--rename z=b", "old: node \"z\" of a stated rename does not exist"},
        {"--rename a=b", "new: node \"a\" of a stated rename was not removed"},
        {"--rename x=a", "old: node \"a\" of a stated rename was not added"},
        {"--rename x=b --rename x=b", "old: node \"x\" of a stated rename has two new IDs"},
        {"--renames nowhere", "nowhere: No such file or directory"},
        {"--renames bad", "bad:3: not OLD<TAB>NEW"},
        {"--why a b -f json", "--why excludes --format, --report, --convert and --textconv"},
        {"--why a", "two graphs are needed, the old and the new one; --help says more"},
        {"--why a z", "--why: no node has an ID that ends in z"},
        {"--why a /y", "--why: no node has an ID that ends in /y"},
    };
    for (const auto& [words, expected] : cases) {
        const Outcome outcome = run(std::string("--input-format list ") + words + " old new");
        EXPECT_EQ(outcome.status, 2) << words;
        EXPECT_EQ(outcome.output, "") << words;
        EXPECT_EQ(outcome.error, std::string("depcompare: ") + expected + "\n");
    }
    EXPECT_EQ(run("-q --input-format list --insights short --link-type no* old new").error,
              "depcompare: warning: --link-type no*: no dependency has such a type\n");
}

TEST_F(Program, newCyclesAndPathsAreAskedFor) {
    const auto modules = [&](const char* name, const char* edge) {
        write(name,
              std::string(R"({"modules": [{"source": "a", "dependencies": [{"resolved": "b"}]},
            {"source": "b", "dependencies": [)") +
                  edge + R"(]}], "summary": {}})");
    };
    modules("none", "");
    modules("soft", R"({"resolved": "a", "dependencyTypes": ["type-only"], "circular": true})");
    modules("hard", R"({"resolved": "a", "dependencyTypes": ["import"], "circular": true})");
    const std::pair<const char*, int> cases[] = {{"none none", 0},
                                                 {"none soft", 0},
                                                 {"none hard", 1},
                                                 {"soft hard", 1},
                                                 {"hard hard", 0},
                                                 {"hard none", 0},
                                                 {"none hard --link-type circular", 0}};
    for (const auto& [words, status] : cases) {
        EXPECT_EQ(run(std::string("-q --fail-on cycles ") + words).status, status) << words;
        EXPECT_EQ(run(std::string("-f summary --fail-on cycles ") + words).status, status) << words;
    }
    const json insights = json::parse(run("-f json none soft").output)["insights"];
    EXPECT_EQ(insights["cycles"]["families"], json::parse(R"([{"edit": "added", "left": [],
        "right": [["a", "b"]], "closing": [["b", "a"]], "opened": [], "cycle": ["a", "b"]}])"));
    EXPECT_EQ(insights["hardCycles"]["right"], 0);

    write("old", "m/a m/b\nm/b m/c\n");
    write("new", "m/a m/b\nm/b m/c\nm/a m/c\n");
    const std::tuple<const char*, const char*, int> questions[] = {
        {"a c", "old: 2 links\n  m/a\n  -> m/b\n  -> m/c\nnew: 1 link\n  m/a\n+ -> m/c\n", 1},
        {"m/a b", "old: 1 link\n  m/a\n  -> m/b\nnew: 1 link\n  m/a\n  -> m/b\n", 0},
        {"c a", "old: no path\nnew: no path\n", 0}};
    for (const auto& [ends, expected, status] : questions) {
        const Outcome outcome = run(std::string("--input-format list --why ") + ends + " old new");
        EXPECT_EQ(outcome.output, expected) << outcome.error;
        EXPECT_EQ(outcome.status, status);
    }
}

TEST_F(Program, appliedRenamesAreSeenInEveryReport) {
    const auto graph = [&](const char* name, const std::string& id, const char* size) {
        write(name, R"({"graph": {"nodes": {"m": {}, ")" + id + R"(": {"metadata": {"sum": "1",
            "checksum": "77", "size": ")" +
                        size + R"("}}}, "edges": [
            {"source": "m", "target": ")" +
                        id + R"("}]}})");
    };
    graph("old", "src/a.c", "1");
    graph("new", "lib/b.c", "2");
    EXPECT_EQ(run("-q old new").status, 1);
    EXPECT_EQ(run("-q --renames apply old new").status, 0);
    const std::pair<const char*, const char*> forms[] = {
        {"text", "lib/b.c \u2190 src/a.c"},
        {"markdown", "`lib/b.c` \u2190 `src/a.c`"},
        {"html", "<bdi>lib/b.c</bdi> \u2190 <bdi>src/a.c</bdi>"},
        {"json", R"("renamedFrom":"src/a.c")"}};
    for (const auto& [form, expected] : forms) {
        const auto words = std::string("--no-filter --renames apply old new -f ") + form;
        EXPECT_NE(run(words).output.find(expected), std::string::npos) << form;
    }
    // The list of renames can be read again, and says the same.
    const Outcome outcome = run("-f json --renames apply --report renames=list old new");
    const json renames = json::parse(outcome.output)["insights"]["renames"];
    EXPECT_EQ(renames[0]["applied"], true);
    EXPECT_EQ(renames[0]["evidence"]["digest"], "checksum");
    EXPECT_TRUE(contentOf(folder_ / "list").starts_with("src/a.c\tlib/b.c\tprobable "));
    EXPECT_EQ(run("-q --renames list --renames apply old new").status, 0);
    write("list", "!src/a.c\tlib/b.c\n");
    EXPECT_EQ(run("-q --renames list --renames apply old new").status, 1);
    const auto causes = [&](const std::string& options) {
        return json::parse(run("-f json old new " + options).output)["insights"]["causes"]["added"];
    };
    EXPECT_EQ(causes("")["rename"], 1);
    EXPECT_EQ(causes("--renames off")["target"], 1);
}

TEST_F(Program, aGraphComparedWithItselfHasNoInsightsButCounts) {
    const json report = json::parse(run("-f json " + newer + ' ' + newer).output);
    for (const char* place :
         {"/cycles/families", "/reach/files", "/reach/links", "/areas/links", "/others/added",
          "/others/removed", "/renames", "/causes/targets", "/causes/rewired"}) {
        EXPECT_EQ(report["insights"][json::json_pointer(place)], json::array()) << place;
    }
    EXPECT_FALSE(json::parse(run("-f json --insights off " + both).output).contains("insights"));
}

TEST_F(Program, nothingToCompareIsNeverTakenForNoDifference) {
    write("libs", R"({"graph": {"nodes": {"a": {"metadata": {"type": "lib"}}}}})");
    const std::string problem =
        "libs: no file nodes, so nothing to compare; use --file-type to choose the types that "
        "count "
        "as files (nodes by type: 1 \"lib\")";
    for (const char* form : {"", "-q ", "-f json "}) {
        const Outcome outcome = run(std::string(form) + "libs libs");
        EXPECT_EQ(outcome.status, 2);
        EXPECT_EQ(outcome.error,
                  "depcompare: " + problem + ", or --allow-empty to compare nothing\n");
    }
    const std::string warning = "depcompare: warning: " + problem + "\n";
    EXPECT_EQ(run("--allow-empty libs libs").error, warning + warning);
    EXPECT_EQ(run("--git libs libs").status, 0);
    EXPECT_EQ(run("--textconv libs").status, 0);
    EXPECT_EQ(run("-q --file-type lib libs libs").error, "");

    write("none", R"({"graph": {"nodes": {}}})");
    std::string nodes = R"({"id": "a"})";
    for (char id = 'b'; id <= 'j'; ++id) {
        nodes += std::string(R"(, {"id": ")") + id + "\"}";
    }
    write("loose", R"({"graph": {"nodes": [)" + nodes + "]}}");
    for (const char* form : {"-q ", "-f summary "}) {
        const Outcome outcome = run(std::string(form) + "none loose");
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.error,
                  "depcompare: warning: none: the graph has no nodes\n"
                  "depcompare: warning: loose: the graph has 10 nodes and no dependency\n");
    }
}

TEST_F(Program, theStatusIsThatOfDiffForWhatTheFiltersLeave) {
    const auto file = [](const std::string& node, const std::string& edge = "") {
        return "<graphml><graph><node id='a'/>" + node + "<node id='c'/>" + edge +
               "<edge source='a' target='b'/></graph></graphml>";
    };
    write("one", file("<node id='b'/>"));
    write("same", file("<node id='b'></node>"));
    write("property", file("<node id='b'><data key='k'>1</data></node>"));
    write("edge", file("<node id='b'/>", "<edge source='a' target='c'/>"));
    write("other", file("<node id='other'/><node id='b'/>"));
    write("named", file("<node id='b'><data key='name'>B</data></node>"));
    write("empty", "");
    const std::pair<const char*, int> cases[] = {
        {"same", 0},
        {"same --no-filter", 0},
        {"property", 0},
        {"property --no-filter", 1},
        {"property --filter unchanged", 1},
        {"property --filter unchanged --filter nonstructural", 0},
        {"edge", 1},
        {"edge --no-filter", 1},
        {"edge --filter unchanged", 1},
        {"edge --filter nonstructural", 1},
        {"property --no-filter --fail-on structural", 0},
        {"property --no-filter --fail-on none", 0},
        {"property --no-filter --fail-on any", 1},
        {"edge --no-filter --fail-on structural", 1},
        {"edge --no-filter --fail-on none", 0},
        {"other --no-filter --fail-on structural", 1},
        {"same --no-filter --fail-on structural", 0},
        {"named --no-filter --fail-on structural", 1},
        {"nowhere --fail-on none", 2},
        {"--help", 0},
    };
    for (const auto& [words, status] : cases) {
        for (const char* form : {"", "-f json ", "-f summary "}) {
            EXPECT_EQ(run(form + std::string("one ") + words).status, status) << form << words;
        }
        const Outcome quiet = run(std::string("-q one ") + words);
        EXPECT_EQ(quiet.status, status) << words;
        EXPECT_EQ(quiet.output.empty(), words != std::string("--help")) << words;
    }
    // Only for git an empty file is a graph.
    EXPECT_EQ(run("--git empty one").status, 0);
    EXPECT_EQ(run("--fail-on any -q --git empty one").status, 1);
    EXPECT_EQ(run("--textconv empty").status, 0);
}

TEST_F(Program, aPipedReportFitsEightyColumns) {
    ASSERT_EQ(shell("cp " + older + " old; cp " + newer + " new").status, 0);
    for (const char* filters : {"", "--no-filter ", "--filter unchanged "}) {
        std::istringstream report(shell(std::string("$P old new ").append(filters)).output);
        std::size_t lines = 0;
        for (std::string line; std::getline(report, line); ++lines) {
            // Arrows are one column and three bytes.
            const auto arrows = std::count(line.begin(), line.end(), '\xE2');
            EXPECT_LE(line.size() - 2 * static_cast<std::size_t>(arrows), 80U) << line;
        }
        EXPECT_GT(lines, 100U);
    }
}

TEST_F(Program, warningsAreLinesOnStandardErrorAndInTheLedger) {
    write("one", R"({"graph": {"nodes": {"n0": {"metadata": {"type": "lib"}}, "n1": {}},)"
                 R"( "edges": [{"source": "n0", "target": "n2"}]}})");
    const Outcome outcome = shell("$P -f json - one <one");
    const std::string added = R"(node "n2" appears only in edges; added it)";
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.error.find("depcompare: warning: standard input: " + added + "\n"), 0U)
        << outcome.error;
    EXPECT_EQ(std::count(outcome.error.begin(), outcome.error.end(), '\n'), 4);
    const json report = json::parse(outcome.output);
    EXPECT_EQ(report["ledger"]["right"]["warnings"][0], added);
    EXPECT_EQ(report["left"]["source"], "-");
    EXPECT_NE(run("one one").output.find("Warning: " + added), std::string::npos);
    EXPECT_EQ(run("-q one one").error, "");
}

TEST_F(Program, aConvertedGraphIsNoDifferentFromItsOrigin) {
    ASSERT_EQ(run("--convert jgf -o new.jgf " + newer).status, 0);
    EXPECT_EQ(run("--no-filter " + newer + " new.jgf").status, 0);
    EXPECT_TRUE(run("--convert jgf new.jgf").output == contentOf(folder_ / "new.jgf"));
}

TEST_F(Program, filesAppearAllAndWholeOrNotAtAll) {
    write("report", "old");
    write("broken", "<graphml>");
    const std::string faulty[] = {
        "-o report " + older + " nowhere",
        "-o report " + older + " broken",
        "-o report --report json=c --report html=nowhere/d " + both,
        "--report json=report " + both + " >/dev/full",
    };
    const auto files = filesInFolder();
    for (const std::string& words : faulty) {
        EXPECT_EQ(run(words).status, 2) << words;
        EXPECT_EQ(contentOf(folder_ / "report"), "old") << words;
    }
    const Outcome quiet = run("-q -o quiet.html " + both);
    EXPECT_EQ(quiet.status, 1);
    EXPECT_EQ(quiet.error, "depcompare: warning: --quiet writes nothing, quiet.html included\n");
    EXPECT_EQ(run("-o report " + both).output, "");
    EXPECT_EQ(run("-o a.html " + both).error,
              "depcompare: warning: a.html gets text; --format html writes what its name says\n");
    EXPECT_EQ(run("-f text -o a.html " + both).error, "");
    EXPECT_EQ(filesInFolder(), files + 3);  // the output and the errors of the program
    EXPECT_EQ(contentOf(folder_ / "report"), run(both).output);

    const Outcome outcome = run("-f summary --report json=a --report markdown=b " + both);
    EXPECT_EQ(outcome.status, 1) << outcome.error;
    EXPECT_EQ(outcome.output, run("-f summary " + both).output);
    EXPECT_EQ(outcome.output.find("The structure changed.\n                     added   "), 0U);
    EXPECT_NE(run(both).output.find("\n\n" + outcome.output + '\n'), std::string::npos);
    EXPECT_EQ(contentOf(folder_ / "a"), run("-f json " + both).output);
    EXPECT_EQ(contentOf(folder_ / "b"), run("-f markdown " + both).output);
}

TEST_F(Program, whicheverCallFailsAllFilesAreOldOrAllAreNew) {
#ifndef NDEBUG
    GTEST_SKIP() << "sanitizers are preloaded first";
#endif
    const char* names[] = {"a", "b", "c"};
    const std::string command =
        " LD_PRELOAD='" FAILING_CALLS "' $P --report json=a --report summary=b -o c " + both;
    const auto files = filesInFolder() + 5;  // those, the output and the errors of the program
    for (const char* call : {"fsync", "close", "write", "linkat", "renameat2"}) {
        int number = 0;
        do {
            fs::remove(folder_ / "failed");
            for (const char* name : names) {
                write(name, "old");
            }
            const std::string about = std::string(call) + ':' + std::to_string(++number);
            const Outcome outcome =
                shell(std::string("FAILING_CALL=").append(about).append(command));
            const auto old = std::ranges::count(
                names, "old", [&](const char* name) { return contentOf(folder_ / name); });
            EXPECT_EQ(old, outcome.status == 2 ? 3 : 0) << about << outcome.error;
            EXPECT_EQ(std::ranges::count(outcome.error, '\n'), outcome.status == 2 ? 1 : 0)
                << about;
            EXPECT_EQ(filesInFolder() - (fs::exists(folder_ / "failed") ? 1 : 0), files) << about;
        } while (fs::exists(folder_ / "failed"));
        EXPECT_GT(number, 3) << call;
    }
}

TEST_F(Program, theOutputFileKeepsItsLinkAndPermissions) {
    const Outcome outcome = shell(
        "echo old >real; chmod 4604 real; ln -s real link; ln -s made dangling; umask 027; "
        "for file in link new dangling; do $P -f summary -o $file " +
        both + "; done; cmp real new; cmp real made; stat -c '%n %A' link real new dangling made");
    EXPECT_EQ(outcome.output,
              "link lrwxrwxrwx\nreal -rw----r--\nnew -rw-r-----\n"
              "dangling lrwxrwxrwx\nmade -rw-r-----\n");
}

TEST_F(Program, noReportTakesThePlaceOfAnother) {
    const std::string summary = run("-f summary " + both).output;
    write("old", "old\n");
    const std::tuple<std::string, const char*, const char*> cases[] = {
        {"-o r --report summary=./r", "./r and r are the same file", ""},
        {"-o r --report summary=link/r", "link/r and r are the same file", ""},
        {"--report json=r >>r", "r is where standard output goes", ""},
        {"-f summary -o /dev/stdout >>old", "", "old\n"},
        {"-f summary -o /dev/fd/7 7>>old", "", "old\n"},
        // What is meant for a closed descriptor goes nowhere else.
        {"--report summary=r >&-", "standard output: Bad file descriptor", ""},
        {"-f summary --progress always -o old 2>&-", "", ""},
        {"- <&-", "standard input: Bad file descriptor", ""},
    };
    ASSERT_EQ(shell("ln -s . link").status, 0);
    for (const auto& [words, problem, before] : cases) {
        write("old", "old\n");
        const bool succeeds = std::string(problem).empty();
        const Outcome outcome =
            run((words[0] == '-' && words[1] == ' ' ? newer : both) + ' ' + words);
        EXPECT_EQ(outcome.status, succeeds ? 1 : 2) << words << outcome.error;
        EXPECT_NE(outcome.error.find(problem), std::string::npos) << words << outcome.error;
        EXPECT_EQ(contentOf(folder_ / "old"), succeeds ? before + summary : "old\n") << words;
        EXPECT_EQ(contentOf(folder_ / "r"), "") << words;
    }
}

TEST_F(Program, whateverEndsItLeavesNoUnfinishedFile) {
    write("report", "old");
    const auto files = filesInFolder();
    const Outcome limited = shell("(ulimit -f 8; $P -f json -o report " + both + ")");
    EXPECT_EQ(limited.error, "depcompare: report: File too large\n");
    const Outcome ended = shell(
        "for i in 1 2 3 4 5 6 7 8; do for signal in INT TERM HUP QUIT; do $P -f html -o report " +
        both + " & sleep 0.0$i; kill -$signal $!; wait $!; done; done");
    EXPECT_EQ(ended.output, "");
    const std::string report = contentOf(folder_ / "report");
    EXPECT_TRUE(report == "old" || report.ends_with("</html>\n")) << report.size();
    EXPECT_EQ(filesInFolder(), files + 2);  // the output and the errors of the program
}

TEST_F(Program, wantOfMemoryIsOneLine) {
#ifndef NDEBUG
    GTEST_SKIP() << "sanitizers take memory by themselves";
#endif
    const std::string pairs[] = {
        "'" EXAMPLES "/mocha-9.2.2.cdx.json.gz' '" EXAMPLES "/mocha-10.8.2.cdx.json.gz'",
        "'" EXAMPLES "/axios-0.27.2.dot' '" EXAMPLES "/axios-1.7.9.dot'", both};
    int failed = 0;
    int succeeded = 0;
    for (std::size_t megabytes = 44; megabytes <= 128; megabytes += 4) {
        const Outcome outcome = shell("(ulimit -v " + std::to_string(megabytes * 1024) +
                                      "; $P -f json --report html=page " +
                                      pairs[megabytes / 4 % std::size(pairs)] + ")");
        if (outcome.status == 2) {
            ++failed;
            EXPECT_EQ(outcome.error, "depcompare: out of memory\n") << megabytes;
        } else if (outcome.status !=
                   127) {  // by which the system says that it cannot load libraries
            ++succeeded;
            EXPECT_EQ(outcome.status, 1) << megabytes << outcome.error;
        }
        EXPECT_EQ(fs::remove(folder_ / "page"), outcome.status == 1) << megabytes;
    }
    EXPECT_GT(std::min(failed, succeeded), 3);
}

TEST_F(Program, idsThatWereChosenToCollideCostNoMoreThanOthers) {
    // Under the standard library's hash, which has no seed, they are all one.
    const std::string ids = "'" TEST_DATA "/hostile/colliding_ids.graphml.gz'";
    const Outcome limited = shell("(ulimit -t 10; $P -q " + ids + ' ' + ids + ")");
    EXPECT_EQ(limited.status, 0) << limited.error;
}

TEST_F(Program, theEnvironmentDecidesAboutColoursAndTheLocale) {
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"CLICOLOR_FORCE=1", "", "\x1b[32m+ "},
        {"CLICOLOR_FORCE=1 NO_COLOR=", "", "\x1b[32m+ "},
        {"NO_COLOR=1", "--color always", "\x1b[32m+ "},
        {"TERM=xterm GIT_PAGER_IN_USE=true", "", "\x1b[32m+ "},
        {"LC_ALL=C", "", ""},
        {"CLICOLOR_FORCE=0", "", ""},
        {"CLICOLOR_FORCE=1 NO_COLOR=1", "", ""},
        {"CLICOLOR_FORCE=1", "--color never", ""},
        {"TERM=dumb GIT_PAGER_IN_USE=true", "", ""},
        {"LC_ALL=C", "-f json", "\"locale\":\"en\""},
        {"LC_ALL= LC_MESSAGES=tr_TR.UTF-8 LANG=de_DE", "-f json", "\"locale\":\"tr_TR\""},
        {"LC_ALL= LC_MESSAGES= LANG=de_DE.UTF-8", "-f json", "\"locale\":\"de_DE\""},
        {"LC_ALL=12/!", "-f json", "\"locale\":\"en\""},
        {"LC_ALL=C", "-f json --locale ja", "\"locale\":\"ja\""},
    };
    for (const auto& [environment, options, expected] : cases) {
        const std::string about = std::string(environment) + ' ' + options;
        const std::string output =
            shell(std::string(environment) + " $P " + options + ' ' + both).output;
        EXPECT_NE(output.find(expected), std::string::npos) << about;
        EXPECT_EQ(output.find('\x1b') != std::string::npos, expected[0] == '\x1b') << about;
    }
    EXPECT_EQ(shell("cd /; env -i TZ=Asia/Tokyo HOME=/nowhere LC_NUMERIC=de_DE $P -f json " + both)
                  .output,
              run("-f json " + both).output);
}

TEST_F(Program, aPagerShowsTextOnATerminal) {
    struct Case {
        const char* environment;
        const char* options;
        const char* paged;  // first word that the pager got; none if it was not asked
        bool direct;        // whether the terminal got the report
    };
    const Case cases[] = {
        {"DEPCOMPARE_PAGER='cat >paged' PAGER=false", "", "Comparing", false},
        {"PAGER='cat >paged'", "", "Comparing", false},
        {"PAGER='echo $LESS >paged'", "", "FRX", false},
        {"LESS=i PAGER='echo $LESS >paged'", "", "i", false},
        // Neither SIGXFSZ nor SIGPIPE is ignored.
        {R"(PAGER="grep -c 'SigIgn.*[02468ace]..[02468ace]...$' /proc/self/status >paged")", "",
         "1", false},
        {"PAGER='cat >paged' DEPCOMPARE_PAGER=", "", "", true},
        {"PAGER='cat >paged' DEPCOMPARE_PAGER=cat", "", "", true},
        {"PAGER='cat >paged' TERM=dumb", "", "", true},
        {"PAGER='cat >paged'", "--no-pager ", "", true},
        {"PAGER='cat >paged'", "-f summary ", "", true},
        {"PAGER='cat >paged'", "-q ", "", false},
        {"PAGER='cat >paged'", "-o file ", "", false},
        {"PAGER='nowhere >paged'", "", "", true},
        {"PAGER='cat >paged'", "--fail-on any --git ", "Comparing", false},
        // Quitting the pager early is not an error.
        {"PAGER=true", "--no-filter ", "", false},
        {"PAGER='head -n 1 >paged'", "--no-filter ", "Comparing", false},
        {"PAGER='exit 3'", "--no-filter ", "", false},
    };
    for (const auto& [environment, options, paged, direct] : cases) {
        const std::string about = std::string(environment) + ' ' + options;
        const Outcome outcome = onTerminal(environment, options + both);
        EXPECT_EQ(outcome.status, 1) << about << outcome.output;
        std::istringstream shown(contentOf(folder_ / "paged"));
        std::string word;
        shown >> word;
        EXPECT_EQ(word, paged) << about;
        EXPECT_EQ(outcome.output.find("Graph properties") != std::string::npos, direct) << about;
        EXPECT_EQ(outcome.output.find("depcompare: "), std::string::npos) << outcome.output;
    }
    fs::remove(folder_ / "paged");
    EXPECT_EQ(shell("PAGER='cat >paged' $P " + both).output.substr(0, 9), "Comparing");
    EXPECT_FALSE(fs::exists(folder_ / "paged"));
}

}  // namespace
}  // namespace depcompare::test
