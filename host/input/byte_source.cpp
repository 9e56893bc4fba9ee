#include "input/byte_source.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

#include "input/input_error.h"

namespace depcompare {

namespace {

[[noreturn]] void failAsSystem(const std::string& name) {
    throw InputError(name, 0,
                     errno == EISDIR ? "a folder, not the file of a graph"
                                     : std::generic_category().message(errno));
}

class FileBytes final : public ByteSource {
  public:
    FileBytes(int file, std::string name) : file_(file), name_(std::move(name)) {}
    ~FileBytes() override {
        if (file_ != STDIN_FILENO) {
            ::close(file_);
        }
    }

    std::size_t read(std::span<char> target) override {
        for (;;) {
            const ssize_t count = ::read(file_, target.data(), target.size());
            if (count >= 0) {
                return static_cast<std::size_t>(count);
            }
            if (errno != EINTR) {
                failAsSystem(name_);
            }
        }
    }

  private:
    int file_;
    std::string name_;
};

class TextBytes final : public ByteSource {
  public:
    explicit TextBytes(std::string text) : text_(std::move(text)) {}

    std::size_t read(std::span<char> target) override {
        const std::size_t count = std::min(target.size(), text_.size() - taken_);
        std::copy_n(text_.data() + taken_, count, target.data());
        taken_ += count;
        return count;
    }

  private:
    std::string text_;
    std::size_t taken_ = 0;
};

}  // namespace

std::unique_ptr<ByteSource> fileBytes(const std::string& path, const std::string& name) {
    int file = STDIN_FILENO;
    if (path != "-") {
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): the system's interface.
        file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
        if (file < 0) {
            failAsSystem(name);
        }
    }
    return std::make_unique<FileBytes>(file, name);
}

std::unique_ptr<ByteSource> textBytes(std::string text) {
    return std::make_unique<TextBytes>(std::move(text));
}

}  // namespace depcompare
