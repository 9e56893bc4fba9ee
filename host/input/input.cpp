#include "input/input.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>

#include "input/gunzip.h"
#include "input/input_error.h"

namespace depcompare {

namespace {

/// Bytes that were looked at, and then the others.
class PrefixedBytes final : public ByteSource {
  public:
    PrefixedBytes(std::string prefix, std::unique_ptr<ByteSource> rest)
        : prefix_(textBytes(std::move(prefix))), rest_(std::move(rest)) {}

    std::size_t read(std::span<char> target) override {
        const std::size_t count = prefix_->read(target);
        return count != 0 ? count : rest_->read(target);
    }

  private:
    std::unique_ptr<ByteSource> prefix_;
    std::unique_ptr<ByteSource> rest_;
};

}  // namespace

Input Input::open(const std::string& path, const std::string& name, const Limits& limits) {
    return {name, fileBytes(path, name), limits};
}

Input Input::open(const std::string& path, const Limits& limits) {
    return open(path, path == "-" ? "standard input" : path, limits);
}

Input Input::fromText(std::string name, std::string text, const Limits& limits) {
    return {std::move(name), textBytes(std::move(text)), limits};
}

std::string_view Input::peek() {
    constexpr std::size_t wanted = 1U << 16U;
    if (!std::exchange(opened_, true)) {
        fill(2);
        if (looksPacked(buffered_)) {
            source_ = unpackedBytes(
                std::make_unique<PrefixedBytes>(std::exchange(buffered_, {}), std::move(source_)),
                name_);
        }
        fill(wanted);
    }
    return std::string_view(buffered_).substr(0, wanted);
}

void Input::fill(std::size_t wanted) {
    for (std::size_t added = 1; added != 0 && buffered_.size() < wanted;) {
        const std::size_t filled = buffered_.size();
        buffered_.resize(wanted);
        added = source_->read(std::span(buffered_).subspan(filled));
        buffered_.resize(filled + added);
    }
}

std::size_t Input::read(std::span<char> target) {
    if (!opened_) {
        static_cast<void>(peek());
    }
    std::size_t count = 0;
    if (taken_ < buffered_.size()) {
        count = std::min(target.size(), buffered_.size() - taken_);
        std::copy_n(buffered_.data() + taken_, count, target.data());
        taken_ += count;
    } else {
        count = source_->read(target);
    }
    total_ += count;
    if (total_ > limits_.bytes) {
        throw InputError(name_, 0,
                         fmt::format("larger than {} bytes (--max-input-bytes)", limits_.bytes));
    }
    return count;
}

}  // namespace depcompare
