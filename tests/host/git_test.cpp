// Git itself asks for comparisons, set up as docs/git.md says.
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "program.h"

namespace depcompare::test {
namespace {

constexpr const char* older = EXAMPLES "/notes-1.0.graphml";
constexpr const char* newer = EXAMPLES "/notes-1.1.graphml";

/// Returns: the lines for which `wanted` holds.
template <class Predicate>
std::string linesOf(const std::string& text, Predicate wanted) {
    std::string lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines += wanted(line) ? line + '\n' : "";
    }
    return lines;
}

class Git : public Program {
  protected:
    void SetUp() override {
        Program::SetUp();
        write(".gitattributes", "");
        git("git init -q && git config user.name N && git config user.email e");
    }

    // NOLINTNEXTLINE(modernize-use-nodiscard): often only the status counts, which is checked here.
    Outcome git(const std::string& words, int status = 0) const {
        // The user's own settings do not count.
        Outcome outcome = shell(
            "unset $(git rev-parse --local-env-vars); export HOME=\"$PWD\" "
            "XDG_CONFIG_HOME=\"$PWD\" GIT_CONFIG_NOSYSTEM=1 GIT_PAGER=cat "
            "PATH=\"$(dirname \"$P\"):$PATH\"\n" +
            words);
        EXPECT_EQ(outcome.status, status) << words << '\n' << outcome.error;
        return outcome;
    }
    /// Runs the block of commands of docs/git.md that sets this.
    void configure(const std::string& setting) const {
        const std::string manual = contentOf(DOCUMENTS "/git.md");
        const std::size_t begin = manual.find('\n', manual.rfind("```sh", manual.find(setting)));
        git(manual.substr(begin, manual.find("\n```", begin) - begin));
    }
    void copy(const fs::path& file, const std::string& name) const {
        fs::copy_file(file, folder_ / name, fs::copy_options::overwrite_existing);
    }
    void commit() const { git("git add -- .gitattributes '*.graphml' && git commit -qm m"); }

    void commitTwoStates() const {
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
    configure("diff.graph.command");
    const Outcome outcome = git("git diff --find-renames HEAD~1 HEAD");
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(linesOf(outcome.output,
                      [](const std::string& line) {
                          return line.starts_with("Comparing ") || line.starts_with("with      ");
                      }),
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
    commit();
    configure("diff.graph.command");
    write("a.graphml", "<x/>");
    const std::string error = git("git diff", 128).error;
    EXPECT_EQ(error.substr(0, error.find('\n')),
              "depcompare: b/a.graphml:1: not GraphML: the root element is \"x\"");

    git("git checkout -q -b other && git commit -qam m && git checkout -q - && "
        "echo '<graphml/>' >a.graphml && git commit -qam m && git merge -q other",
        1);
    EXPECT_EQ(git("git diff --cached -- a.graphml").output.substr(0, 26),
              "* Unmerged path a.graphml\n");
}

TEST_F(Git, textOfGraphsIsComparedLineByLine) {
    commitTwoStates();
    configure("diff.graph.textconv");
    const std::string output = git("git diff HEAD~1 HEAD -- ./-q.graphml z.graphml").output;
    EXPECT_EQ(linesOf(output.substr(0, output.find("a/z.graphml")),
                      [](const std::string& line) { return line.find(" -> ") != line.npos; }),
              "-app.cc -> log.hpp [include]\n"
              "+app.cc -> net.h [include] from=HAVE_SYNC\n"
              " app.cc -> store.h [include]\n"
              "+net.cc -> net.h [include]\n"
              "-store.cc -> sqlite3.h [include]\n"
              "+store.cc -> sqlite3.h [include] from=WITH_SQLITE\n"
              " store.cc -> store.h [include]\n");
    EXPECT_NE(output.find("\n+++ b/z.graphml\n"), std::string::npos);
}

TEST_F(Git, theDiffToolComparesFileAfterFile) {
    commitTwoStates();
    configure("difftool.depcompare.cmd");
    const Outcome outcome =
        git("git difftool --no-prompt --tool=depcompare HEAD~1 HEAD </dev/null | "
            "grep -c '^Comparing '");
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.output, "5\n");
}

}  // namespace
}  // namespace depcompare::test
