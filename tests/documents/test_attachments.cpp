// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/process_state.h"
#include "core/settings.h"
#include "documents/all_attachments.h"
#include "documents/attachment_place.h"
#include "documents/attachments.h"
#include "platform/database/database.h"
#include "platform/files/paths.h"
#include "support/memory_peak.h"
#include "support/stopping_work.h"
#include "support/test_program.h"
#include "support/zip_file.h"

#include <QFileInfo>
#include <QTest>
#include <optional>

using namespace Qt::StringLiterals;

class Test_Attachments : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;
    Unwatched_Work m_work;

    QStringList Names(const QString &document)
    {
        QStringList names;
        for (const Attachment &file : Attachments_Of(document))
            names << file.name;
        return names;
    }
    QByteArray Bytes_Of(qint64 id)
    {
        Write_Attachment(id, m_program->Path(u"out"_s), m_work);
        return m_program->Bytes(u"out"_s);
    }

    /// Two documents and a lost one, with all kinds of attachments.
    void Add_Three_Documents()
    {
        Add_Document(u"{2}"_s, u"001"_s, u"two"_s);
        const auto add = [&](const char16_t *document, const char16_t *name, const char *bytes) {
            m_program->Write(QString::fromUtf16(name), bytes);
            S_SaveFile(QString::fromUtf16(document), m_program->Path(QString::fromUtf16(name)), {},
                       Addin_Mode::Internal, m_work);
        };
        add(u"{1}", u"a.txt", "Bytes");
        add(u"{2}", u"same.txt", "Bytes");
        add(u"{2}", u"twin.txt", "other"); // as long
        add(u"{2}", u"b.txt", "b");
        add(u"{gone}", u"alone.txt", "alone in here");
        Set_Attachment_Remark(One(u"b.txt"_s).id, u"a note"_s);
        Add_Page_Link(u"{1}"_s, u"https://example.org/"_s);
        Sql_Run(u"update tab_file set file_name = 'web' where file_path like '<W>%'"_s);
        Add_Folder_Link(u"{1}"_s, u"/nowhere/gone"_s);
        Sql_Run(u"update tab_file set file_name = 'gone' where file_path like '<F>%'"_s);
        m_program->Write(u"gone.txt"_s, "1");
        S_SaveFile(u"{1}"_s, m_program->Path(u"gone.txt"_s), {}, Addin_Mode::Link, m_work);
        QFile::remove(m_program->Path(u"gone.txt"_s));
        QFile::remove(m_program->Path(u"alone.txt"_s));
    }
    static Attachment One(const QString &name)
    {
        return Read_Attachment(Sql_Cell(u"select file_id from tab_file where file_name='%1'"_s.arg(name)).toLongLong());
    }
    static QString Sorted(const QList<Attachment> &files)
    {
        QStringList names;
        for (const Attachment &file : files)
            names << file.name;
        names.sort();
        return names.join(u' ');
    }

private slots:
    void init()
    {
        m_program.emplace();
        Add_Document(u"{1}"_s, u"001"_s, u"one"_s);
    }
    void cleanup()
    {
        QCOMPARE(m_program->prompts.Problems(), QStringList());
        m_program.reset();
    }

    void A_File_Is_Kept_As_The_Mode_Says_data()
    {
        QTest::addColumn<QString>("mode");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("path");
        const QString day = Test_Program::Now().toString(u"yyyyMMdd"_s);
        QTest::addRow("internal") << u"0"_s << QString() << u"附 件.txt"_s << 0 << QString();
        QTest::addRow("under another name") << u"0"_s << u"x"_s << u"x"_s << 0 << QString();
        QTest::addRow("copied") << u"1"_s << QString() << u"附 件.txt"_s << 1 << u"<P>Addin/%1/附 件.txt"_s.arg(day);
        QTest::addRow("linked") << u"2"_s << QString() << u"附 件.txt"_s << 1 << u"*"_s;
        QTest::addRow("not at all") << u"3"_s << QString() << QString() << -1 << QString();
    }
    void A_File_Is_Kept_As_The_Mode_Says()
    {
        QFETCH(QString, mode);
        QFETCH(QString, name);
        QFETCH(QString, shown);
        QFETCH(int, type);
        QFETCH(QString, path);
        m_program->Write(u"附 件.txt"_s, QByteArray(1536, 'x'));
        const QString file = m_program->Path(u"附 件.txt"_s);
        const Saved_Attachment saved = S_SaveFile(u"{1}"_s, file, name, mode, m_work);
        QCOMPARE(saved.trouble.number, 0);
        const QList<Attachment> files = Attachments_Of(u"{1}"_s);
        QCOMPARE(files.size(), type < 0 ? 0 : 1);
        if (type < 0)
            return;
        QCOMPARE(files[0].name, shown);
        QCOMPARE(static_cast<int>(files[0].type), type);
        QCOMPARE(files[0].path, path == u"*" ? file : path);
        QCOMPARE(files[0].size, u"1.50K"_s);
        if (type == 0)
            QCOMPARE(Bytes_Of(files[0].id), QByteArray(1536, 'x'));
        else
            QCOMPARE(Files::Read_Bytes(Attachment_Place::Expanded(files[0].path).target), QByteArray(1536, 'x'));
    }

    void A_Path_Follows_The_Program_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("reduced");
        QTest::addRow("below the program") << m_program_path + u"a/b"_s << u"<P>a/b"_s;
        QTest::addRow("elsewhere") << u"/mnt/a b"_s << u"<D>mnt/a b"_s;
    }
    void A_Path_Follows_The_Program()
    {
        QFETCH(QString, path);
        QFETCH(QString, reduced);
        path.replace(m_program_path, App().App_Path);
        QCOMPARE(Attachment_Place::Reduced(path), reduced);
        QCOMPARE(Attachment_Place::Expanded(reduced).target, path);
    }

    void Pages_Are_Opened_By_Known_Ways_Only_data()
    {
        QTest::addColumn<QString>("address");
        QTest::addColumn<bool>("safe");
        for (const char *safe : {"http://a", "HTTPS://a/b?c", "mailto:a@b", " ftp://a"})
            QTest::addRow("%s", safe) << QString::fromLatin1(safe) << true;
        for (const char *other : {"file:///etc/passwd", "javascript:x", "ssh://a", "a.desktop", "", "data:text/html,x"})
            QTest::addRow("[%s]", other) << QString::fromLatin1(other) << false;
    }
    void Pages_Are_Opened_By_Known_Ways_Only()
    {
        QFETCH(QString, address);
        QFETCH(bool, safe);
        QCOMPARE(Attachment_Place::Is_Safe_Address(address), safe);
    }

    void A_Changed_File_Takes_The_Old_Ones_Place_At_The_End()
    {
        m_program->Write(u"a"_s, "old");
        m_program->Write(u"b"_s, "other");
        S_SaveFile(u"{1}"_s, m_program->Path(u"a"_s), {}, Addin_Mode::Internal, m_work);
        S_SaveFile(u"{1}"_s, m_program->Path(u"b"_s), {}, Addin_Mode::Internal, m_work);
        m_program->Write(u"edited"_s, "new");
        const Attachment old = Attachments_Of(u"{1}"_s).first();
        const Saved_Attachment saved = Replace_Attachment(old, m_program->Path(u"edited"_s), m_work);
        QVERIFY(saved.id > old.id);
        QCOMPARE(Names(u"{1}"_s), QStringList({u"b"_s, u"a"_s}));
        QCOMPARE(Bytes_Of(saved.id), QByteArray("new"));

        ChangeFileOrder(Attachments_Of(u"{1}"_s).at(0).id, saved.id);
        QCOMPARE(Names(u"{1}"_s), QStringList({u"a"_s, u"b"_s}));
        QVERIFY(Replace_Attachment(old, m_program->Path(u"missing"_s), m_work).trouble.number != 0);
        QCOMPARE(Names(u"{1}"_s), QStringList({u"a"_s, u"b"_s}));
        Delete_Attachments({saved.id});
        QCOMPARE(Names(u"{1}"_s), QStringList({u"b"_s}));
    }

    /// The same file is one copy for each day; another one of its name is not taken for it.
    void A_Copied_File_Is_Never_Another_One()
    {
        m_program->Write(u"a.txt"_s, "one");
        m_program->Write(u"b/a.txt"_s, "two");
        for (const char16_t *name : {u"a.txt", u"b/a.txt", u"a.txt"})
            S_SaveFile(u"{1}"_s, m_program->Path(QString::fromUtf16(name)), {}, Addin_Mode::Copy, m_work);
        QByteArrayList kept;
        for (const Attachment &file : Attachments_Of(u"{1}"_s))
            kept << Files::Read_Bytes(Attachment_Place::Expanded(file.path).target);
        QCOMPARE(kept, QByteArrayList({"one", "two", "one"}));
    }

    /// A long file is never in memory as a whole, goes in and comes out the same, and leaves nothing when called off.
    void A_Long_File_Streams()
    {
        constexpr qint64 Length = 128LL << 20;
        QFile sparse(m_program->Path(u"long"_s));
        QVERIFY(sparse.open(QIODevice::WriteOnly) && sparse.write("head") == 4 && sparse.resize(Length));
        QVERIFY(sparse.seek(Length - 4) && sparse.write("tail") == 4);
        sparse.close();
        const QString database = m_program->Path(u"data/Zelqor.db"_s);
        const qint64 length = QFileInfo(database).size();
        Stopping_Work stopping(Length / 2);
        QVERIFY(S_SaveFile(u"{1}"_s, sparse.fileName(), {}, Addin_Mode::Internal, stopping).stopped);
        QCOMPARE(Names(u"{1}"_s), QStringList());
        QVERIFY(QFileInfo(database).size() < length + (1 << 20));

        Memory_Peak::Forget();
        const qint64 memory = Memory_Peak::Kilobytes();
        const Saved_Attachment saved = S_SaveFile(u"{1}"_s, sparse.fileName(), {}, Addin_Mode::Internal, m_work);
        QVERIFY(Write_Attachment(saved.id, m_program->Path(u"out"_s), m_work));
        constexpr qint64 Most = 64 << 10;
        QVERIFY2(Memory_Peak::Kilobytes() - memory < Most,
                 qPrintable(QString::number(Memory_Peak::Kilobytes() - memory)));
        QFile out(m_program->Path(u"out"_s));
        QCOMPARE(out.size(), Length);
        QVERIFY(out.open(QIODevice::ReadOnly) && out.read(4) == "head" && out.seek(Length - 4) &&
                out.readAll() == "tail");
        QVERIFY(sparse.resize(2LL << 30));
        const Saved_Attachment tooLarge = S_SaveFile(u"{1}"_s, sparse.fileName(), {}, Addin_Mode::Internal, m_work);
        QVERIFY(Attachment_Trouble(tooLarge.trouble).contains(u"952 MB"_s));
        QCOMPARE(Names(u"{1}"_s), QStringList({u"long"_s}));
    }

    void What_Is_Worth_A_Look_data()
    {
        QTest::addColumn<int>("trait");
        QTest::addColumn<QString>("names");
        QTest::addColumn<int>("repeated");
        QTest::addRow("all") << 0 << u"a.txt alone.txt b.txt gone gone.txt same.txt twin.txt web"_s << 0;
        QTest::addRow("dangling") << 1 << u"gone gone.txt"_s << 0;
        QTest::addRow("without a document") << 2 << u"alone.txt"_s << 0;
        QTest::addRow("twice") << 3 << u"a.txt same.txt"_s << 1;
    }
    void What_Is_Worth_A_Look()
    {
        QFETCH(int, trait);
        QFETCH(QString, names);
        QFETCH(int, repeated);
        Add_Three_Documents();
        const QList<Attachment> all = All_Attachments();
        const Found_Attachments found = Attachments_With(static_cast<Attachment_Trait>(trait), all, m_work);
        QCOMPARE(Sorted(found.files), names);
        QCOMPARE(found.repeated.size(), repeated);
        QVERIFY(found.failed.isEmpty());
        Stopping_Work stopping(1);
        QVERIFY(trait == 3 || Attachments_With(static_cast<Attachment_Trait>(trait), all, stopping).stopped);
    }

    void Attachments_Are_Found_By_What_They_Say_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("where"); ///< n, r, c
        QTest::addColumn<QString>("names");
        QTest::addRow("name") << u"ALONE"_s << u"nrc"_s << u"alone.txt"_s;
        QTest::addRow("not in the name") << u"alone"_s << u"r"_s << QString();
        QTest::addRow("remark") << u"nOte"_s << u"r"_s << u"b.txt"_s;
        QTest::addRow("content") << u"bYteS"_s << u"c"_s << u"a.txt same.txt"_s;
        QTest::addRow("content of a link") << u"linked words"_s << u"c"_s << u"out.txt"_s;
        QTest::addRow("text of an office file") << u"Grüße"_s << u"c"_s << u"letter.docx"_s;
    }
    void Attachments_Are_Found_By_What_They_Say()
    {
        QFETCH(QString, text);
        QFETCH(QString, where);
        QFETCH(QString, names);
        Add_Three_Documents();
        m_program->Write(u"out.txt"_s, "linked words");
        m_program->Write(
            u"letter.docx"_s,
            Zip_File::Zip({{"[Content_Types].xml", "<Types/>"},
                           {"word/document.xml",
                            "<w:document xmlns:w=\"http://schemas.openxmlformats.org/wordprocessingml/2006/main\">"
                            "<w:body><w:p><w:r><w:t>Gr\xc3\xbc\xc3\x9f"
                            "e</w:t></w:r></w:p></w:body></w:document>"}}));
        S_SaveFile(u"{2}"_s, m_program->Path(u"out.txt"_s), {}, Addin_Mode::Link, m_work);
        S_SaveFile(u"{2}"_s, m_program->Path(u"letter.docx"_s), {}, Addin_Mode::Internal, m_work);
        const Attachment_Search search{text, where.contains(u'n'), where.contains(u'r'), where.contains(u'c')};
        const Found_Attachments found = Search_Attachments(search, All_Attachments(), m_work);
        QCOMPARE(Sorted(found.files), names);
        QVERIFY(found.failed.isEmpty());
    }

    void A_Link_Is_Led_Elsewhere()
    {
        Add_Three_Documents();
        m_program->Write(u"it's here.txt"_s, "1234");
        Set_Attachment_Place(One(u"gone.txt"_s), m_program->Path(u"it's here.txt"_s));
        QCOMPARE(One(u"gone.txt"_s).path, m_program->Path(u"it's here.txt"_s));
        Set_Attachment_Place(One(u"gone"_s), m_program->Path(u"data"_s));
        QCOMPARE(One(u"gone"_s).path, u"<F>"_s + m_program->Path(u"data"_s));
        Give_Attachments({One(u"alone.txt"_s).id}, u"{2}"_s);
        QVERIFY(Names(u"{2}"_s).endsWith(u"alone.txt"_s));
        QCOMPARE(Sorted(Attachments_With(Attachment_Trait::Dangling, All_Attachments(), m_work).files), QString());
    }

    void Pictures_Of_Pages_Stay_Below_Their_Directory()
    {
        Config().Pic_Dir = m_program->Path(u"Pic"_s);
        for (const char *name : {"20260102x.png", "../../x.png", "a/b.png", ""})
            Sql_Run(u"insert into tab_file(code_id,file_name,file_type,file_cont) values ('{1}','%1',4,'bytes')"_s.arg(
                QLatin1String(name)));
        s_ReadAllFile(u"{1}"_s);
        QCOMPARE(m_program->Bytes(u"Pic/202601/20260102x.png"_s), QByteArray("bytes"));
        QCOMPARE(m_program->Logged().size(), 3);
        QVERIFY(!QFileInfo::exists(m_program->Path(u"x.png"_s)));
    }

private:
    const QString m_program_path = u"<program>/"_s;
};

QTEST_GUILESS_MAIN(Test_Attachments)
#include "test_attachments.moc"
