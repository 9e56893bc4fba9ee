#pragma once
// Files that appear under their names complete, all of them or none.
#include <sys/types.h>

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "output/output.h"

namespace depcompare {

/// Closes an open file.
class Descriptor {
  public:
    explicit Descriptor(int number = -1) noexcept : number_(number) {}
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    ~Descriptor() { static_cast<void>(close()); }

    [[nodiscard]] explicit operator bool() const noexcept { return number_ >= 0; }
    [[nodiscard]] int operator*() const noexcept { return number_; }
    /// Returns: false if the system reports an error, as for what was written before.
    bool close() noexcept;

  private:
    int number_;
};

/// A file that is written aside, without a name where the file system can: whatever ends the process
/// leaves nothing behind.
///
/// Symbolic links are followed. An existing file keeps its permissions (not the set-ID bits) and its
/// owner. An open file (/dev/stdout, or one of another process below /proc, to which is appended) and
/// anything but a regular file are written directly.
class OutputFile final : public Sink {
  public:
    explicit OutputFile(std::string path);

    [[nodiscard]] const std::string& path() const noexcept { return path_; }
    [[nodiscard]] bool isRegularFile() const;
    /// Returns: whether both would end as one file, or one would take the place of the other.
    [[nodiscard]] bool isSameAs(const OutputFile& other) const;
    /// Returns: whether this would take the place of the file that is open as `descriptor`.
    [[nodiscard]] bool replaces(int descriptor) const;

    void write(std::string_view text) override { writeAll(*content_, path_, text); }
    void finish() override;

    /// Puts the files in their places; if one fails, the others are as before. A file that cannot be
    /// replaced (a mount point, or one in a folder of others) is overwritten, after all others, and is
    /// incomplete if that fails.
    ///
    /// Requires: everything was written; no call after this one.
    static void finishAll(std::span<OutputFile* const> files);

  private:
    struct FileNumber {
        dev_t device = 0;
        ino_t number = 0;
        friend bool operator==(const FileNumber&, const FileNumber&) = default;
    };

    void openAside();
    void openTarget();
    void nameContent();
    void appear();
    void disappear() noexcept;
    void removeTemporary() noexcept;
    void overwrite();
    [[noreturn]] void fail() const;

    std::string path_;
    std::string folder_;  ///< of the file, without symbolic links; empty if it is written directly
    std::string name_;    ///< in the folder
    std::string place_;   ///< the folder and the name, ready for an undo without memory
    FileNumber folderNumber_;
    std::optional<FileNumber> former_;  ///< the file to be replaced
    Descriptor content_;                ///< what is written to
    bool canBeNamed_ = false;           ///< whether the content can become a file of the folder
    Descriptor target_;                 ///< the file, if it is to be overwritten
    std::string
        temporary_;  ///< path of the content, or, after it has appeared, of what it replaced
    bool appeared_ = false;
};

}  // namespace depcompare
