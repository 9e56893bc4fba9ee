#include "output/pager.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <string_view>
#include <system_error>

#include "output/terminal.h"

namespace depcompare {

namespace {

// The user did not ask for it, so the shell must not complain if it is missing.
constexpr std::string_view defaultPager = "command -v less >/dev/null || exit 127; exec less -FRX";

// The shell's status if the command cannot be run, or does not exist.
constexpr int notExecutable = 126;
constexpr int notFound = 127;

void require(int error) {
    if (error != 0) {
        throw std::system_error(error, std::generic_category(), "pager");
    }
}

}  // namespace

std::optional<std::string> pagerCommand() {
    std::string command(defaultPager);
    for (const char* name : {"DEPCOMPARE_PAGER", "PAGER"}) {
        if (const auto chosen = environment(name)) {
            command = *chosen;
            break;
        }
    }
    if (command.empty() || command == "cat" || environment("TERM") == "dumb") {
        return std::nullopt;
    }
    return command;
}

Pager::Pager(const std::string& command) {
    // As git does: pass colours, do not page short output, and leave the user's LESS alone.
    ::setenv("LESS", "FRX", 0);  // NOLINT(concurrency-mt-unsafe): no other thread reads it.
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        require(errno);
    }
    input_ = ends[1];
    try {
        spawn(command, ends[0]);
    } catch (...) {
        ::close(ends[0]);
        ::close(input_);
        throw;
    }
    ::close(ends[0]);
    struct sigaction ignored {};
    ignored.sa_handler = SIG_IGN;
    for (std::size_t i = 0; i < itsSignals.size(); ++i) {
        ::sigaction(itsSignals[i], &ignored, &former_[i]);
    }
}

void Pager::write(std::string_view text) {
    try {
        writeAll(input_, "pager", text);
    } catch (const std::system_error& error) {
        if (error.code() == std::error_code(EPIPE, std::generic_category())) {
            throw Quit();
        }
        throw;
    }
}

void Pager::finish() {
    if (process_ < 0) {
        return;
    }
    ::close(input_);
    int status = 0;
    while (::waitpid(process_, &status, 0) < 0 && errno == EINTR) {
    }
    process_ = -1;
    for (std::size_t i = 0; i < itsSignals.size(); ++i) {
        ::sigaction(itsSignals[i], &former_[i], nullptr);
    }
    const int exit = WIFEXITED(status) ? WEXITSTATUS(status) : 0;
    wasFound_ = exit != notFound && exit != notExecutable;
}

void Pager::spawn(const std::string& command, int input) {
    posix_spawn_file_actions_t actions{};
    posix_spawnattr_t attributes{};
    require(::posix_spawn_file_actions_init(&actions));
    require(::posix_spawnattr_init(&attributes));
    ::posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
    sigset_t signals;
    ::sigemptyset(&signals);
    for (const int signal : itsSignals) {
        ::sigaddset(&signals, signal);
    }
    ::sigaddset(&signals, SIGXFSZ);  // which this program ignores
    ::posix_spawnattr_setsigdefault(&attributes, &signals);
    ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
    std::string shell = "sh";
    std::string option = "-c";
    std::string text = command;
    std::array<char*, 4> words{shell.data(), option.data(), text.data(), nullptr};
    const int error =
        ::posix_spawn(&process_, "/bin/sh", &actions, &attributes, words.data(), environ);
    ::posix_spawnattr_destroy(&attributes);
    ::posix_spawn_file_actions_destroy(&actions);
    require(error);
}

}  // namespace depcompare
