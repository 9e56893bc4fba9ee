#include "output/pager.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <string_view>
#include <system_error>
#include <utility>

#include "output/terminal.h"

namespace depcompare {

namespace {

// Its absence is no mistake of the user's, so the shell must not complain.
constexpr std::string_view defaultPager = "command -v less >/dev/null || exit 127; exec less -FRX";

// What the shell answers for a command that cannot be run, or is not there.
constexpr int notExecutable = 126;
constexpr int notFound = 127;

// The keys that interrupt are the pager's, as long as there is one.
constexpr std::array<int, 3> pagersSignals{SIGINT, SIGQUIT, SIGPIPE};

class Pager {
  public:
    explicit Pager(const std::string& command);
    Pager(const Pager&) = delete;
    Pager& operator=(const Pager&) = delete;
    ~Pager() { static_cast<void>(wait()); }

    void write(std::string_view text) const { writeAll(input_, "pager", text); }

    /// Returns: the status of the pager when it has ended.
    int wait();

  private:
    pid_t process_ = -1;
    int input_ = -1;
    std::array<struct sigaction, pagersSignals.size()> former_{};
};

void require(int error) {
    if (error != 0) {
        throw std::system_error(error, std::generic_category(), "pager");
    }
}

int spawn(pid_t& process, const std::string& command, int input) {
    posix_spawn_file_actions_t actions{};
    posix_spawnattr_t attributes{};
    require(::posix_spawn_file_actions_init(&actions));
    require(::posix_spawnattr_init(&attributes));
    ::posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
    sigset_t signals;
    ::sigemptyset(&signals);
    for (const int signal : pagersSignals) {
        ::sigaddset(&signals, signal);
    }
    ::posix_spawnattr_setsigdefault(&attributes, &signals);
    ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
    std::string shell = "sh";
    std::string option = "-c";
    std::string text = command;
    std::array<char*, 4> words{shell.data(), option.data(), text.data(), nullptr};
    const int error =
        ::posix_spawn(&process, "/bin/sh", &actions, &attributes, words.data(), environ);
    ::posix_spawnattr_destroy(&attributes);
    ::posix_spawn_file_actions_destroy(&actions);
    return error;
}

Pager::Pager(const std::string& command) {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        require(errno);
    }
    input_ = ends[1];
    const int error = spawn(process_, command, ends[0]);
    ::close(ends[0]);
    if (error != 0) {
        ::close(input_);
        require(error);
    }
    struct sigaction ignored {};
    ignored.sa_handler = SIG_IGN;
    for (std::size_t i = 0; i < pagersSignals.size(); ++i) {
        ::sigaction(pagersSignals[i], &ignored, &former_[i]);
    }
}

int Pager::wait() {
    if (process_ < 0) {
        return 0;
    }
    ::close(input_);
    int status = 0;
    while (::waitpid(process_, &status, 0) < 0 && errno == EINTR) {
    }
    process_ = -1;
    for (std::size_t i = 0; i < pagersSignals.size(); ++i) {
        ::sigaction(pagersSignals[i], &former_[i], nullptr);
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : 0;
}

bool isBrokenPipe(const std::system_error& error) {
    return error.code() == std::error_code(EPIPE, std::generic_category());
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

bool showInPager(const std::string& command, const std::function<void(Output&)>& write) {
    // Colours come through, and less than a page stays on the screen; others' wishes hold.
    ::setenv("LESS", "FRX", 0);  // NOLINT(concurrency-mt-unsafe): no other thread reads it.
    Pager pager(command);
    Output output([&](std::string_view text) { pager.write(text); });
    try {
        write(output);
        output.flush();
    } catch (const std::system_error& error) {
        if (!isBrokenPipe(error)) {
            throw;
        }
    }
    const int status = pager.wait();
    return status != notFound && status != notExecutable;
}

}  // namespace depcompare
