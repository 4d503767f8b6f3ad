// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/attachment_copy.h"

#include "core/error_log.h"

#include <QFileInfo>

namespace
{
const QString Suffix = QStringLiteral(".attached");

/// Files that run, or that another program runs, change without anybody having edited them.
bool Is_Followed(const QString &name)
{
    static const QStringList running{QStringLiteral("EXE"), QStringLiteral("BAT"), QStringLiteral("COM"),
                                     QStringLiteral("CHM")};
    return !running.contains(QFileInfo(name).suffix().toUpper());
}
} // namespace

Attachment_Copy::Attachment_Copy(Attachment attachment)
    : m_attachment(std::move(attachment)), m_copy(Suffix, m_attachment.name, QStringLiteral("file"))
{
}

Attachment_Copy::Attachment_Copy(Outside_Copy copy) : m_copy(std::move(copy))
{
    const QCborMap &facts = m_copy.Facts();
    m_attachment.id = facts[QStringLiteral("id")].toInteger();
    m_attachment.document = facts[QStringLiteral("document")].toString();
    m_attachment.remark = facts[QStringLiteral("remark")].toString();
    m_attachment.name = Path().section(QLatin1Char('/'), -1);
}

Attachment_Copy::~Attachment_Copy()
{
    if (!Is_In_Use() && !Is_Changed())
        m_copy.Remove();
}

bool Attachment_Copy::Write(Work &work)
{
    if (!Write_Attachment(m_attachment.id, Path(), work, Files::Durability::Staging))
        return false;
    m_copy.Note(Facts());
    m_givenUp = false;
    return true;
}

qint64 Attachment_Copy::Bytes_To_Look_At() const
{
    return m_copy.Is_Touched() && Is_Followed(m_attachment.name) ? std::max<qint64>(m_copy.Now().size, 0) : 0;
}

bool Attachment_Copy::Is_Changed()
{
    return Is_Followed(m_attachment.name) && m_copy.Is_Changed();
}

Saved_Attachment Attachment_Copy::Take_Back(Work &work)
{
    const Outside_Copy::Moment taken = m_copy.Now();
    Saved_Attachment saved = Replace_Attachment(m_attachment, Path(), work);
    if (saved.id != 0) {
        m_attachment.id = saved.id;
        m_copy.Note(Facts(), taken);
    }
    return saved;
}

void Attachment_Copy::Give_Up()
{
    m_copy.Note(Facts());
    m_givenUp = true;
}

void Attachment_Copy::Adopt(const QString &code_id)
{
    if (!m_attachment.document.isEmpty())
        return;
    m_attachment.document = code_id;
    m_copy.Note(Facts(), {}); // what was changed meanwhile stays a change
}

std::vector<std::unique_ptr<Attachment_Copy>> Attachment_Copy::Left()
{
    std::vector<std::unique_ptr<Attachment_Copy>> changed;
    for (Outside_Copy &left : Outside_Copy::Left(Suffix)) {
        Trap(QStringLiteral("Attachment_Copy\\Left"), [&] {
            std::unique_ptr<Attachment_Copy> copy(new Attachment_Copy(std::move(left)));
            if (copy->Is_Changed())
                changed.push_back(std::move(copy));
        });
    }
    return changed;
}

QCborMap Attachment_Copy::Facts() const
{
    return {{QStringLiteral("id"), m_attachment.id},
            {QStringLiteral("document"), m_attachment.document},
            {QStringLiteral("remark"), m_attachment.remark}};
}
