// Preloaded into the program: lets one call of the system fail, the one that the environment names, as
// `FAILING_CALL=fsync:2` does, and leaves a file `failed` in the working folder.
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/types.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <string_view>

namespace {

bool fails(std::string_view call) {
    static int calls = 0;
    const char* const chosen = std::getenv("FAILING_CALL");
    if (chosen == nullptr || !std::string_view(chosen).starts_with(call) ||
        chosen[call.size()] != ':' || ++calls != std::atoi(chosen + call.size() + 1)) {
        return false;
    }
    static_cast<void>(::open("failed", O_CREAT | O_WRONLY, S_IRUSR));
    errno = EIO;
    return true;
}

template <class Function>
Function* original(const char* name) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

}  // namespace

extern "C" {

int fsync(int file) {
    return fails("fsync") ? -1 : original<int(int)>("fsync")(file);
}

int close(int file) {
    const int result = original<int(int)>("close")(file);
    return fails("close") ? -1 : result;
}

ssize_t write(int file, const void* bytes, std::size_t count) {
    return fails("write")
               ? -1
               : original<ssize_t(int, const void*, std::size_t)>("write")(file, bytes, count);
}

int linkat(int oldFolder, const char* oldPath, int newFolder, const char* newPath,
           int flags) noexcept {
    return fails("linkat") ? -1
                           : original<int(int, const char*, int, const char*, int)>("linkat")(
                                 oldFolder, oldPath, newFolder, newPath, flags);
}

int renameat2(int oldFolder, const char* oldPath, int newFolder, const char* newPath,
              unsigned flags) noexcept {
    return fails("renameat2") ? -1
                              : original<int(int, const char*, int, const char*, unsigned)>(
                                    "renameat2")(oldFolder, oldPath, newFolder, newPath, flags);
}

}  // extern "C"
