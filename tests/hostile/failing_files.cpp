// SPDX-License-Identifier: GPL-3.0-or-later
#include "failing_files.h"

#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <mutex>
#include <string>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

namespace
{
struct State {
    std::mutex guard;
    std::string below;
    std::string told;
    std::string met;
    int at = 0;
    int error = ENOSPC;
    int seen = 0;
    bool on = false;
};
std::atomic<bool> Armed = false;

State &The_State()
{
    static State &state = *new State; // outlives every writer at exit
    return state;
}

template <typename Function>
Function *Real(const char *name)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}
/// The C library's own function of that name.
#define REAL(name) (Real<decltype(::name)>(#name))

std::string Link_Target(const std::string &link)
{
    char target[PATH_MAX];
    const ssize_t size = readlink(link.c_str(), target, sizeof target);
    return size > 0 ? std::string(target, static_cast<size_t>(size)) : std::string();
}

std::string Path_Of(int descriptor)
{
    return Link_Target("/proc/self/fd/" + std::to_string(descriptor));
}

std::string Path_Of(int directory, const char *path)
{
    if (path[0] == '/')
        return path;
    return (directory == AT_FDCWD ? Link_Target("/proc/self/cwd") : Path_Of(directory)) + '/' + path;
}

void Tell(const State &state)
{
    const int file = state.told.empty() ? -1 : REAL(open)(state.told.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    if (file < 0)
        return;
    (void)!REAL(write)(file, state.met.data(), state.met.size());
    REAL(close)(file);
}

/// Counts a call. @returns whether it fails; errno says then how
bool Fails(const char *call, const std::string &path)
{
    State &state = The_State();
    const std::lock_guard lock(state.guard);
    if (path.compare(0, state.below.size(), state.below) != 0)
        return false;
    const int number = ++state.seen;
    if (state.at == 0 || number < state.at || (number > state.at && !state.on))
        return false;
    if (number == state.at) {
        state.met = std::string(call) + ' ' + path;
        Tell(state);
    }
    if (state.error == Failing_Files_Kill)
        raise(SIGKILL);
    errno = state.error;
    return true;
}

bool Fails_On(const char *call, int descriptor)
{
    return Armed && Fails(call, Path_Of(descriptor));
}

bool Fails_At(const char *call, int directory, const char *path)
{
    return Armed && Fails(call, Path_Of(directory, path));
}

bool Is_Written(int descriptor)
{
    return (fcntl(descriptor, F_GETFL) & O_ACCMODE) != O_RDONLY;
}

bool Makes_A_File(int flags)
{
    return (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
}

void Arm(State &state, const char *directory, int at, int error, bool on)
{
    char real[PATH_MAX];
    state.below = realpath(directory, real) != nullptr ? real : directory;
    state.at = at;
    state.error = error;
    state.on = on;
    state.seen = 0;
    state.met.clear();
    Armed = true;
}

std::string Environment(const char *name)
{
    const char *value = std::getenv(name);
    return value != nullptr ? value : "";
}

__attribute__((constructor)) void Arm_As_The_Environment_Says()
{
    const std::string below = Environment("FAILING_FILES_BELOW");
    if (below.empty())
        return;
    State &state = The_State();
    state.told = Environment("FAILING_FILES_TOLD");
    Arm(state, below.c_str(), std::atoi(Environment("FAILING_FILES_AT").c_str()),
        Environment("FAILING_FILES_ERROR") == "EIO" ? EIO : ENOSPC, Environment("FAILING_FILES_ON") == "1");
}
} // namespace

// Each stands for the C library's function of its name, in both widths of file offsets.
// NOLINTBEGIN(readability-identifier-naming)
#define OPENER(name)                                                                                                   \
    int name(const char *path, int flags, ...)                                                                         \
    {                                                                                                                  \
        va_list more;                                                                                                  \
        va_start(more, flags);                                                                                         \
        const mode_t mode = Makes_A_File(flags) ? va_arg(more, mode_t) : 0;                                            \
        va_end(more);                                                                                                  \
        return Makes_A_File(flags) && Fails_At("open", AT_FDCWD, path) ? -1 : REAL(name)(path, flags, mode);           \
    }
#define OPENER_AT(name)                                                                                                \
    int name(int directory, const char *path, int flags, ...)                                                          \
    {                                                                                                                  \
        va_list more;                                                                                                  \
        va_start(more, flags);                                                                                         \
        const mode_t mode = Makes_A_File(flags) ? va_arg(more, mode_t) : 0;                                            \
        va_end(more);                                                                                                  \
        return Makes_A_File(flags) && Fails_At("open", directory, path) ? -1                                           \
                                                                        : REAL(name)(directory, path, flags, mode);    \
    }
#define TRUNCATER(name, offset)                                                                                        \
    int name(int file, offset size) noexcept                                                                           \
    {                                                                                                                  \
        return Fails_On("ftruncate", file) ? -1 : REAL(name)(file, size);                                              \
    }
#define PLACE_WRITER(name, offset)                                                                                     \
    ssize_t name(int file, const void *bytes, size_t size, offset place)                                               \
    {                                                                                                                  \
        return Fails_On("write", file) ? -1 : REAL(name)(file, bytes, size, place);                                    \
    }

extern "C" {
OPENER(open)
OPENER(open64)
OPENER_AT(openat)
OPENER_AT(openat64)
TRUNCATER(ftruncate, off_t)
TRUNCATER(ftruncate64, off64_t)
PLACE_WRITER(pwrite, off_t)
PLACE_WRITER(pwrite64, off64_t)

ssize_t write(int file, const void *bytes, size_t size)
{
    return Fails_On("write", file) ? -1 : REAL(write)(file, bytes, size);
}

ssize_t writev(int file, const struct iovec *parts, int count)
{
    return Fails_On("write", file) ? -1 : REAL(writev)(file, parts, count);
}

int fsync(int file)
{
    return Fails_On("fsync", file) ? -1 : REAL(fsync)(file);
}

int fdatasync(int file)
{
    return Fails_On("fsync", file) ? -1 : REAL(fdatasync)(file);
}

/// The descriptor is gone all the same, as on a disk that tells late.
int close(int file)
{
    const bool fails = Armed && Is_Written(file) && Fails_On("close", file);
    const int error = errno;
    const int result = REAL(close)(file);
    if (fails)
        errno = error;
    return fails ? -1 : result;
}

int rename(const char *from, const char *to) noexcept
{
    return Fails_At("rename", AT_FDCWD, to) ? -1 : REAL(rename)(from, to);
}

int renameat(int fromDirectory, const char *from, int toDirectory, const char *to) noexcept
{
    return Fails_At("rename", toDirectory, to) ? -1 : REAL(renameat)(fromDirectory, from, toDirectory, to);
}

int renameat2(int fromDirectory, const char *from, int toDirectory, const char *to, unsigned flags) noexcept
{
    return Fails_At("rename", toDirectory, to) ? -1 : REAL(renameat2)(fromDirectory, from, toDirectory, to, flags);
}

int link(const char *from, const char *to) noexcept
{
    return Fails_At("link", AT_FDCWD, to) ? -1 : REAL(link)(from, to);
}

int linkat(int fromDirectory, const char *from, int toDirectory, const char *to, int flags) noexcept
{
    return Fails_At("link", toDirectory, to) ? -1 : REAL(linkat)(fromDirectory, from, toDirectory, to, flags);
}

int mkdir(const char *path, mode_t mode) noexcept
{
    return Fails_At("mkdir", AT_FDCWD, path) ? -1 : REAL(mkdir)(path, mode);
}

int mkdirat(int directory, const char *path, mode_t mode) noexcept
{
    return Fails_At("mkdir", directory, path) ? -1 : REAL(mkdirat)(directory, path, mode);
}

void Failing_Files_Arm(const char *directory, int at, int error, bool on)
{
    const std::lock_guard lock(The_State().guard);
    Arm(The_State(), directory, at, error, on);
}

void Failing_Files_Disarm()
{
    Armed = false;
}

int Failing_Files_Seen()
{
    return The_State().seen;
}

const char *Failing_Files_Met()
{
    return The_State().met.c_str();
}
}
// NOLINTEND(readability-identifier-naming)
