// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/process_state.h"
#include "documents/document_reading.h"
#include "documents/document_store.h"
#include "documents/stored_stream.h"
#include "platform/database/database.h"
#include "support/test_form.h"
#include "support/test_program.h"
#include "users/scrambling.h"

#include <QRandomGenerator>
#include <QTest>

using namespace Qt::StringLiterals;

namespace
{
QString Random_Text(QRandomGenerator &random)
{
    static const QString words = u"文档 的 密码 keeps\nevery, last (byte) {} 0 \\ of 内容。 résumé 𠮷 "_s;
    QString text;
    const int length = random.bounded(3) == 0 ? random.bounded(4) : random.bounded(1200);
    while (text.size() < length) {
        const qsizetype at = random.bounded(static_cast<int>(words.size()));
        const QChar character = words.at(at);
        text += character.isSurrogate() ? QString(u"𠮷"_s) : QString(character);
    }
    return text;
}

QString Random_Password(QRandomGenerator &random)
{
    QString password;
    const int length = 1 + random.bounded(20);
    for (int i = 0; i < length; ++i)
        password += QChar(u'!' + random.bounded(94));
    return password;
}

/// Saves with a password and reads back with `typed`; the text that was read.
QString Read_Back(Test_Program &program, const QString &text, const QString &password, const QString &typed)
{
    Test_Form form(text);
    form.password = password;
    Test_Form read;
    if (!AddCodeContent_Ex_Standard(form, u"0"_s))
        return u"not stored"_s;
    program.prompts.Expect(u"请输入文档密码"_s, typed);
    if (!GetCodeContent_Ex(form.code_id, read))
        return u"not read with "_s + password;
    return read.content->toPlainText();
}
} // namespace

class Test_Document_Passwords : public QObject
{
    Q_OBJECT
private slots:
    void What_Was_Locked_Is_Read_Back()
    {
        Test_Program program;
        QRandomGenerator random(500);
        // One commit for all of them: the disk is no part of the property.
        Database_Engine::One_Action(App().Conn_Str, [&] {
            for (int i = 0; i < 100; ++i) {
                const QString text = Random_Text(random);
                const QString password = Random_Password(random);
                QCOMPARE(Read_Back(program, text, password, password), text);
            }
        });
        QCOMPARE(program.prompts.Problems(), QStringList());
    }

    /// A tail keeps every password apart from all others, blanks at the ends of its scrambled form included.
    void No_Owner_Is_Locked_Out()
    {
        Test_Program program;
        const QString path = program.Path(u"out"_s);
        QRandomGenerator random(501);
        int outerBlanks = 0;
        for (int i = 0; i < 4000; ++i) {
            const QString password = i == 0 ? u"B"_s : Random_Password(random);
            const QString scrambled = Encode(password);
            outerBlanks += scrambled.startsWith(u' ') || scrambled.endsWith(u' ') ? 1 : 0;
            program.Write(u"out"_s, "stream!");
            Write_Pass_Tail(path, scrambled);
            program.Write(u"out"_s, program.Bytes(u"out"_s) + '\0');
            QCOMPARE(Decode(Read_Pass_Tail(path)), password);
        }
        QVERIFY(outerBlanks > 40);
    }

    void Odd_Passwords_Open_data()
    {
        QTest::addColumn<QString>("password");
        QTest::addRow("blanks around it") << u"  blanks  "_s;
        QTest::addRow("blanks inside") << u"a b  c"_s;
        // Its scrambled form is one blank.
        QTest::addRow("a blank tail") << Decode(u" "_s);
        QTest::addRow("quotes") << u"\"it's\""_s;
        QTest::addRow("the tail's own mark") << u"{}{}09{}{}"_s;
        QTest::addRow("the longest") << QString(99, u'z');
    }
    void Odd_Passwords_Open()
    {
        QFETCH(QString, password);
        Test_Program program;
        QCOMPARE(Read_Back(program, u"text"_s, password, password), u"text"_s);
        QCOMPARE(program.prompts.Problems(), QStringList());
    }
};

QTEST_MAIN(Test_Document_Passwords)
#include "test_document_passwords.moc"
