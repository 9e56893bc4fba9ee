// Git itself asks for comparisons, set up as the manual says.
#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "program.h"

namespace depcompare::test {
namespace {

constexpr const char* older = EXAMPLES "/notes-1.0.graphml";
constexpr const char* newer = EXAMPLES "/notes-1.1.graphml";

enum Settings : std::size_t { driver, lines, tool };

/// Returns: the blocks of commands in the manual, one after the other.
std::vector<std::string> blocksOfManual() {
    std::vector<std::string> blocks;
    std::istringstream manual(contentOf(DOCUMENTS "/git.md"));
    bool inBlock = false;
    for (std::string line; std::getline(manual, line);) {
        if (line == "```sh") {
            blocks.emplace_back();
            inBlock = true;
        } else if (line == "```") {
            inBlock = false;
        } else if (inBlock) {
            blocks.back() += (blocks.back().empty() ? "" : "\n") + line;
        }
    }
    return blocks;
}

class Git : public Program {
  protected:
    void SetUp() override {
        Program::SetUp();
        ASSERT_EQ(git("git init -q && git config user.name N && git config user.email e").status,
                  0);
    }

    [[nodiscard]] Outcome git(const std::string& words) const {
        // Nobody's own settings take part.
        return shell(
            "unset $(git rev-parse --local-env-vars); export HOME=\"$PWD\" "
            "XDG_CONFIG_HOME=\"$PWD\" GIT_CONFIG_NOSYSTEM=1 GIT_PAGER=cat "
            "PATH=\"$(dirname \"$P\"):$PATH\"\n" +
            words);
    }
    void set(Settings settings) const {
        const auto blocks = blocksOfManual();
        ASSERT_EQ(blocks.size(), 3U);
        ASSERT_EQ(git(blocks[settings]).status, 0);
    }
    void copy(const fs::path& file, const std::string& name) const {
        fs::copy_file(file, folder_ / name, fs::copy_options::overwrite_existing);
    }
    void commit() const {
        const Outcome outcome = git("git add -- .gitattributes '*.graphml' && git commit -qm m");
        ASSERT_EQ(outcome.status, 0) << outcome.error;
    }

    void commitTwoStates() const {
        write(".gitattributes", "");
        copy(older, "-q.graphml");
        write("gone.graphml", "<graphml><graph><node id='a'/></graph></graphml>");
        copy(older, "with space.graphml");
        write("z.graphml", contentOf(older) + "<!-- -->");
        commit();
        copy(newer, "-q.graphml");
        copy(newer, "new.graphml");
        fs::remove(folder_ / "gone.graphml");
        fs::rename(folder_ / "with space.graphml", folder_ / "moved.graphml");
        write("moved.graphml", contentOf(older) + "<!-- moved -->\n");
        write("z.graphml", "");
        commit();
    }
};

TEST_F(Git, theDriverReportsEveryFileUnderItsPath) {
    commitTwoStates();
    set(driver);
    const Outcome outcome = git("git diff --find-renames HEAD~1 HEAD");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.error, "");
    std::string headings;
    std::istringstream output(outcome.output);
    for (std::string line, next; std::getline(output, line);) {
        if (line.starts_with("Comparing ") && std::getline(output, next)) {
            headings.append(line).append("\n").append(next).append("\n");
        }
    }
    EXPECT_EQ(headings,
              "Comparing a/-q.graphml (4 files, 4 dependencies)\n"
              "with      b/-q.graphml (5 files, 5 dependencies)\n"
              "Comparing a/gone.graphml (1 file, 0 dependencies)\n"
              "with      /dev/null (0 files, 0 dependencies)\n"
              "Comparing a/with space.graphml (4 files, 4 dependencies)\n"
              "with      b/moved.graphml (4 files, 4 dependencies)\n"
              "Comparing /dev/null (0 files, 0 dependencies)\n"
              "with      b/new.graphml (5 files, 5 dependencies)\n"
              "Comparing a/z.graphml (4 files, 4 dependencies)\n"
              "with      b/z.graphml (0 files, 0 dependencies)\n");
}

TEST_F(Git, theDriverSaysWhatCannotBeCompared) {
    copy(older, "a.graphml");
    write(".gitattributes", "");
    commit();
    set(driver);
    write("a.graphml", "<html/>");
    Outcome outcome = git("git diff");
    EXPECT_NE(outcome.status, 0);
    EXPECT_EQ(outcome.error.substr(0, outcome.error.find('\n')),
              "depcompare: b/a.graphml:1: not GraphML: the outermost element is \"html\"");

    ASSERT_EQ(git("git checkout -q -b other && git commit -qam m && git checkout -q - && "
                  "echo '<graphml/>' >a.graphml && git commit -qam m && git merge -q other")
                  .status,
              1);
    outcome = git("git diff --cached -- a.graphml");
    EXPECT_EQ(outcome.status, 0) << outcome.error;
    EXPECT_EQ(outcome.output.substr(0, 26), "* Unmerged path a.graphml\n");
}

TEST_F(Git, textOfGraphsIsComparedLineByLine) {
    commitTwoStates();
    set(lines);
    const Outcome outcome = git("git diff HEAD~1 HEAD -- ./-q.graphml z.graphml");
    EXPECT_EQ(outcome.status, 0);
    std::vector<std::string> changes;
    std::istringstream output(outcome.output);
    for (std::string line; std::getline(output, line) && line.find("z.graphml") == line.npos;) {
        if (line.starts_with('+') || line.starts_with('-')) {
            changes.push_back(line);
        }
    }
    EXPECT_EQ(changes, (std::vector<std::string>{
                           "--- a/-q.graphml",
                           "+++ b/-q.graphml",
                           "-graph timestamp=2026-01-10T09:00:00Z",
                           "-graph version=1.0",
                           "-app.cc [file] lines=210",
                           "-app.cc -> log.h [include]",
                           "+graph timestamp=2026-03-02T17:30:00Z",
                           "+graph version=1.1",
                           "+app.cc [file] lines=228",
                           "+app.cc -> net.h [include] from=HAVE_SYNC",
                           "-log.h [file] lines=40",
                           "+net.cc [file] lines=120",
                           "+net.cc -> net.h [include]",
                           "+net.h [file] lines=35",
                           "-store.cc -> sqlite3.h [include]",
                           "+store.cc -> sqlite3.h [include] from=WITH_SQLITE",
                       }));
    EXPECT_NE(outcome.output.find("\n+++ b/z.graphml\n"), std::string::npos);
}

TEST_F(Git, theDiffToolComparesFileAfterFile) {
    commitTwoStates();
    set(tool);
    const Outcome outcome =
        git("git difftool --no-prompt --tool=depcompare HEAD~1 HEAD </dev/null");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.error, "");
    std::size_t reports = 0;
    for (auto at = outcome.output.find("Comparing "); at != std::string::npos;
         at = outcome.output.find("Comparing ", at + 1)) {
        ++reports;
    }
    EXPECT_EQ(reports, 5U);
}

}  // namespace
}  // namespace depcompare::test
