#include "readers/input.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

#include <fmt/format.h>

#include "readers/input_error.h"

namespace depcompare {

namespace {

constexpr int noFile = -1;

std::string lastProblem() {
    return std::generic_category().message(errno);
}

}  // namespace

Input::Input(std::string name, int file, std::string buffered, const Limits& limits)
    : name_(std::move(name)), limits_(limits), file_(file), buffered_(std::move(buffered)) {}

Input::Input(Input&& other) noexcept
    : name_(std::move(other.name_)),
      limits_(other.limits_),
      file_(std::exchange(other.file_, noFile)),
      buffered_(std::move(other.buffered_)),
      taken_(other.taken_),
      total_(other.total_) {}

Input::~Input() {
    if (file_ > STDIN_FILENO) {
        ::close(file_);
    }
}

Input Input::open(const std::string& path, const Limits& limits) {
    if (path == "-") {
        return {"standard input", STDIN_FILENO, {}, limits};
    }
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): the system's interface.
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file == noFile) {
        throw InputError(path, 0, lastProblem());
    }
    return {path, file, {}, limits};
}

Input Input::fromText(std::string name, std::string text, const Limits& limits) {
    return {std::move(name), noFile, std::move(text), limits};
}

std::string_view Input::peek() {
    constexpr std::size_t wanted = 4096;
    while (file_ != noFile && buffered_.size() < wanted) {
        const std::size_t filled = buffered_.size();
        buffered_.resize(wanted);
        const std::size_t added = readFile(std::span(buffered_).subspan(filled));
        buffered_.resize(filled + added);
        if (added == 0) {
            break;
        }
    }
    return std::string_view(buffered_).substr(0, wanted);
}

std::size_t Input::read(std::span<char> target) {
    std::size_t count = 0;
    if (taken_ < buffered_.size()) {
        count = std::min(target.size(), buffered_.size() - taken_);
        std::copy_n(buffered_.data() + taken_, count, target.data());
        taken_ += count;
    } else {
        count = readFile(target);
    }
    total_ += count;
    if (total_ > limits_.bytes) {
        throw InputError(name_, 0, fmt::format("larger than {} bytes", limits_.bytes));
    }
    return count;
}

std::size_t Input::readFile(std::span<char> target) const {
    if (file_ == noFile) {
        return 0;
    }
    for (;;) {
        const ssize_t count = ::read(file_, target.data(), target.size());
        if (count >= 0) {
            return static_cast<std::size_t>(count);
        }
        if (errno != EINTR) {
            throw InputError(name_, 0, lastProblem());
        }
    }
}

}  // namespace depcompare
