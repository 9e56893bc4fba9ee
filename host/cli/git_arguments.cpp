#include "cli/git_arguments.h"

#include <string_view>

#include <fmt/format.h>

#include "cli/command_line.h"

namespace depcompare {

namespace {

std::string nameOf(std::string_view prefix, std::string_view path, std::string_view file) {
    return file == "/dev/null" ? std::string(file) : fmt::format("{}/{}", prefix, path);
}

}  // namespace

std::optional<GitArguments> gitArguments(std::span<const char* const> words) {
    constexpr std::size_t oldFile = 1;
    constexpr std::size_t newFile = 4;
    constexpr std::size_t newPath = 7;
    switch (words.size()) {
        case 1:
            return std::nullopt;
        case 2:
            return GitArguments{
                .paths = {words[0], words[1]}, .names = {words[0], words[1]}, .driver = false};
        case newPath:
        case newPath + 2:
            return GitArguments{
                .paths = {words[oldFile], words[newFile]},
                .names = {nameOf("a", words[0], words[oldFile]),
                          nameOf("b", words.size() > newPath ? words[newPath] : words[0],
                                 words[newFile])},
                .driver = true};
        default:
            throw UsageError(fmt::format(
                "--git: 1, 2, 7 or 9 words are what git adds, not {}; --git has to come last",
                words.size()));
    }
}

}  // namespace depcompare
