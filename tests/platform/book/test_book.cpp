// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/book/book_items.h"
#include "platform/book/book_texts.h"

#include <QTest>

namespace
{
const std::string Viewer = "a viewer's bytes, ZLQBOOK1 among them";

void Add(std::string &file, std::uint32_t id, std::string_view bytes)
{
    file += Book::Record(file.size(), Book::Last_Footer(file, 0), id, bytes);
}
/// Ids and bytes of a book as one line.
std::string Told(const std::string &file)
{
    std::string told;
    for (const Book::Item &item : Book::Items(file))
        told += std::to_string(item.id) + "=" + std::string(item.bytes) + " ";
    return told;
}
std::string Small_Book()
{
    std::string file = Viewer;
    Add(file, 10, "ten");
    Add(file, 11, "");
    Add(file, 100, "hundred");
    return file;
}
} // namespace

class Test_Book : public QObject
{
    Q_OBJECT

private slots:
    void A_Kill_Leaves_The_Former_Book()
    {
        const std::string former = Small_Book();
        const std::string told = Told(former);
        QCOMPARE(told, std::string("10=ten 11= 100=hundred "));
        std::string nested = Viewer;
        Add(nested, 7, "a book within");
        std::string next = former;
        Add(next, 101, nested);
        for (size_t size = former.size(); size < next.size(); ++size) {
            const std::string torn = next.substr(0, size);
            QCOMPARE(Told(torn), told);
            std::string goneOn = torn;
            Add(goneOn, 102, "more");
            QCOMPARE(Told(goneOn), told + "102=more ");
        }
        QCOMPARE(Told(next), told + "101=" + nested + " ");
        QCOMPARE(std::string(Book::Program(next)), Viewer);
    }

    void Hostile_Books_Are_Read_Within_Bounds()
    {
        const std::string good = Small_Book();
        for (size_t at = 0; at < good.size(); ++at)
            for (const char bit : {'\x01', '\x80'}) {
                std::string patched = good;
                patched[at] = static_cast<char>(patched[at] ^ bit);
                for (const Book::Item &item : Book::Items(patched))
                    QVERIFY(Told(good).find(std::to_string(item.id) + "=" + std::string(item.bytes)) !=
                            std::string::npos);
                QCOMPARE(at < Viewer.size(), Book::Items(patched).size() == 3);
            }
        std::string moved = "x" + good; // every footer tells another place
        QCOMPARE(Told(moved), std::string());
        for (const std::uint64_t former : {std::uint64_t(1), std::uint64_t(moved.size()), ~std::uint64_t(0)})
            QCOMPARE(Told(moved + Book::Record(moved.size(), former, 12, "bytes")),
                     std::string(former == 1 ? "12=bytes " : ""));
        QCOMPARE(Told(std::string(100'000, 'Z')), std::string());
        QCOMPARE(Told(std::string(Book::Record(1'000'000, {}, 1, "x")).substr(1)), std::string());
    }

    void A_Later_Record_Replaces_An_Earlier()
    {
        std::string file = Small_Book();
        Add(file, 10, "new");
        QCOMPARE(Told(file), std::string("11= 100=hundred 10=new "));
        QVERIFY(!Book::Find(Book::Items(file), 12));
    }

    void Nine_Hundred_Items()
    {
        std::string file = Viewer;
        for (std::uint32_t id = Book::First_Document_Id; id <= Book::Last_Document_Id; ++id)
            Add(file, id, std::to_string(id));
        const std::vector<Book::Item> items = Book::Items(file);
        QCOMPARE(items.size(), size_t(900));
        QCOMPARE(*Book::Find(items, 999), std::string_view("999"));
        // Each cycle finds its place from the last bytes alone.
        const size_t end = file.size() - Book::Footer_Size;
        QCOMPARE(Book::Last_Footer(std::string_view(file).substr(end), end), Book::Last_Footer(file, 0));
    }

    void Parameters_And_Index_Come_Through_data()
    {
        QTest::addColumn<QByteArray>("password");
        QTest::addColumn<QByteArray>("title");
        QTest::addColumn<QByteArray>("shown");
        QTest::newRow("ASCII") << QByteArray("Ab c") << QByteArray("A title") << QByteArray("A title");
        QTest::newRow("none") << QByteArray() << QByteArray() << QByteArray();
        QTest::newRow("Chinese") << QByteArray("密码") << QByteArray("标题：甲、乙") << QByteArray("标题：甲、乙");
        QTest::newRow("two units") << QByteArray("a😀") << QByteArray("𠮷😀") << QByteArray("𠮷😀");
        QTest::newRow("separators") << QByteArray("a//9//") << QByteArray("a///b/") << QByteArray("a/ / /b/ ");
    }
    void Parameters_And_Index_Come_Through()
    {
        QFETCH(QByteArray, password);
        QFETCH(QByteArray, title);
        QFETCH(QByteArray, shown);
        const std::optional<Book::Parameters> read =
            Book::Read_Parameters(Book::Written(Book::Parameters{password.toStdString(), 9999}));
        QVERIFY(read);
        QCOMPARE(read->password, password.toStdString());
        QCOMPARE(read->uses, 9999);
        const std::vector<Book::Entry> index = Book::Read_Index(
            Book::Written(std::vector<Book::Entry>{{100, "RTF", title.toStdString()}, {999, "JS", "last"}}));
        QCOMPARE(index.size(), size_t(2));
        QCOMPARE(index[0].title, shown.toStdString());
        QCOMPARE(index[1].type, std::string("JS "));
    }

    void Damaged_Texts_Are_Refused_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<int>("entries");
        for (const char *text : {"", "//", "secret//x//", "secret//5", "99TXTa//12", "1x0TXTtitle//"})
            QTest::newRow(text) << QByteArray(text) << 0;
        QTest::newRow("too many uses") << QByteArray("//99999999999//") << 1; // a title-less entry, for the index
        QTest::newRow("one good entry") << QByteArray("1//100TXTa//\xff\xfe//") << 1;
        QTest::newRow("many") << QByteArray("100TXT//").repeated(5000) << 900;
    }
    void Damaged_Texts_Are_Refused()
    {
        QFETCH(QByteArray, text);
        const std::string item = Book::Scrambled(text.toStdString());
        QVERIFY(!Book::Read_Parameters(item));
        QTEST(static_cast<int>(Book::Read_Index(item).size()), "entries");
    }
};

QTEST_APPLESS_MAIN(Test_Book)
#include "test_book.moc"
