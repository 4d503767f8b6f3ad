// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/process_state.h"
#include "documents/document_ids.h"
#include "documents/document_reading.h"
#include "documents/document_store.h"
#include "documents/stored_stream.h"
#include "platform/database/connection_pool.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "platform/machine/machine.h"
#include "support/test_form.h"
#include "support/test_program.h"
#include "users/scrambling.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QTest>
#include <QTimer>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{
QByteArray Stored_Stream(const QString &id)
{
    Recordset row;
    row.Open(u"select Code_Content_IO from Code_Info where Code_ID='%1'"_s.arg(id), App().Conn_Str);
    return row[0].Bytes();
}

/// Length of the stream's own file within a stored column that carries a password: the tail stands over its last byte.
qsizetype Tail_Place(const QByteArray &column, qsizetype scrambledLength)
{
    return column.size() - 1 - Tail_Overhead - scrambledLength;
}
} // namespace

class Test_Document_Store : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;

    QString Stored(Test_Form &form) const
    {
        return AddCodeContent_Ex_Standard(form, u"0"_s) ? form.code_id : QString();
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

    void An_Id_Is_The_Bytes_In_Memory_Order()
    {
        QCOMPARE(GUID_ToText({0x01, 0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD, 0xEF, 0, 1, 2, 3, 4, 5, 6, 0xF}),
                 u"01234567-89AB-CDEF-0001-02030405060F"_s);
        QSet<QString> ids;
        for (int i = 0; i < 100; ++i) {
            const QString id = Make_Code_ID();
            // The version nibble of a random GUID stands in the high byte of its third field, here the second one.
            static const QRegularExpression form(
                u"^\\{[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{2}4[0-9A-F]-[0-9A-F]{4}-[0-9A-F]{12}\\}$"_s);
            QVERIFY2(form.match(id).hasMatch(), qPrintable(id));
            ids.insert(id);
        }
        QCOMPARE(ids.size(), 100);
    }

    void A_Column_Holds_The_File_And_Zero_Bytes_data()
    {
        QTest::addColumn<int>("length");
        QTest::addColumn<int>("stored");
        QTest::addRow("empty") << 0 << 0;
        QTest::addRow("one byte") << 1 << 2;
        QTest::addRow("half a block") << 5000 << 5001;
        QTest::addRow("over half a block") << 5001 << 10001 + 5002;
        QTest::addRow("7000") << 7000 << 10001 + 7001;
        QTest::addRow("a block") << 10000 << 10001;
        QTest::addRow("a block and a byte") << 10001 << 10001 + 2;
        QTest::addRow("1.5 blocks round to 2") << 15000 << 2 * 10001 + 5001;
        QTest::addRow("2.5 blocks round to 2") << 25000 << 2 * 10001 + 5001;
    }
    void A_Column_Holds_The_File_And_Zero_Bytes()
    {
        QFETCH(int, length);
        QFETCH(int, stored);
        QByteArray bytes(length, '\0');
        for (int i = 0; i < length; ++i)
            bytes[i] = static_cast<char>(1 + i % 255);
        m_program->Write(u"in"_s, bytes);
        Add_Document(u"{1}"_s, u"001"_s, u"t"_s);
        Recordset row;
        row.LockType = Lock_Type::Batch_Optimistic;
        row.Open(u"select * from Code_Info"_s, App().Conn_Str);
        Copy_File_To_Blob(m_program->Path(u"in"_s), row[u"Code_Content_IO"_s]);
        row.UpdateBatch();
        row.Close();
        QCOMPARE(Stored_Stream(u"{1}"_s), bytes + QByteArray(stored - length, '\0'));
    }

    void The_Tail_Stands_Over_The_Last_Byte_data()
    {
        QTest::addColumn<QString>("scrambled");
        QTest::addColumn<QByteArray>("tail");
        QTest::addRow("one") << u"x"_s << QByteArray("x01{}{}");
        QTest::addRow("nine") << u"123456789"_s << QByteArray("12345678909{}{}");
        QTest::addRow("ten") << u"1234567890"_s << QByteArray("123456789010{}{}");
        QTest::addRow("99") << QString(99, u'y') << QByteArray(99, 'y') + "99{}{}";
    }
    void The_Tail_Stands_Over_The_Last_Byte()
    {
        QFETCH(QString, scrambled);
        QFETCH(QByteArray, tail);
        const QString path = m_program->Path(u"out"_s);
        m_program->Write(u"out"_s, "stream!");
        Write_Pass_Tail(path, scrambled);
        QCOMPARE(m_program->Bytes(u"out"_s), "stream" + tail);
        m_program->Write(u"out"_s, "stream" + tail + '\0');
        QCOMPARE(Read_Pass_Tail(path), scrambled);
        Cut_File_Tail(path, scrambled.size() + Tail_Overhead);
        QCOMPARE(m_program->Bytes(u"out"_s), "stream" + tail.left(1));
        m_program->Write(u"out"_s, {});
        Write_Pass_Tail(path, scrambled);
        QCOMPARE(m_program->Bytes(u"out"_s), QByteArray());
    }

    void No_Other_Place_Is_A_Tail_data()
    {
        QTest::addColumn<QByteArray>("column");
        QTest::addRow("empty") << QByteArray();
        QTest::addRow("mark alone") << QByteArray("{}{}\0", 5);
        QTest::addRow("no zero byte") << QByteArray("streamabc03{}{}");
        QTest::addRow("two zero bytes") << QByteArray("streamabc03{}{}\0\0", 17);
        QTest::addRow("longer than the file") << QByteArray("ab99{}{}\0", 9);
        QTest::addRow("no digits") << QByteArray("streamabcxx{}{}\0", 16);
    }
    void No_Other_Place_Is_A_Tail()
    {
        QFETCH(QByteArray, column);
        m_program->Write(u"c"_s, column);
        QCOMPARE(Read_Pass_Tail(m_program->Path(u"c"_s)), QString());
    }

    void A_New_Document_Gets_Its_Fields()
    {
        Sql_Run(u"insert into tab_file(code_id,file_name) values ('','held')"_s);
        Test_Form form(u"The content.\n它的内容。"_s);
        form.star = u"★★☆☆☆"_s;
        form.keys = u"it's a key"_s;
        form.memo->setPlainText(u"memo"_s);
        form.sum->setPlainText(u"sum"_s);
        const QString id = Stored(form);
        QVERIFY(!id.isEmpty());
        QCOMPARE(
            Sql_Rows(u"select Cate_ID,Code_Title,Code_Content,Code_Memo,Code_Sum,Code_Color,Code_Keys,Code_Type,"
                     "Code_Date,Code_Create,Code_Update,Code_Creater,Code_ReadDate_Sta,Code_UpdateNum,Code_Updater,"
                     "Code_LineColor from Code_Info"_s),
            QList<QStringList>{
                QStringList({u"001"_s, u"A title"_s, u"The content.\n它的内容。"_s, u"memo"_s, u"sum"_s, u"★★☆☆☆"_s,
                             u"it's a key"_s, u"RTF"_s, u"2026-03-04"_s, u"2026-03-05 10:20:30"_s,
                             u"2026-03-05 10:20:30"_s, u"Zelqor"_s, u"X"_s, u"0"_s, u""_s, u""_s})});
        QCOMPARE(Sql_Cell(u"select code_id from tab_file"_s), id);

        Test_Form read;
        QVERIFY(GetCodeContent_Ex(id, read));
        QCOMPARE(read.content->toPlainText(), form.content->toPlainText());
        QCOMPARE(read.memo->toPlainText(), u"memo"_s);
        QCOMPARE(read.sum->toPlainText(), u"sum"_s);
        QCOMPARE(read.star, u"★★☆☆☆"_s);
        QCOMPARE(read.create_date, u"2026-03-04"_s);
    }

    void Saving_And_Reading_Change_The_Counters()
    {
        Test_Form form(u"text"_s);
        const QString id = Stored(form);
        const auto state = [] {
            return Sql_Rows(
                       u"select Code_ReadDate_Sta,Code_UpdateNum,Code_ReadNum,Code_Updater,Code_LineColor from Code_Info"_s)
                .value(0);
        };
        QCOMPARE(state(), QStringList({u"X"_s, u"0"_s, u"0"_s, u""_s, u""_s}));
        QVERIFY(GetCodeContent_Ex(id, form));
        QCOMPARE(state(), QStringList({u""_s, u"0"_s, u"1"_s, u""_s, u""_s}));
        Sql_Run(
            u"update Code_Info set Code_UpdateNum=null,Code_ReadNum=null,Code_ReadDate_Sta='1',Code_LineColor='1|2|True'"_s);
        QVERIFY(AddCodeContent_Ex_Standard(form, id));
        QCOMPARE(state(), QStringList({u""_s, u"1"_s, u""_s, u"Zelqor"_s, u""_s}));
        QVERIFY(AddCodeContent_Ex_Standard(form, id));
        QVERIFY(GetCodeContent_Ex(id, form));
        QCOMPARE(state(), QStringList({u""_s, u"2"_s, u"1"_s, u"Zelqor"_s, u""_s}));
        QCOMPARE(Sql_Cell(u"select Code_ReadDate from Code_Info"_s), u"2026-03-05 10:20:30"_s);
        QCOMPARE(Sql_Cell(u"select count(*) from Code_Info"_s), u"1"_s);
    }

    void A_Stored_Stream_Is_An_Lzma_File()
    {
        Test_Form form(u"Any decoder of the format reads this. "_s.repeated(40));
        Test_Form locked(form.content->toPlainText());
        locked.password = u"sesame"_s;
        const QByteArray open = Stored_Stream(Stored(form));
        const QByteArray closed = Stored_Stream(Stored(locked));
        QCOMPARE(open.right(1), QByteArray(1, '\0'));
        const qsizetype at = Tail_Place(closed, 6);
        QCOMPARE(closed.mid(at, 6), Encode(u"sesame"_s).toLatin1());
        QCOMPARE(closed.mid(at + 6), QByteArray("06{}{}\0", 7));
        QCOMPARE(Sql_Cell(u"select Code_Content from Code_Info where Code_ID='%1'"_s.arg(locked.code_id)), QString());

        m_program->Write(u"s.lzma"_s, open.chopped(1));
        QProcess xz;
        xz.start(u"xz"_s, {u"--format=lzma"_s, u"-dc"_s, m_program->Path(u"s.lzma"_s)});
        QVERIFY(xz.waitForFinished());
        QCOMPARE(xz.exitCode(), 0);
        const QByteArray rtf = xz.readAllStandardOutput();
        QVERIFY(rtf.startsWith("{\\rtf1"));
        QVERIFY(rtf.contains("Any decoder of the format"));
    }

    void A_Wrong_Password_Shows_And_Counts_Nothing()
    {
        Test_Form form(u"secret"_s);
        form.password = u"right"_s;
        const QString id = Stored(form);
        Test_Form read;
        m_program->prompts.Expect(u"请输入文档密码"_s, u"wrong"_s);
        m_program->prompts.Expect(u"密码不正确"_s, u"ok"_s);
        QVERIFY(!GetCodeContent_Ex(id, read));
        QCOMPARE(read.content->toPlainText(), QString());
        QCOMPARE(read.password, QString());
        QCOMPARE(Sql_Rows(u"select Code_ReadNum,Code_ReadDate_Sta from Code_Info"_s).value(0),
                 QStringList({u"0"_s, u"X"_s}));
        m_program->prompts.Expect(u"请输入文档密码"_s, u"right"_s);
        QVERIFY(GetCodeContent_Ex(id, read));
        QCOMPARE(read.content->toPlainText(), u"secret"_s);
        QCOMPARE(read.password, u"right"_s);
        QCOMPARE(QDir(m_program->Path(u"data/temp"_s)).entryList({u"*zip.*"_s}, QDir::Files), QStringList());
    }

    /// A stream of which the block copy left more than one zero byte shows no tail: it opens without a question.
    void A_Long_Locked_Document_Is_Not_Asked_For()
    {
        QString text;
        quint32 state = 12345;
        for (int i = 0; i < 12000; ++i) {
            state = state * 1664525U + 1013904223U;
            text += QChar(u'a' + static_cast<int>(state >> 24) % 26);
        }
        Test_Form form(text);
        form.password = u"right"_s;
        const QString id = Stored(form);
        const QByteArray column = Stored_Stream(id);
        QVERIFY2(column.size() > 10001 && column.endsWith(QByteArray(2, '\0')), "the text must be long enough");
        Test_Form read;
        QVERIFY(GetCodeContent_Ex(id, read));
        QCOMPARE(read.content->toPlainText(), text);
        // It is told, is not stored so again without a consent, and is not lost: a short text is asked for again.
        QVERIFY(read.lock_is_open);
        QVERIFY(Save_Document(read, id, false) == Save_Outcome::Lock_Stays_Open);
        QCOMPARE(Stored_Stream(id), column);
        read.content->setPlainText(u"short"_s);
        QVERIFY(Save_Document(read, id, false) == Save_Outcome::Stored);
        m_program->prompts.Expect(u"请输入文档密码"_s, u"right"_s);
        QVERIFY(GetCodeContent_Ex(id, read));
    }

    void A_Failed_Save_Is_Told_And_Writes_Nothing_data()
    {
        QTest::addColumn<QString>("trouble");
        QTest::addRow("read-only file") << u"read-only"_s;
        QTest::addRow("locked") << u"locked"_s;
        QTest::addRow("staging folder cannot be made") << u"staging"_s;
        QTest::addRow("title too long") << u"title"_s;
        QTest::addRow("no rich text") << u"type"_s;
        QTest::addRow("type that leaves the folder") << u"path"_s;
    }
    void A_Failed_Save_Is_Told_And_Writes_Nothing()
    {
        QFETCH(QString, trouble);
        Test_Form form(u"before"_s);
        const QString id = Stored(form);
        const QList<QStringList> before = Sql_Rows(u"select * from Code_Info"_s);
        const QString file = m_program->Path(u"data/Zelqor.db"_s);
        std::optional<QProcess> other;
        const int wait = Connection_Pool::Busy_Timeout();
        if (trouble == u"read-only") {
            Database_Engine::Let_Go();
            QVERIFY(QFile::setPermissions(file, QFile::ReadOwner));
            if (QFile(file).open(QIODevice::ReadWrite))
                QSKIP("this user may write read-only files");
        } else if (trouble == u"locked") {
            Connection_Pool::Set_Busy_Timeout(50);
            Database_Engine::Let_Go();
            other.emplace();
            other->start(u"sqlite3"_s, {file});
            QVERIFY(other->waitForStarted());
            other->write("begin immediate;\nselect 'held';\n");
            QVERIFY(other->waitForReadyRead());
        } else if (trouble == u"staging") {
            QVERIFY(QDir(m_program->Path(u"data/temp"_s)).removeRecursively());
            m_program->Write(u"data/temp"_s, "a file");
        } else if (trouble == u"title") {
            form.title = QString(256, u't');
        } else {
            form.type = trouble == u"type" ? u"DOC"_s : u"../RTF"_s;
        }
        form.content->setPlainText(u"after"_s);
        m_program->prompts.Expect(u"保存出错，请再次保存。错误描述 "_s, u"ok"_s);
        QVERIFY(!AddCodeContent_Ex_Standard(form, id));
        if (other) {
            other->closeWriteChannel();
            QVERIFY(other->waitForFinished());
        }
        Connection_Pool::Set_Busy_Timeout(wait);
        QCOMPARE(form.code_id, id);
        QCOMPARE(form.content->toPlainText(), u"after"_s);
        QCOMPARE(m_program->Logged(), QStringList(u"Mod_DataBase\\AddCodeContent_Ex_Standard"_s));
        QCOMPARE(Sql_Rows(u"select * from Code_Info"_s), before);
    }

    void A_Failed_New_Document_Stays_New()
    {
        Test_Form form(u"text"_s);
        form.title = QString(256, u't');
        m_program->prompts.Expect(u"保存出错"_s, u"ok"_s);
        QCOMPARE(Stored(form), QString());
        QCOMPARE(form.code_id, QString());
        QCOMPARE(Sql_Cell(u"select count(*) from Code_Info"_s), u"0"_s);
    }

    void Staging_Names_That_Exist_Are_Drawn_Anew()
    {
        // Whatever is drawn first is taken: only the second draw may be used, clash or not, and the save succeeds.
        for (int i = 0; i < 10000; ++i)
            m_program->Write(u"data/temp/%1temp5.RTF"_s.arg(i), "left over");
        Test_Form form(u"text"_s);
        const QString id = Stored(form);
        Test_Form read;
        QVERIFY(!id.isEmpty() && GetCodeContent_Ex(id, read));
        QCOMPARE(read.content->toPlainText(), u"text"_s);
    }

    void Rows_Of_Other_Programs_Open_data()
    {
        QTest::addColumn<QString>("set");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("type");
        QTest::addRow("no stream") << u"Code_Content='plain',Code_Type='RTF'"_s << u"plain"_s << u"RTF"_s;
        QTest::addRow("nothing at all") << u"Code_ReadNum=null"_s << u""_s << u"RTF"_s;
        QTest::addRow("lower-case type") << u"Code_Content='plain',Code_Type='txt'"_s << u"plain"_s << u"TXT"_s;
        QTest::addRow("stars of the unrated") << u"Code_Color='☆☆☆☆☆'"_s << u""_s << u"RTF"_s;
    }
    void Rows_Of_Other_Programs_Open()
    {
        QFETCH(QString, set);
        QFETCH(QString, text);
        QFETCH(QString, type);
        Add_Document(u"{1}"_s, u"001"_s, u"t"_s, set);
        Test_Form form(u"old"_s);
        QVERIFY(GetCodeContent_Ex(u"{1}"_s, form));
        QCOMPARE(form.content->toPlainText(), text);
        QCOMPARE(form.type, type);
        QCOMPARE(form.star, QString());
        QCOMPARE(Sql_Cell(u"select Code_ReadNum from Code_Info"_s), u"1"_s);
    }

    void A_Stream_That_Says_It_Is_Huge_Is_Asked_For()
    {
        Test_Form form(u"body"_s);
        const QString id = Stored(form);
        QByteArray stream = Stored_Stream(id);
        stream[9] = '\1'; // 4 GB more
        {
            Recordset row;
            row.LockType = Lock_Type::Batch_Optimistic;
            row.Open(u"select * from Code_Info"_s, App().Conn_Str);
            row[u"Code_Content_IO"_s].Set(stream);
            row.UpdateBatch();
        }
        Test_Form read;
        m_program->prompts.Expect(u"4096 MB"_s, u"no"_s);
        m_program->prompts.Expect(u"没有读入"_s, u"ok"_s);
        QVERIFY(!GetCodeContent_Ex(id, read));
        QCOMPARE(read.content->toPlainText(), u"body"_s);
        QCOMPARE(m_program->Logged(), QStringList(u"Mod_DataBase\\GetCodeContent_Ex"_s));
    }

    void A_Damaged_Stream_Hides_Nothing_Else_data()
    {
        QTest::addColumn<QString>("column");
        QTest::addColumn<QStringList>("shown");
        QTest::addRow("body") << u"Code_Content_IO"_s << QStringList{u"body"_s, u"memo"_s, u"sum"_s};
        QTest::addRow("memo") << u"Code_Memo_IO"_s << QStringList{u"body"_s, u""_s, u"sum"_s};
        QTest::addRow("sum") << u"Code_Sum_IO"_s << QStringList{u"body"_s, u"memo"_s, u""_s};
    }
    void A_Damaged_Stream_Hides_Nothing_Else()
    {
        QFETCH(QString, column);
        QFETCH(QStringList, shown);
        Test_Form form(u"body"_s);
        form.memo->setPlainText(u"memo"_s);
        form.sum->setPlainText(u"sum"_s);
        form.author = u"Ann"_s;
        const QString id = Stored(form);
        {
            Recordset row;
            row.LockType = Lock_Type::Batch_Optimistic;
            row.Open(u"select * from Code_Info"_s, App().Conn_Str);
            row[column].Set(QByteArray("no stream"));
            row.UpdateBatch();
        }
        Test_Form read(u"another document"_s);
        read.author = u"another's"_s;
        m_program->prompts.Expect(u"文件解压出错"_s, u"ok"_s);
        QVERIFY(!GetCodeContent_Ex(id, read));
        QCOMPARE(m_program->Logged(), QStringList(u"Mod_DataBase\\GetCodeContent_Ex"_s));
        QCOMPARE(read.code_id + read.author, id + u"Ann"_s);
        QCOMPARE(QStringList({read.content->toPlainText(), read.memo->toPlainText(), read.sum->toPlainText()}), shown);
    }

    void A_Pane_That_Is_Not_Coded_Takes_No_Other_Panes_Stream()
    {
        Test_Form form(u"body"_s);
        const QString id = Stored(form);
        const QList<QStringList> before = Sql_Rows(u"select * from Code_Info"_s);
        form.memo->setPlainText(u"memo"_s);
        form.sum->setPlainText(u"sum"_s);
        // Once the memo is to be coded, a directory stands where the coder would write.
        const QDir folder(m_program->Path(u"data/temp"_s));
        QTimer block;
        connect(&block, &QTimer::timeout, &block, [&] {
            for (const QString &memo : folder.entryList({u"*temp3.DOC"_s})) {
                const QString output = folder.filePath(QString(memo).replace(u"temp3.DOC"_s, u"temp2.RTF"_s));
                QFile::remove(output);
                QDir().mkpath(output);
            }
        });
        block.start(0);
        m_program->prompts.Expect(u"保存出错"_s, u"ok"_s);
        QVERIFY(!AddCodeContent_Ex_Standard(form, id));
        QCOMPARE(Sql_Rows(u"select * from Code_Info"_s), before);
    }
};

QTEST_MAIN(Test_Document_Store)
#include "test_document_store.moc"
