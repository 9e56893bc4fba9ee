#include "output/output.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

namespace depcompare {

namespace {

unsigned permissionsOfNewFiles() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666U & ~mask;
}

}  // namespace

void writeAll(int file, std::string_view name, std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = ::write(file, text.data(), text.size());
        if (count >= 0) {
            text.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno != EINTR) {
            throw std::system_error(errno, std::generic_category(), std::string(name));
        }
    }
}

void StandardOutput::write(std::string_view text) {
    writeAll(STDOUT_FILENO, "standard output", text);
}

bool StandardOutput::isRegularFile() {
    struct stat status {};
    return ::fstat(STDOUT_FILENO, &status) == 0 && S_ISREG(status.st_mode);
}

OutputFile::OutputFile(std::string path) : path_(std::move(path)), target_(path_) {
    struct stat existing {};
    if (::stat(path_.c_str(), &existing) != 0) {
        openBeside(permissionsOfNewFiles());
    } else if (S_ISREG(existing.st_mode)) {
        target_ = std::filesystem::canonical(path_).string();
        openBeside(existing.st_mode & 07777U);
    } else {
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): the system's interface.
        file_ = ::open(path_.c_str(), O_WRONLY | O_CLOEXEC);
        if (file_ < 0) {
            fail();
        }
    }
}

OutputFile::~OutputFile() {
    if (file_ >= 0) {
        ::close(file_);
    }
    if (!temporary_.empty()) {
        ::unlink(temporary_.c_str());
    }
}

void OutputFile::finish() {
    if (!temporary_.empty() && ::fsync(file_) != 0) {
        fail();
    }
    if (::close(std::exchange(file_, -1)) != 0) {
        fail();
    }
    if (temporary_.empty()) {
        return;
    }
    if (std::rename(temporary_.c_str(), target_.c_str()) != 0) {
        fail();
    }
    temporary_.clear();
}

void OutputFile::openBeside(unsigned permissions) {
    std::string name = target_ + ".XXXXXX";
    file_ = ::mkostemp(name.data(), O_CLOEXEC);
    if (file_ < 0) {
        fail();
    }
    temporary_ = std::move(name);
    // A file system without permissions refuses this, and has none to keep.
    static_cast<void>(::fchmod(file_, permissions));
}

void OutputFile::fail() const {
    throw std::system_error(errno, std::generic_category(), path_);
}

}  // namespace depcompare
