#include "output/output.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace depcompare {

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

}  // namespace depcompare
