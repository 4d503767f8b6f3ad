// SPDX-License-Identifier: GPL-3.0-or-later
#include "own_file.h"

#include "platform/book/book_items.h"

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
std::string Path()
{
    char path[PATH_MAX];
    const ssize_t size = ::readlink("/proc/self/exe", path, sizeof path);
    return size > 0 && size < PATH_MAX ? std::string(path, static_cast<std::size_t>(size)) : std::string();
}

bool Write_All(int file, const std::string &bytes)
{
    for (std::size_t done = 0; done < bytes.size();) {
        const ssize_t written = ::write(file, bytes.data() + done, bytes.size() - done);
        if (written <= 0)
            return false;
        done += static_cast<std::size_t>(written);
    }
    return ::fsync(file) == 0;
}
} // namespace

namespace Own_File
{
std::string Read()
{
    std::string bytes;
    if (std::FILE *file = std::fopen("/proc/self/exe", "rb")) {
        struct stat state {
        };
        if (::fstat(fileno(file), &state) == 0 && state.st_size > 0)
            bytes.resize(static_cast<std::size_t>(state.st_size));
        bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file));
        std::fclose(file);
    }
    return bytes;
}

bool Replace(const std::string &file, const Book::Parameters &parameters, bool documents)
{
    std::string book(Book::Program(file));
    auto add = [&, former = std::optional<std::uint64_t>()](std::uint32_t id, std::string_view bytes) mutable {
        book += Book::Record(book.size(), former, id, bytes);
        former = book.size() - Book::Footer_Size;
    };
    add(Book::Parameters_Id, Book::Written(parameters));
    for (const Book::Item &item : Book::Items(file))
        if (documents && item.id != Book::Parameters_Id)
            add(item.id, item.bytes);

    const std::string path = Path();
    std::string beside = path + ".XXXXXX";
    const int target = path.empty() ? -1 : ::mkstemp(beside.data());
    if (target < 0)
        return false;
    struct stat state {
    };
    bool done = Write_All(target, book) && ::stat(path.c_str(), &state) == 0 && ::fchmod(target, state.st_mode) == 0;
    done = ::close(target) == 0 && done && std::rename(beside.c_str(), path.c_str()) == 0;
    if (!done)
        ::unlink(beside.c_str());
    return done;
}
} // namespace Own_File
