// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/document_session.h"

#include "core/error_log.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "core/sql_text.h"
#include "documents/document_fields.h"
#include "documents/document_reading.h"
#include "documents/document_sql.h"
#include "documents/document_store.h"
#include "documents/file_content.h"
#include "documents/outside_file.h"
#include "documents/stored_stream.h"
#include "platform/database/recordset.h"
#include "platform/machine/machine.h"

#include <QElapsedTimer>
#include <QTextDocument>
#include <algorithm>

namespace
{
const QString Rtf = QStringLiteral("RTF");
const QString No_Stars = QStringLiteral("☆☆☆☆☆");
} // namespace

Document_Session::Document_Session(QTextDocument &content, QTextDocument &memo, QTextDocument &sum)
{
    m_form.content = &content;
    m_form.memo = &memo;
    m_form.sum = &sum;
}

Document_Session::~Document_Session()
{
    if (!m_draftStays)
        m_draft.Remove();
}

bool Document_Session::Is_Page() const
{
    return m_form.stored_type == QLatin1String("HTM");
}

QString Document_Session::Kept_Path() const
{
    if (Is_Foreign())
        return m_form.file;
    return Is_Stored() && Is_Page() ? Wrapped_File(m_form.page) : QString();
}

bool Document_Session::Begin(const QString &kind, const QString &folder)
{
    static const QStringList kinds{QStringLiteral("ADDCODE"), QStringLiteral("ADDCODE_HTM"),
                                   QStringLiteral("ADDCODE_WORD"), QStringLiteral("ADDCODE_EXCEL"),
                                   QStringLiteral("ADDCODE_PPT")};
    const qsizetype number = kinds.indexOf(kind.toUpper());
    if (number < 0)
        return false;
    m_form.code_id.clear();
    m_form.title.clear();
    m_form.star = m_form.done = No_Stars;
    m_form.folder = folder;
    m_form.create_date = m_form.update_date = Machine::Now().toString(QStringLiteral("yyyy-MM-dd"));
    if (number == 0 && QStringList{QStringLiteral("0"), QStringLiteral("1")}.contains(Config().Op_Editor))
        m_form.type = Rtf;
    m_form.stored_type.clear();
    m_form.stored_state.clear();
    m_state = State::New;
    return true;
}

bool Document_Session::Open(const QString &code_id)
{
    const bool whole = GetCodeContent_Ex(code_id, m_form);
    if (!whole && m_form.code_id != code_id)
        return false;
    if (!whole)
        m_form.type.clear();
    m_form.password_again = m_form.password;
    m_state = whole ? State_Of_Row() : State::Partial;
    m_consents = {};
    m_outside.reset();
    return true;
}

Document_Session::State Document_Session::State_Of_Row() const
{
    return m_form.type.isEmpty() || m_form.type == Rtf ? State::Stored : State::Foreign;
}

Draft_Answer Document_Session::Take_Draft(const Left_Draft &draft, const QString &password)
{
    bool stored = false;
    const Draft_Answer answer = Restore_Draft(draft, password, m_form, stored);
    if (answer != Draft_Answer::Restored)
        return answer;
    m_form.password_again = m_form.password;
    m_state = stored ? State_Of_Row() : State::New;
    return answer;
}

void Document_Session::Become_New()
{
    m_form.code_id.clear();
    m_state = State::New;
}

void Document_Session::Let_Go()
{
    m_form.code_id.clear();
    m_form.type.clear();
    m_state = State::Partial;
}

qint64 Document_Session::Kept_Size() const
{
    qint64 size = 0;
    Trap(QStringLiteral("Document_Session\\Kept_Size"), [&] {
        Recordset row;
        row.Open(Sql_Text(Sql::Read_Document, m_form.code_id), App().Conn_Str);
        if (!row.Eof())
            size = Decoded_Size(row[QStringLiteral("Code_Content_IO")].Bytes());
    });
    return size;
}

QStringList Document_Session::Texts() const
{
    QStringList texts;
    for (const Document_Field &field : Document_Fields())
        texts << (*field.control == '\0' ? QString() : m_form.*field.text);
    return texts;
}

void Document_Session::Set_Clean()
{
    m_draftStays = false;
    m_draft.Remove();
    m_storedPassword = m_form.password;
    m_storedFolder = m_form.folder;
    m_clean = Texts();
    for (QTextDocument *pane : {m_form.content, m_form.memo, m_form.sum})
        pane->setModified(false);
}

bool Document_Session::Differs() const
{
    return m_form.content->isModified() || m_form.memo->isModified() || m_form.sum->isModified() || Texts() != m_clean;
}

void Document_Session::Follow_Folder(const QString &oldId, const QString &newId)
{
    for (qsizetype i = 0; i < m_clean.size(); ++i) {
        if (Document_Fields()[static_cast<size_t>(i)].kind == Field_Kind::Folder && m_clean[i].startsWith(oldId))
            m_clean[i] = newId + m_clean[i].mid(oldId.size());
    }
}

void Document_Session::Set_Folder(const QString &id)
{
    m_form.folder = id;
    for (qsizetype i = 0; i < m_clean.size(); ++i) {
        if (Document_Fields()[static_cast<size_t>(i)].kind == Field_Kind::Folder)
            m_clean[i] = id;
    }
}

Save_Refusal Document_Session::Check()
{
    return Check_Before_Save(m_form, m_form.password_again);
}

Save_Outcome Document_Session::Store(QString &status)
{
    // Of a document that is shown and not written here, and of a page that is only read, the facts are stored.
    const bool untouched = Is_Page() && !m_form.content->isModified() && m_form.password == m_storedPassword;
    m_form.keeps_content = Is_Foreign() || (Is_Stored() && untouched);
    m_leftFolder = Is_Stored() && m_storedFolder != m_form.folder ? m_storedFolder : QString();
    m_written = Revisions();
    const Save_Outcome outcome = Store_Form(m_form, Is_Stored(), status, m_consents);
    m_needsConsent = outcome == Save_Outcome::Changed_Elsewhere || outcome == Save_Outcome::Lock_Stays_Open;
    if (outcome == Save_Outcome::Stored) {
        m_consents.replace = false;
        m_state = State_Of_Row();
        m_form.stored_when = Store_Time();
    }
    return outcome;
}

std::array<int, 3> Document_Session::Revisions() const
{
    return {m_form.content->revision(), m_form.memo->revision(), m_form.sum->revision()};
}

/// The password that is typed twice, else the one that the stored document has.
QString Document_Session::Draft_Password() const
{
    const bool agreed = !m_form.password.isEmpty() && m_form.password == m_form.password_again;
    return agreed ? m_form.password : m_storedPassword;
}

void Document_Session::Write_Draft()
{
    QElapsedTimer clock;
    clock.start();
    m_draft.Write(m_form, Is_Stored(), Draft_Password());
    m_draftTook = clock.elapsed();
}

Outside_File &Document_Session::Give_Outside()
{
    if (m_outside == nullptr)
        m_outside = std::make_unique<Outside_File>(m_form.code_id);
    return *m_outside;
}

bool Document_Session::Take_Back()
{
    QString text;
    if (!m_outside->Take_Back(text))
        return false;
    m_form.content->setPlainText(text);
    m_form.content->setModified(false);
    Trap(QStringLiteral("Document_Session\\Take_Back"),
         [this] { m_form.stored_state = Stored_State_Of(m_form.code_id); });
    return true;
}
