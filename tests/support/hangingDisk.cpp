// Library to preload into a program. Opening the file or folder with the name $QUILLORY_HANGING_NAME never
// returns, as on a network drive whose server is gone.

#include <cstdarg>
#include <cstdlib>
#include <string_view>

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

const char *variable(const char *name)
{
    const char *const value = std::getenv(name);
    return value ? value : "";
}

/// Never returns if \a path has the hanging name. First creates the file $QUILLORY_HANG_REACHED.
void hangIfNamed(const char *path)
{
    const std::string_view hangingName = variable("QUILLORY_HANGING_NAME");
    const std::string_view opened = path;
    if (hangingName.empty() || opened.substr(opened.rfind('/') + 1) != hangingName)
        return;
    ::syscall(SYS_openat, AT_FDCWD, variable("QUILLORY_HANG_REACHED"), O_CREAT | O_WRONLY, S_IRUSR);
    while (true)
        ::pause();
}

/// The function of the C library that the function \a name in this file replaces.
template <typename Function>
Function next(const char *name)
{
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

int openOrHang(const char *function, const char *path, int flags, va_list arguments)
{
    hangIfNamed(path);
    const bool hasMode = (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
    const mode_t mode = hasMode ? va_arg(arguments, mode_t) : 0;
    return next<int (*)(const char *, int, ...)>(function)(path, flags, mode);
}

} // namespace

// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the parameter names of the C library are
// reserved.
extern "C" {

DIR *opendir(const char *path)
{
    hangIfNamed(path);
    return next<DIR *(*)(const char *)>("opendir")(path);
}

int open(const char *path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const int descriptor = openOrHang("open", path, flags, arguments);
    va_end(arguments);
    return descriptor;
}

int open64(const char *path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const int descriptor = openOrHang("open64", path, flags, arguments);
    va_end(arguments);
    return descriptor;
}
}
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
