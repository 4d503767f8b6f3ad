// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/attachment_copy.h"

#include "core/error_log.h"
#include "documents/draft_folder.h"
#include "documents/outside_file.h"
#include "platform/files/door.h"
#include "platform/files/paths.h"

#include <QCborMap>
#include <QCborValue>
#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>

namespace
{
const QString Suffix = QStringLiteral(".attached");
const QString Record_Name = QStringLiteral("/record.cbor");

/// Files that run, or that another program runs, change without anybody having edited them.
bool Is_Followed(const QString &name)
{
    static const QStringList running{QStringLiteral("EXE"), QStringLiteral("BAT"), QStringLiteral("COM"),
                                     QStringLiteral("CHM")};
    return !running.contains(QFileInfo(name).suffix().toUpper());
}
} // namespace

Attachment_Copy::Attachment_Copy(Attachment attachment) : m_attachment(std::move(attachment))
{
    if (!Files::Is_Plain_Name(m_attachment.name))
        throw Run_Time_Error(Error_Number::Path_Access, QStringLiteral("Bad file name: ") + m_attachment.name);
    m_directory = Draft_Folder::New_Path(Suffix);
    Files::Make_Directory(m_directory + QStringLiteral("/file"));
}

Attachment_Copy::Attachment_Copy(QString directory, const QByteArray &record) : m_directory(std::move(directory))
{
    const QCborMap map = QCborValue::fromCbor(record).toMap();
    m_attachment.id = map[QStringLiteral("id")].toInteger();
    m_attachment.document = map[QStringLiteral("document")].toString();
    m_attachment.name = map[QStringLiteral("name")].toString();
    m_attachment.remark = map[QStringLiteral("remark")].toString();
    m_digest = map[QStringLiteral("digest")].toByteArray();
    if (!Files::Is_Plain_Name(m_attachment.name))
        throw Run_Time_Error(Error_Number::Path_Access, QStringLiteral("Damaged record: ") + m_directory);
}

Attachment_Copy::~Attachment_Copy()
{
    if (!Is_Open_In_Office(Path()) && !Is_Changed())
        Files::Delete_Folder(m_directory);
}

bool Attachment_Copy::Write(Work &work)
{
    if (!Write_Attachment(m_attachment.id, Path(), work))
        return false;
    Note();
    return true;
}

QString Attachment_Copy::Path() const
{
    return m_directory + QStringLiteral("/file/") + m_attachment.name;
}

bool Attachment_Copy::Is_Changed()
{
    const State now = Now();
    if (now == m_seen || now.size < 0 || m_digest.isEmpty() || !Is_Followed(m_attachment.name))
        return false;
    const bool changed = Digest() != m_digest;
    if (!changed)
        m_seen = now;
    return changed;
}

Saved_Attachment Attachment_Copy::Take_Back(Work &work)
{
    const State taken = Now();
    Saved_Attachment saved = Replace_Attachment(m_attachment, Path(), work);
    if (saved.id != 0) {
        m_attachment.id = saved.id;
        if (Now() == taken) // else it was written once more meanwhile, which is another change
            Note();
    }
    return saved;
}

void Attachment_Copy::Give_Up()
{
    Note();
}

void Attachment_Copy::Adopt(const QString &code_id)
{
    if (!m_attachment.document.isEmpty())
        return;
    m_attachment.document = code_id;
    Note();
}

std::vector<std::unique_ptr<Attachment_Copy>> Attachment_Copy::Left()
{
    std::vector<std::unique_ptr<Attachment_Copy>> changed;
    for (const QString &directory : Draft_Folder::Left(Suffix)) {
        if (!Files::Is_File(directory + Record_Name)) { // killed before the file was given away
            Files::Delete_Folder(directory);
            continue;
        }
        Trap(QStringLiteral("Attachment_Copy\\Left"), [&] {
            std::unique_ptr<Attachment_Copy> copy(
                new Attachment_Copy(directory, Files::Read_Bytes(directory + Record_Name)));
            if (copy->Is_Changed())
                changed.push_back(std::move(copy));
        });
    }
    return changed;
}

Attachment_Copy::State Attachment_Copy::Now() const
{
    const std::optional<Files::Entry> file = Files::Look(Path());
    return file ? State{file->size, file->changed} : State();
}

QByteArray Attachment_Copy::Digest() const
{
    QCryptographicHash digest(QCryptographicHash::Sha256);
    Resume_Next([&] {
        QFile file;
        Files::Open_To_Read(file, Path());
        digest.addData(&file);
    });
    return digest.result();
}

/// Keeps how the file is, beside it too.
void Attachment_Copy::Note()
{
    m_seen = Now();
    m_digest = Digest();
    const QCborMap record{{QStringLiteral("id"), m_attachment.id},
                          {QStringLiteral("document"), m_attachment.document},
                          {QStringLiteral("name"), m_attachment.name},
                          {QStringLiteral("remark"), m_attachment.remark},
                          {QStringLiteral("digest"), m_digest}};
    Files::Write_Bytes(m_directory + Record_Name, record.toCborValue().toCbor(), Files::Durability::Staging);
}
