// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/book_export.h"
#include "platform/book/book_items.h"
#include "platform/book/book_texts.h"
#include "platform/files/door.h"
#include "platform/files/paths.h"
#include "platform/office/office_engine.h"
#include "support/stopping_work.h"
#include "support/stored_document.h"
#include "support/test_program.h"

#include <QFile>
#include <QImage>
#include <QTest>
#include <optional>

using namespace Qt::StringLiterals;

class Test_Book_Export : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;
    Unwatched_Work m_work;

    Book_Order Order(Book_Mode mode)
    {
        return {m_program->Path(u"book.exe"_s),
                u"密 b"_s,
                3,
                mode,
                {{u"1"_s, u"甲//乙"_s, {}}, {u"2"_s, u"locked"_s, u"RTF"_s}, {u"3"_s, u"last"_s, u"DOCX"_s}}};
    }

private slots:
    void init()
    {
        m_program.emplace();
        Add_Folder(u"001"_s, u"top"_s);
        m_program->Write(u"tools/ZelqorViewer.dat"_s, "#!the viewer");
    }

    void A_Book_Of_Each_Mode_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QByteArray>("type");
        QTest::newRow("text") << 0 << QByteArray("TXT");
        QTest::newRow("rich") << 1 << QByteArray("RTF");
        QTest::newRow("pages") << 2 << QByteArray("JPG");
    }
    void A_Book_Of_Each_Mode()
    {
        QFETCH(int, mode);
        Store_Document(*m_program, u"1"_s, u"001"_s, u"甲//乙"_s, u"RTF"_s, R"({\rtf1\ansi first {\b bold}\par})",
                       u"正文 one"_s);
        Store_Document(*m_program, u"2"_s, u"001"_s, u"locked"_s, u"RTF"_s, R"({\rtf1 secret})", {}, u"pw"_s);
        Add_Document(u"3"_s, u"001"_s, u"last"_s);
        Sql_Run(u"Update Code_Info Set Code_Content='text 3', Code_Type='DOCX' Where Code_ID='3'"_s);
        const Book_Result result = Export_Book(Order(Book_Mode(mode)), m_work);
        QCOMPARE(result.done, 2);
        QCOMPARE(result.failed.size(), 1);
        QCOMPARE(result.failed[0].name, u"locked"_s);
        QVERIFY(!result.failed[0].reason.isEmpty());
        QCOMPARE(result.changed_titles, QStringList{u"甲//乙"_s});

        QVERIFY(Files::Look(m_program->Path(u"book.exe"_s))->is_runnable);
        const std::string file = m_program->Bytes(u"book.exe"_s).toStdString();
        QVERIFY(file.find("secret") == std::string::npos);
        QCOMPARE(std::string(Book::Program(file)), m_program->Bytes(u"tools/ZelqorViewer.dat"_s).toStdString());
        const std::vector<Book::Item> items = Book::Items(file);
        const auto parameters = Book::Read_Parameters(*Book::Find(items, Book::Parameters_Id));
        QCOMPARE(QString::fromStdString(parameters->password), u"密 b"_s);
        QCOMPARE(parameters->uses, 3);
        const std::vector<Book::Entry> index = Book::Read_Index(*Book::Find(items, Book::Index_Id));
        QCOMPARE(index.size(), size_t(2));
        QCOMPARE(QString::fromStdString(index[0].title), u"甲/ /乙"_s);
        QTEST(QByteArray::fromStdString(index[0].type), "type");
        QCOMPARE(index[1].id, 101U);
        const std::string first(*Book::Find(items, 100));
        if (mode == 0)
            QCOMPARE(QString::fromStdString(Book::Unscrambled(first)), u"正文 one"_s);
        if (mode == 1)
            QVERIFY(first.starts_with("{\\rtf") && first.find("bold") != std::string::npos);
        if (mode == 2) {
            const QImage page = QImage::fromData(QByteArray::fromStdString(first), "JPG");
            QVERIFY(page.width() >= 1200);
            int dark = 0;
            for (int y = 0; y < page.height(); ++y)
                for (int x = 0; x < page.width(); ++x)
                    dark += qGray(page.pixel(x, y)) < 100;
            QVERIFY(dark > 200);
        }
        QCOMPARE(Files::Entries(m_program->Path(u"data/temp"_s)).size(), 0);
    }

    void An_Older_Book_Stays_Unless_The_New_One_Is_Whole_data()
    {
        QTest::addColumn<QString>("trouble");
        for (const char *trouble : {"stopped", "nothing left", "too many", "no viewer"})
            QTest::newRow(trouble) << trouble;
    }
    void An_Older_Book_Stays_Unless_The_New_One_Is_Whole()
    {
        QFETCH(QString, trouble);
        m_program->Write(u"books/book.exe"_s, "the older book");
        Book_Order order = Order(Book_Mode::Text);
        order.target = m_program->Path(u"books/book.exe"_s);
        Stopping_Work stopping(trouble == u"stopped" ? 2 : 10'000);
        if (trouble == u"nothing left")
            order.rows = {order.rows[1]};
        if (trouble == u"too many")
            order.rows = QList<Book_Row>(901, order.rows[0]);
        if (trouble == u"no viewer") {
            Files::Delete_If_Present(m_program->Path(u"tools/ZelqorViewer.dat"_s));
            m_program->Write(u"tools/ZelqorViewer.dat/in the way"_s, {});
        }
        bool isRefused = false;
        try {
            const Book_Result result = Export_Book(order, stopping);
            QCOMPARE(result.stopped, trouble == u"stopped");
        } catch (const Run_Time_Error &error) {
            isRefused = !error.description.isEmpty();
        }
        QCOMPARE(isRefused, trouble == u"too many" || trouble == u"no viewer");
        QCOMPARE(m_program->Bytes(u"books/book.exe"_s), QByteArray("the older book"));
        QCOMPARE(Files::Entries(m_program->Path(u"books"_s)).size(), 1);
    }

    void A_Text_Of_An_Office_Program_Keeps_Its_Looks()
    {
        if (Office::Engine().isEmpty())
            QSKIP("LibreOffice is not installed");
        QFile file(QStringLiteral(ZELQOR_TEST_DATA "/office/words.docx"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        Store_Document(*m_program, u"3"_s, u"001"_s, u"last"_s, u"DOCX"_s, file.readAll(), u"words"_s);
        Book_Order order = Order(Book_Mode::Rich);
        order.rows = {order.rows[2]};
        const Book_Result result = Export_Book(order, m_work);
        QCOMPARE(result.failed.isEmpty() ? QString() : result.failed[0].reason, QString());
        QCOMPARE(result.done, 1);
        const std::string book = m_program->Bytes(u"book.exe"_s).toStdString();
        const std::string text(*Book::Find(Book::Items(book), Book::First_Document_Id));
        QVERIFY(text.starts_with("{\\rtf") && text.find("\\trowd") != std::string::npos);
        QCOMPARE(Files::Entries(m_program->Path(u"data/temp"_s)).size(), 0);
    }

    void An_Item_Behind_A_Torn_One()
    {
        const QString path = m_program->Path(u"torn"_s);
        m_program->Write(u"torn"_s, "the program");
        Add_Named_Item(path, 100, "first");
        m_program->Write(u"torn"_s, m_program->Bytes(u"torn"_s) + QByteArray(5000, 'x') + "ZLQBOOK1");
        Add_Named_Item(path, 101, "second");
        const std::string file = m_program->Bytes(u"torn"_s).toStdString();
        QCOMPARE(Book::Items(file).size(), size_t(2));
    }
};

QTEST_MAIN(Test_Book_Export)
#include "test_book_export.moc"
