// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/drafts.h"

#include "core/error_log.h"
#include "documents/document_fields.h"
#include "documents/document_store.h"
#include "documents/draft_folder.h"
#include "platform/files/paths.h"
#include "platform/richtext/rich_text.h"

#include <QCborMap>
#include <QCborValue>
#include <QTextDocument>

namespace
{
const QByteArray Clear_Mark = QByteArrayLiteral("zelqor draft 1\n");
const QByteArray Sealed_Mark = QByteArrayLiteral("zelqor sealed draft 1\n");
const QString Draft_Suffix = QStringLiteral(".draft");

struct Pane_Row {
    const char *key;
    QTextDocument *Document_Form::*pane;
};

constexpr Pane_Row Panes[] = {
    {"content", &Document_Form::content},
    {"memo", &Document_Form::memo},
    {"sum", &Document_Form::sum},
};

/// @param sealed  the bytes will be; else a password that stands in the form stays out of them
QByteArray Packed(const Document_Form &form, bool stored, bool sealed)
{
    QCborMap map;
    map[QStringLiteral("stored")] = stored;
    for (const Document_Field &field : Document_Fields()) {
        if (*field.name != '\0')
            map[QLatin1String(field.name)] =
                sealed || field.kind != Field_Kind::Password ? form.*field.text : QString();
    }
    for (const Pane_Row &row : Panes)
        map[QLatin1String(row.key)] = Rich_Text::Write_Rtf(*(form.*row.pane));
    return map.toCborValue().toCbor();
}

/// An empty map for damaged bytes.
QCborMap Unpacked(const QByteArray &bytes)
{
    QCborParserError trouble;
    const QCborValue value = QCborValue::fromCbor(bytes, &trouble);
    return trouble.error == QCborError::NoError ? value.toMap() : QCborMap();
}

void Fill(const QCborMap &map, Document_Form &form)
{
    for (const Document_Field &field : Document_Fields()) {
        if (*field.name != '\0')
            form.*field.text = map[QLatin1String(field.name)].toString();
    }
    for (const Pane_Row &row : Panes) {
        (form.*row.pane)->clear();
        Rich_Text::Read_Rtf(map[QLatin1String(row.key)].toByteArray(), *(form.*row.pane));
    }
}

std::optional<QByteArray> Plain_Bytes(const QByteArray &file, const QString &password)
{
    if (file.startsWith(Clear_Mark))
        return file.mid(Clear_Mark.size());
    const QByteArray sealed = file.mid(Sealed_Mark.size());
    return Sealer(password, Sealer::Salt_Of(sealed)).Open(sealed);
}
} // namespace

void Draft::Write(const Document_Form &form, bool stored, const QString &password)
{
    if (m_path.isEmpty())
        m_path = Draft_Folder::New_Path(Draft_Suffix);
    const QByteArray bytes = Packed(form, stored, !password.isEmpty());
    if (password.isEmpty()) {
        Files::Write_Bytes(m_path, Clear_Mark + bytes, Files::Durability::Staging);
        return;
    }
    if (!m_sealer || m_password != password) {
        m_sealer.emplace(password);
        m_password = password;
    }
    Files::Write_Bytes(m_path, Sealed_Mark + m_sealer->Seal(bytes), Files::Durability::Staging);
}

void Draft::Remove()
{
    if (m_path.isEmpty())
        return;
    if (!Resume_Next([&] { Files::Delete_If_Present(m_path); }))
        Error_Log(QStringLiteral("Drafts\\Remove"));
    m_path.clear();
}

QList<Left_Draft> Left_Drafts()
{
    QList<Left_Draft> drafts;
    for (const QString &path : Draft_Folder::Left(Draft_Suffix)) {
        QByteArray bytes;
        if (!Resume_Next([&] { bytes = Files::Read_Bytes(path); })) {
            Error_Log(QStringLiteral("Drafts\\Left_Drafts"));
            continue;
        }
        const bool sealed = bytes.startsWith(Sealed_Mark);
        if (sealed || bytes.startsWith(Clear_Mark))
            drafts.append({path, Unpacked(bytes.mid(Clear_Mark.size()))[QStringLiteral("title")].toString(), sealed});
    }
    return drafts;
}

Draft_Answer Restore_Draft(const Left_Draft &draft, const QString &password, Document_Form &form, bool &stored)
{
    return Trap(QStringLiteral("Drafts\\Restore_Draft"), [&] {
        const std::optional<QByteArray> bytes = Plain_Bytes(Files::Read_Bytes(draft.path), password);
        if (!bytes)
            return Draft_Answer::Wrong_Password;
        const QCborMap map = Unpacked(*bytes);
        if (map.isEmpty())
            return Draft_Answer::Damaged;
        Fill(map, form);
        stored = map[QStringLiteral("stored")].toBool() && Is_Stored(form.code_id);
        if (!stored)
            form.code_id.clear();
        return Draft_Answer::Restored;
    });
}

void Drop_Draft(const Left_Draft &draft)
{
    if (!Resume_Next([&] { Files::Delete_If_Present(draft.path); }))
        Error_Log(QStringLiteral("Drafts\\Drop_Draft"));
}
