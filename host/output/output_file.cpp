#include "output/output_file.h"

#include <fcntl.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>
#include <vector>

#include <fmt/format.h>

namespace depcompare {

namespace fs = std::filesystem;

namespace {

int openFile(const std::string& path, int flags, mode_t permissions = 0) {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): the system's interface.
    return ::open(path.c_str(), flags | O_CLOEXEC, permissions);
}

mode_t permissionsOfNewFiles() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666U & ~mask;
}

/// What a path names after all symbolic links, the last one included.
struct Destination {
    fs::path path;
    bool isOpen = false;            ///< whether it names an open file
    std::optional<int> descriptor;  ///< the number of that file if it is one of this process
};

/// Returns: the process whose open files the folder has: /proc/PROCESS/fd, /proc/PROCESS/task/THREAD/fd.
std::optional<std::string> ownerOfOpenFiles(const fs::path& folder) {
    const std::vector<fs::path> parts(folder.begin(), folder.end());
    const bool isOfThread = parts.size() == 6 && parts[3] == "task";
    if ((parts.size() != 4 && !isOfThread) || parts[1] != "proc" || parts.back() != "fd") {
        return std::nullopt;
    }
    return parts[2].string();
}

/// Requires: nothing; the file need not exist.
/// Throws:   `fs::filesystem_error`.
Destination follow(fs::path path) {
    // More than any system follows.
    constexpr int mostLinks = 64;
    for (int links = 0; links < mostLinks; ++links) {
        const fs::path parent = path.parent_path();
        const fs::path folder = fs::canonical(parent.empty() ? "." : parent);
        const std::string name = path.filename().string();
        if (const auto process = ownerOfOpenFiles(folder)) {
            Destination opened{.path = path, .isOpen = true, .descriptor = std::nullopt};
            if (*process == fmt::format("{}", ::getpid())) {
                int number = -1;
                std::from_chars(name.data(), name.data() + name.size(), number);
                opened.descriptor = number;
            }
            return opened;
        }
        std::error_code isNoLink;
        const fs::path next = fs::read_symlink(folder / name, isNoLink);
        if (isNoLink) {
            return {.path = folder / name, .isOpen = false, .descriptor = std::nullopt};
        }
        path = folder / next;
    }
    throw fs::filesystem_error("", std::make_error_code(std::errc::too_many_symbolic_link_levels));
}

/// While this lives, signals that end the process wait.
class SignalsWait {
  public:
    SignalsWait() {
        sigset_t signals;
        ::sigemptyset(&signals);
        for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) {
            ::sigaddset(&signals, signal);
        }
        ::pthread_sigmask(SIG_BLOCK, &signals, &former_);
    }
    SignalsWait(const SignalsWait&) = delete;
    SignalsWait& operator=(const SignalsWait&) = delete;
    ~SignalsWait() { ::pthread_sigmask(SIG_SETMASK, &former_, nullptr); }

  private:
    sigset_t former_{};
};

/// Returns: false on failure, with `errno`.
bool copyAll(int from, int to) {
    off_t offset = 0;
    for (;;) {
        constexpr std::size_t piece = 1U << 30U;
        const ssize_t count = ::sendfile(to, from, &offset, piece);
        if (count == 0) {
            return ::ftruncate(to, offset) == 0 && ::fsync(to) == 0;
        }
        if (count < 0 && errno != EINTR) {
            return false;
        }
    }
}

/// Returns: whether the file system or its rights forbid to replace the file, which may be writable
///          nevertheless.
bool forbidsReplacement(int error) {
    return error == EBUSY || error == EPERM || error == EACCES || error == EROFS;
}

}  // namespace

bool Descriptor::close() noexcept {
    const int number = std::exchange(number_, -1);
    return number < 0 || ::close(number) == 0;
}

OutputFile::OutputFile(std::string path) : path_(std::move(path)) {
    Destination destination;
    try {
        destination = follow(path_);
    } catch (const fs::filesystem_error& error) {
        throw std::system_error(error.code(), path_);
    }
    struct stat status {};
    const bool exists = ::stat(path_.c_str(), &status) == 0;
    if (destination.descriptor) {
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): the system's interface.
        content_ = Descriptor(::fcntl(*destination.descriptor, F_DUPFD_CLOEXEC, 0));
    } else if (destination.isOpen) {
        content_ = Descriptor(openFile(path_, O_WRONLY | O_APPEND));
    } else if (exists && !S_ISREG(status.st_mode)) {
        content_ = Descriptor(openFile(path_, O_WRONLY));
    } else {
        folder_ = destination.path.parent_path().string();
        name_ = destination.path.filename().string();
        place_ = destination.path.string();
        if (exists) {
            former_ = {.device = status.st_dev, .number = status.st_ino};
        }
        openAside();
    }
    if (!content_) {
        fail();
    }
}

bool OutputFile::isRegularFile() const {
    struct stat status {};
    return ::fstat(*content_, &status) == 0 && S_ISREG(status.st_mode);
}

bool OutputFile::isSameAs(const OutputFile& other) const {
    const bool areOneName =
        !folder_.empty() && folderNumber_ == other.folderNumber_ && name_ == other.name_;
    const bool areOneFile = former_ && former_ == other.former_;
    return areOneName || areOneFile || replaces(*other.content_) || other.replaces(*content_);
}

bool OutputFile::replaces(int descriptor) const {
    struct stat status {};
    return former_ && ::fstat(descriptor, &status) == 0 &&
           *former_ == FileNumber{.device = status.st_dev, .number = status.st_ino};
}

void OutputFile::finish() {
    OutputFile* const self = this;
    finishAll({&self, 1});
}

void OutputFile::finishAll(std::span<OutputFile* const> files) {
    for (OutputFile* const file : files) {
        // Devices and pipes cannot be synchronised, and need not be.
        if (::fsync(*file->content_) != 0 && !file->folder_.empty()) {
            file->fail();
        }
    }
    const SignalsWait untilAllAreInPlace;
    try {
        for (OutputFile* const file : files) {
            if (!file->folder_.empty() && !file->target_) {
                file->appear();
            }
        }
        for (OutputFile* const file : files) {
            if (file->target_) {
                file->overwrite();
            }
        }
        for (OutputFile* const file : files) {
            if (!file->content_.close()) {
                file->fail();
            }
        }
    } catch (...) {
        for (OutputFile* const file : files) {
            file->disappear();
        }
        throw;
    }
    for (OutputFile* const file : files) {
        file->removeTemporary();
    }
}

/// Opens the content, and the file itself if it cannot be replaced.
void OutputFile::openAside() {
    struct stat status {};
    if (::stat(folder_.c_str(), &status) != 0) {
        fail();
    }
    folderNumber_ = {.device = status.st_dev, .number = status.st_ino};
    if (::access(folder_.c_str(), W_OK | X_OK) != 0) {
        openTarget();
    }
    content_ = Descriptor(openFile(folder_, O_TMPFILE | O_RDWR, S_IRUSR | S_IWUSR));
    canBeNamed_ = static_cast<bool>(content_);
    if (!content_) {
        const std::unique_ptr<std::FILE, int (*)(std::FILE*)> elsewhere(std::tmpfile(),
                                                                        &std::fclose);
        if (!elsewhere) {
            fail();
        }
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): the system's interface.
        content_ = Descriptor(::fcntl(::fileno(elsewhere.get()), F_DUPFD_CLOEXEC, 0));
    }
}

void OutputFile::openTarget() {
    const int error = errno;
    if (former_) {
        target_ = Descriptor(openFile(place_, O_WRONLY));
    }
    if (!target_) {
        errno = former_ ? errno : error;
        fail();
    }
}

/// Gives the content a name in the folder, with the permissions and the owner of the file.
void OutputFile::nameContent() {
    static unsigned count = 0;
    Descriptor copy;
    bool named = false;
    do {
        std::string name = fmt::format("{}/.depcompare-{}-{}", folder_, ::getpid(), count++);
        if (canBeNamed_) {
            named = ::linkat(AT_FDCWD, fmt::format("/proc/self/fd/{}", *content_).c_str(), AT_FDCWD,
                             name.c_str(), AT_SYMLINK_FOLLOW) == 0;
        } else {
            copy = Descriptor(openFile(name, O_CREAT | O_EXCL | O_WRONLY, S_IRUSR | S_IWUSR));
            named = static_cast<bool>(copy);
        }
        if (named) {
            temporary_ = std::move(name);
        }
    } while (!named && errno == EEXIST);
    if (!named || (copy && !copyAll(*content_, *copy))) {
        fail();
    }
    const int file = copy ? *copy : *content_;
    struct stat status {};
    mode_t permissions = permissionsOfNewFiles();
    if (former_ && ::stat(place_.c_str(), &status) == 0) {
        permissions = status.st_mode & (S_IRWXU | S_IRWXG | S_IRWXO);
        struct stat own {};
        if (::fstat(file, &own) != 0) {
            fail();
        }
        if ((own.st_uid != status.st_uid || own.st_gid != status.st_gid) &&
            ::fchown(file, status.st_uid, status.st_gid) != 0) {
            fail();
        }
    }
    // A file system without permissions refuses this, and has none to keep.
    static_cast<void>(::fchmod(file, permissions));
    if (!copy.close()) {
        fail();
    }
}

/// Puts the content in the file's place; what stood there gets the temporary name. If the file cannot
/// be replaced, it is opened to be overwritten.
void OutputFile::appear() {
    try {
        nameContent();
        const auto move = [&](unsigned how) {
            return ::renameat2(AT_FDCWD, temporary_.c_str(), AT_FDCWD, place_.c_str(), how) == 0;
        };
        bool kept = former_ && move(RENAME_EXCHANGE);
        const bool cannotExchange = errno == EINVAL || errno == ENOSYS || errno == ENOENT;
        if (!kept && ((former_ && !cannotExchange) || !move(0))) {
            fail();
        }
        appeared_ = true;
        if (!kept) {
            temporary_.clear();
        }
    } catch (const std::system_error& error) {
        if (!former_ || !forbidsReplacement(error.code().value())) {
            throw;
        }
        removeTemporary();
        openTarget();
    }
}

void OutputFile::disappear() noexcept {
    if (appeared_) {
        if (!temporary_.empty()) {
            ::renameat2(AT_FDCWD, temporary_.c_str(), AT_FDCWD, place_.c_str(), RENAME_EXCHANGE);
        } else if (!former_) {
            ::unlink(place_.c_str());
        }
    }
    removeTemporary();
}

void OutputFile::removeTemporary() noexcept {
    if (!temporary_.empty()) {
        ::unlink(temporary_.c_str());
        temporary_.clear();
    }
}

void OutputFile::overwrite() {
    if (!copyAll(*content_, *target_) || !target_.close()) {
        fail();
    }
}

void OutputFile::fail() const {
    throw std::system_error(errno, std::generic_category(), path_);
}

}  // namespace depcompare
