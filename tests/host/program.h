#pragma once
// Runs the program in a folder of the test's own.
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <gtest/gtest.h>

namespace depcompare::test {

namespace fs = std::filesystem;

inline std::string contentOf(const fs::path& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

struct Outcome {
    int status = 0;
    std::string output;
    std::string error;
};

class Program : public testing::Test {
  protected:
    void SetUp() override {
        std::string pattern = testing::TempDir() + "program-XXXXXX";
        ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
        folder_ = pattern;
    }
    void TearDown() override { fs::remove_all(folder_); }

    // `words` may redirect; $P is the program, $E the folder of examples, $D that of other samples.
    [[nodiscard]] Outcome shell(const std::string& words) const {
        const std::string command = "cd '" + folder_.string() +
                                    "' && export LC_ALL=C P='" PROGRAM "' E='" EXAMPLES
                                    "' D='" TEST_DATA "' && PATH=${P%/*}:$PATH && { " +
                                    words + "\n} >out 2>err";
        const int status = std::system(command.c_str());
        return {.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1,
                .output = contentOf(folder_ / "out"),
                .error = contentOf(folder_ / "err")};
    }
    [[nodiscard]] Outcome run(const std::string& arguments) const {
        return shell("$P " + arguments);
    }
    // The output is what the terminal got.
    [[nodiscard]] Outcome onTerminal(const std::string& environment,
                                     const std::string& arguments) const {
        fs::remove(folder_ / "paged");
        write("command", "unset DEPCOMPARE_PAGER PAGER LESS; export TERM=xterm; " + environment +
                             " $P " + arguments + "\n");
        return shell("script --quiet --return --command 'sh ./command' /dev/null </dev/null");
    }
    void write(const std::string& name, const std::string& content) const {
        std::ofstream(folder_ / name) << content;
    }
    [[nodiscard]] std::ptrdiff_t filesInFolder() const {
        return std::distance(fs::directory_iterator(folder_), {});
    }

    fs::path folder_;
};

}  // namespace depcompare::test
