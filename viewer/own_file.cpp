// SPDX-License-Identifier: GPL-3.0-or-later
#include "own_file.h"

#include "platform/book/book_items.h"

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
const char *const Own = "/proc/self/exe";

std::string Path()
{
    char path[PATH_MAX];
    const ssize_t size = ::readlink(Own, path, sizeof path);
    return size > 0 && size < PATH_MAX ? std::string(path, static_cast<std::size_t>(size)) : std::string();
}

std::string_view Mapped()
{
    const int file = ::open(Own, O_RDONLY | O_CLOEXEC);
    struct stat state {
    };
    std::string_view bytes;
    if (file >= 0 && ::fstat(file, &state) == 0 && state.st_size > 0) {
        const auto size = static_cast<std::size_t>(state.st_size);
        void *begin = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
        if (begin != MAP_FAILED)
            bytes = {static_cast<const char *>(begin), size};
    }
    if (file >= 0)
        ::close(file);
    return bytes;
}

bool Write_All(int file, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t written = ::write(file, bytes.data(), bytes.size());
        if (written <= 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}
} // namespace

namespace Own_File
{
std::string_view Bytes()
{
    static const std::string_view bytes = Mapped();
    return bytes;
}

bool Replace(const Book::Parameters &parameters, bool documents)
{
    const std::string_view program = Book::Program(Bytes());
    const Book::Place place =
        documents ? Book::Place_For(Bytes(), Book::Parameters_Id) : Book::Place{program.size(), std::nullopt};
    const std::string record = Book::Record(place.size, place.former, Book::Parameters_Id, Book::Written(parameters));

    const std::string path = Path();
    std::string beside = path + ".XXXXXX";
    const int target = path.empty() ? -1 : ::mkstemp(beside.data());
    if (target < 0)
        return false;
    struct stat state {
    };
    bool done = Write_All(target, Bytes().substr(0, place.size)) && Write_All(target, record) && ::fsync(target) == 0 &&
                ::stat(path.c_str(), &state) == 0 && ::fchmod(target, state.st_mode) == 0;
    done = ::close(target) == 0 && done && std::rename(beside.c_str(), path.c_str()) == 0;
    if (!done)
        ::unlink(beside.c_str());
    return done;
}
} // namespace Own_File
