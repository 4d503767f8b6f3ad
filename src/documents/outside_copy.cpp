// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/outside_copy.h"

#include "core/error_log.h"
#include "documents/draft_folder.h"
#include "platform/files/door.h"
#include "platform/files/paths.h"
#include "platform/files/running_programs.h"

#include <QCborValue>
#include <QCryptographicHash>
#include <QFile>

namespace
{
const QString Record_Name = QStringLiteral("/record.cbor");
const QString File_Key = QStringLiteral("file");
const QString Digest_Key = QStringLiteral("digest");

void Check_Name(const QString &file)
{
    for (const QString &name : file.split(QLatin1Char('/'))) {
        if (!Files::Is_Plain_Name(name))
            throw Run_Time_Error(Error_Number::Path_Access, QStringLiteral("Bad file name: ") + file);
    }
}
} // namespace

bool Is_Open_In_Office(const QString &path)
{
    const QString name = path.section(QLatin1Char('/'), -1);
    const QString directory = path.chopped(name.size());
    // Office programs put one of these beside the file: the whole name, or the name with its first two characters gone.
    for (const QString &lock :
         {QStringLiteral(".~lock.%1#").arg(name), QStringLiteral("~$") + name, QStringLiteral("~$") + name.mid(2)}) {
        if (Files::Look(directory + lock))
            return true;
    }
    return false;
}

Outside_Copy::Outside_Copy(const QString &suffix, const QString &name, const QString &folder)
    : m_file(folder.isEmpty() ? name : folder + QLatin1Char('/') + name)
{
    if (!Files::Is_Plain_Name(name))
        throw Run_Time_Error(Error_Number::Path_Access, QStringLiteral("Bad file name: ") + name);
    m_folder = Draft_Folder::New_Path(suffix);
    Files::Make_Directory(Directory());
}

std::vector<Outside_Copy> Outside_Copy::Left(const QString &suffix)
{
    std::vector<Outside_Copy> left;
    for (const QString &folder : Draft_Folder::Left(suffix)) {
        if (!Files::Is_File(folder + Record_Name)) { // killed before the file was given away
            Files::Delete_Folder(folder);
            continue;
        }
        Trap(QStringLiteral("Outside_Copy\\Left"), [&] {
            Outside_Copy copy;
            copy.m_folder = folder;
            copy.Read_Record();
            left.push_back(std::move(copy));
        });
    }
    return left;
}

QString Outside_Copy::Path() const
{
    return m_folder + QLatin1Char('/') + m_file;
}

QString Outside_Copy::Directory() const
{
    return Path().section(QLatin1Char('/'), 0, -2);
}

bool Outside_Copy::Is_In_Use()
{
    const bool locked = Is_Open_In_Office(Path());
    m_wasLocked = m_wasLocked || locked;
    return locked || (!m_wasLocked && Files::Is_On_A_Command_Line(Path()));
}

bool Outside_Copy::Is_Changed()
{
    const Moment now = Now();
    if (now == m_seen || now.size < 0 || m_digest.isEmpty())
        return false;
    const bool changed = Digest() != m_digest;
    if (!changed)
        m_seen = now;
    return changed;
}

bool Outside_Copy::Is_Settled_Change()
{
    const Moment now = Now();
    const bool settled = now == m_looked;
    m_looked = now;
    return settled && Is_Changed();
}

void Outside_Copy::Note(const QCborMap &facts)
{
    Note(facts, Now());
}

void Outside_Copy::Note(const QCborMap &facts, const Moment &taken)
{
    m_facts = facts;
    if (Now() == taken) {
        m_seen = m_looked = taken;
        m_digest = Digest();
    }
    Write_Record();
}

void Outside_Copy::Remove() const
{
    Files::Delete_Folder(m_folder);
}

Outside_Copy::Moment Outside_Copy::Now() const
{
    const std::optional<Files::Entry> file = Files::Look(Path());
    return file && !file->is_folder ? Moment{file->size, file->changed} : Moment();
}

QByteArray Outside_Copy::Digest() const
{
    QCryptographicHash digest(QCryptographicHash::Sha256);
    Resume_Next([&] {
        QFile file;
        Files::Open_To_Read(file, Path());
        digest.addData(&file);
    });
    return digest.result();
}

void Outside_Copy::Read_Record()
{
    m_facts = QCborValue::fromCbor(Files::Read_Bytes(m_folder + Record_Name)).toMap();
    m_file = m_facts[File_Key].toString();
    m_digest = m_facts[Digest_Key].toByteArray();
    if (m_digest.isEmpty())
        throw Run_Time_Error(Error_Number::Path_Access, QStringLiteral("Damaged record: ") + m_folder);
    Check_Name(m_file);
}

void Outside_Copy::Write_Record() const
{
    QCborMap record = m_facts;
    record[File_Key] = m_file;
    record[Digest_Key] = m_digest;
    Files::Write_Bytes(m_folder + Record_Name, record.toCborValue().toCbor(), Files::Durability::Staging);
}
