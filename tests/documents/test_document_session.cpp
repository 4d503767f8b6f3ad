// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/settings.h"
#include "documents/document_fields.h"
#include "documents/document_session.h"
#include "documents/document_store.h"
#include "support/test_form.h"
#include "support/test_program.h"

#include <QDir>
#include <QSet>
#include <QTest>
#include <optional>

using namespace Qt::StringLiterals;
using State = Document_Session::State;

class Test_Document_Session : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;
    QTextDocument m_content, m_memo, m_sum;

    QString Stored(const QString &text, const QString &password = {})
    {
        Test_Form form(text);
        form.password = password;
        if (!AddCodeContent_Ex_Standard(form, u"0"_s))
            qFatal("not stored");
        return form.code_id;
    }
    [[nodiscard]] qsizetype Drafts() const
    {
        return QDir(m_program->Path(u"data/Zelqor.db-drafts"_s)).entryList({u"*.draft"_s}, QDir::Files).size();
    }

private slots:
    void init()
    {
        m_program.emplace();
        Add_Folder(u"001"_s, u"Work"_s);
    }
    void cleanup()
    {
        QCOMPARE(m_program->prompts.Problems(), QStringList());
        m_program.reset();
    }

    /// Every field is in one place of the table only, and a draft and a row know it by one name.
    void The_Table_Is_Sound()
    {
        QSet<QString> names;
        for (const Document_Field &field : Document_Fields()) {
            for (const char *name : {field.control, field.column, field.name}) {
                if (*name != '\0')
                    QVERIFY2(!names.contains(QLatin1String(name)), name);
            }
            names << QLatin1String(field.control) << QLatin1String(field.column) << QLatin1String(field.name);
            QVERIFY(!Is_Bounded(field.kind) || (*field.control != '\0' && *field.column != '\0'));
        }
        QCOMPARE(Field_Rooms().value(u"Code_Keys"_s), 255);
    }

    void A_Document_Has_One_State_data()
    {
        QTest::addColumn<QString>("change"); ///< of the stored row
        QTest::addColumn<QString>("prompt");
        QTest::addColumn<bool>("shown");
        QTest::addColumn<int>("state");
        QTest::addColumn<QString>("type"); ///< "" for what is never stored
        const auto row = [](const char *name, const QString &change, const QString &prompt, bool shown, State state,
                            const QString &type) {
            QTest::addRow("%s", name) << change << prompt << shown << int(state) << type;
        };
        row("text", {}, {}, true, State::Stored, u"RTF"_s);
        row("office", u"Code_Type='DOCX'"_s, {}, true, State::Foreign, u"DOCX"_s);
        row("page", u"Code_Type='HTM',Code_Content_IO=null"_s, {}, true, State::Foreign, u"HTM"_s);
        row("damaged", u"Code_Content_IO='none'"_s, u"文件解压出错"_s, true, State::Partial, {});
        row("gone", u"Code_ID='{other}'"_s, u"打开出错"_s, false, State::New, {});
    }
    void A_Document_Has_One_State()
    {
        QFETCH(QString, change);
        QFETCH(QString, prompt);
        QFETCH(bool, shown);
        QFETCH(int, state);
        QFETCH(QString, type);
        const QString id = Stored(u"text"_s);
        if (!change.isEmpty())
            Sql_Run(u"update Code_Info set %1"_s.arg(change));
        if (!prompt.isEmpty())
            m_program->prompts.Expect(prompt, u"ok"_s);
        Document_Session session(m_content, m_memo, m_sum);
        QCOMPARE(session.Open(id), shown);
        QCOMPARE(int(session.Now()), state);
        QCOMPARE(session.Form().type, type);
    }

    void What_Differs_Has_A_Draft_Until_It_Is_Stored()
    {
        const QString id = Stored(u"text"_s);
        auto session = std::make_unique<Document_Session>(m_content, m_memo, m_sum);
        QVERIFY(session->Open(id));
        session->Set_Clean();
        QVERIFY(!session->Differs());
        for (const Document_Field &field : Document_Fields()) {
            if (*field.control == '\0')
                continue;
            const QString before = std::exchange(session->Form().*field.text, u"other"_s);
            QVERIFY2(session->Differs(), field.control);
            session->Form().*field.text = before;
        }
        QVERIFY(!session->Differs());
        session->Form().keys = u"key"_s;
        session->Write_Draft();
        QCOMPARE(Drafts(), 1);
        QString status;
        QVERIFY(session->Check() == Save_Refusal::None && session->Store(status) == Save_Outcome::Stored);
        session->Set_Clean();
        QCOMPARE(Drafts(), 0);
        QVERIFY(!session->Stored_When().isEmpty() && session->Left_Folder().isEmpty());
        session->Form().keys = u"another"_s;
        session->Write_Draft();
        session->Leave_Draft();
        session.reset();
        QCOMPARE(Drafts(), 1);
    }

    /// What became a new document is stored beside the old one; one that holds nothing is never stored.
    void A_Document_Can_Become_A_New_One()
    {
        const QString id = Stored(u"text"_s);
        Document_Session session(m_content, m_memo, m_sum);
        QVERIFY(session.Open(id));
        session.Set_Clean();
        Sql_Run(u"update Code_Info set Code_Keys='theirs'"_s);
        QString status;
        QVERIFY(session.Store(status) == Save_Outcome::Changed_Elsewhere && session.Needs_Consent());
        session.Become_New();
        QVERIFY(session.Store(status) == Save_Outcome::Stored && !session.Needs_Consent());
        QVERIFY(session.Form().code_id != id && session.Now() == State::Stored);
        QCOMPARE(Sql_Cell(u"select count(*) from Code_Info"_s), u"2"_s);
        session.Let_Go();
        QVERIFY(session.Check() == Save_Refusal::Nothing_To_Save && session.Is_Partial());
    }
};

QTEST_MAIN(Test_Document_Session)
#include "test_document_session.moc"
