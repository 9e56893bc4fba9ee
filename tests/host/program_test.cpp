// Runs the program itself: what only a process has, and the bundled graphs.
#include <algorithm>
#include <filesystem>
#include <iterator>
#include <sstream>
#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "program.h"
#include "text_cases.h"

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

// A command is a line "$ ...", with lines "> ..." if it goes on. What it prints comes below it, errors
// last, and then its status in brackets unless that is 0.
TEST_F(Program, sessionsGoAsWritten) {
    const auto sessions = casesIn(SESSIONS);
    EXPECT_GT(sessions.size(), 20U);
    for (const TextCase& session : sessions) {
        TearDown();
        SetUp();
        std::istringstream lines(session.parts[0]);
        std::string result;
        for (std::string line; std::getline(lines, line);) {
            if (line.starts_with("$ ")) {
                result += line + '\n';
                std::string command = line.substr(2);
                while (lines.peek() == '>' && std::getline(lines, line)) {
                    result += line + '\n';
                    command += line.replace(0, 2, "\n");
                }
                const auto [status, output, error] = shell(command);
                result += output + error;
                result += status == 0 ? "" : '[' + std::to_string(status) + "]\n";
            }
        }
        expectResult(session, result);
    }
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
    // Git has a pager of its own.
    EXPECT_EQ(
        onTerminal("PAGER='cat >paged'", "--git path " + older + " 1 2 " + newer + " 3 4").status,
        0);
    EXPECT_FALSE(fs::exists(folder_ / "paged"));
    EXPECT_EQ(shell("PAGER='cat >paged' $P " + both).output.substr(0, 9), "Comparing");
    EXPECT_FALSE(fs::exists(folder_ / "paged"));
}

}  // namespace
}  // namespace depcompare::test
