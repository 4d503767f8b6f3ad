// SPDX-License-Identifier: GPL-3.0-or-later
// room: profile
//
// Any bytes as a settings file, a language pack or an update's list: it is read, a key that is written into it comes
// back, and the other keys stay.
#include "platform/errors/run_time_error.h"
#include "platform/files/paths.h"
#include "platform/profile/profile.h"

#include <QTemporaryDir>
#include <cstdlib>

using namespace Qt::StringLiterals;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    static const QTemporaryDir folder(u"/dev/shm/zelqor-fuzz-XXXXXX"_s);
    static const QString path = folder.filePath(u"a.ini"_s);
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    Files::Write_Bytes(path, bytes, Files::Durability::Staging);
    const Profile::Snapshot before(path);
    Profile::Write(path, u"Added"_s, u"Key"_s, u"value"_s);
    const Profile::Snapshot after(path);
    if (after.Value(u"added"_s, u"KEY"_s) != u"value"_s || Profile::Read(path, u"Added"_s, u"Key"_s) != u"value"_s)
        std::abort();
    for (const QString &section : before.Sections()) {
        for (const QString &key : before.Keys(section)) {
            const bool written = section.compare(u"Added"_s, Qt::CaseInsensitive) == 0 &&
                                 key.compare(u"Key"_s, Qt::CaseInsensitive) == 0;
            if (!written && after.Value(section, key) != before.Value(section, key))
                std::abort();
        }
    }
    return 0;
}
