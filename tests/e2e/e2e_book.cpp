// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop.h"

#include "platform/book/book_items.h"
#include "platform/book/book_texts.h"

#include <QBuffer>
#include <QFile>
#include <QImage>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace
{
QByteArray Bytes_Of(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

struct Document {
    const char *title;
    const char *type;
    std::string bytes;
};

/// A book as the program writes it.
std::string Book_Of(const std::vector<Document> &documents, const std::string &password, int uses)
{
    std::string file = Bytes_Of(QStringLiteral(ZELQOR_VIEWER)).toStdString();
    const auto add = [&](std::uint32_t id, const std::string &bytes) {
        file += Book::Record(file.size(), Book::Last_Footer(file, 0), id, bytes);
    };
    add(Book::Parameters_Id, Book::Written(Book::Parameters{password, uses}));
    std::vector<Book::Entry> index;
    for (const Document &document : documents) {
        index.push_back(
            {Book::First_Document_Id + static_cast<std::uint32_t>(index.size()), document.type, document.title});
        add(index.back().id, document.bytes);
    }
    index.push_back({Book::Last_Document_Id, "TXT", "not there"});
    add(Book::Index_Id, Book::Written(index));
    return file;
}

std::string Picture(const char *format, int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::blue);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, format);
    return bytes.toStdString();
}

/// A picture that says it is 60,000 pixels wide and high.
std::string Huge(const char *format)
{
    QByteArray bytes = QByteArray::fromStdString(Picture(format, 64, 64));
    if (bytes.startsWith("\x89PNG"))
        bytes.replace(16, 8, QByteArray::fromHex("0000ea600000ea60"));
    else
        bytes.replace(bytes.indexOf(QByteArray::fromHex("ffc0")) + 5, 4, QByteArray::fromHex("ea60ea60"));
    return bytes.toStdString();
}

std::string In_Rich_Text(const std::string &picture)
{
    return "{\\rtf1 {\\pict\\pngblip\\picwgoal900000\\pichgoal900000 " +
           QByteArray::fromStdString(picture).toHex().toStdString() + "}}";
}
} // namespace

/// The book as a reader has it: it asks, shows, searches, counts, and says what it cannot read.
class E2e_Book : public QObject
{
    Q_OBJECT

    Desktop m_desktop;
    QTemporaryDir m_folder;
    QProcess m_viewer;
    QString m_path = m_folder.filePath(u"book.exe"_s);

    void Start(const std::string &book)
    {
        QFile file(m_path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(book.data(), static_cast<qint64>(book.size()));
        file.close();
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        Start_Again();
    }
    void Start_Again()
    {
        QProcessEnvironment environment = m_desktop.Environment();
        environment.insert(u"LANG"_s, u"C.UTF-8"_s);
        m_viewer.setProcessEnvironment(environment);
        m_viewer.start(m_path);
        QVERIFY(m_viewer.waitForStarted());
    }
    void End()
    {
        m_viewer.kill();
        m_viewer.waitForFinished();
    }
    /// Waits for a window with that title.
    [[nodiscard]] bool Shows(const QString &title, int milliseconds = 30'000) const
    {
        return Wait_Until(
            [&] {
                return !m_desktop.Do({u"search"_s, u"--onlyvisible"_s, u"--name"_s, u"^%1$"_s.arg(title)}).isEmpty();
            },
            milliseconds);
    }
    /// Types into whatever box the viewer shows, and again into the next one, until there is a window of that title.
    [[nodiscard]] bool Leads_To(const QString &title, const QString &typed) const
    {
        for (int i = 0; i < 20 && Is_Alive(); ++i) {
            m_desktop.Type(typed);
            m_desktop.Key(u"Return"_s);
            if (Shows(title, 1500))
                return true;
        }
        return false;
    }
    /// Answers boxes until the viewer ends.
    [[nodiscard]] bool Ends()
    {
        for (int i = 0; i < 20 && Is_Alive(); ++i) {
            m_desktop.Key(u"Return"_s);
            m_viewer.waitForFinished(1500);
        }
        return !Is_Alive() && m_viewer.exitStatus() == QProcess::NormalExit;
    }
    [[nodiscard]] bool Is_Alive() const { return m_viewer.state() == QProcess::Running; }
    [[nodiscard]] int Uses_Left() const
    {
        const std::string file = Bytes_Of(m_path).toStdString();
        const auto parameters = Book::Read_Parameters(Book::Find(Book::Items(file), Book::Parameters_Id).value_or(""));
        return parameters ? parameters->uses : -1;
    }

private slots:
    void initTestCase()
    {
        if (!m_desktop.Is_Up())
            QSKIP("no virtual X server");
        // A window that comes while the window manager takes over is never shown.
        bool isShown = false;
        for (int i = 0; i < 10 && !isShown; ++i) {
            Start(Bytes_Of(QStringLiteral(ZELQOR_VIEWER)).toStdString());
            isShown = Shows(u"Book"_s, 3000);
            End();
        }
        QVERIFY(isShown);
    }
    void cleanup() { End(); }

    void It_Is_Small_And_Needs_The_Base_Libraries_Only()
    {
        QVERIFY(Bytes_Of(QStringLiteral(ZELQOR_VIEWER)).size() <= 700'000);
        QProcess ldd;
        ldd.start(u"ldd"_s, {QStringLiteral(ZELQOR_VIEWER)});
        QVERIFY(ldd.waitForFinished());
        // Those of X, those that its letters are drawn with, and those of the C language.
        const QRegularExpression base(
            u"^(linux-vdso|libX\\w+|libxcb|libfontconfig|libfreetype|libexpat|libpng16|libz|libbrotli\\w+|libbsd|libmd|"
            "libuuid|libm|libc|/lib64/ld-linux.*)[.-]"_s);
        QStringList others;
        for (const QString &line : QString::fromUtf8(ldd.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts))
            if (!base.match(line.trimmed()).hasMatch())
                others << line.trimmed();
        QCOMPARE(others, QStringList());
    }

    void It_Asks_Counts_And_Destroys()
    {
        const std::vector<Document> documents{{"First", "TXT", Book::Scrambled("some words")},
                                              {"Second", "RTF", "{\\rtf1 {\\b rare}\\par}"}};
        Start(Book_Of(documents, "pw", 2));
        QVERIFY(Shows(u"Book"_s));
        m_desktop.Type(u"wrong"_s);
        m_desktop.Key(u"Return"_s);
        QVERIFY(!Shows(u"First - Book"_s, 1000));
        QCOMPARE(Uses_Left(), 2);
        QVERIFY(Leads_To(u"First - Book"_s, u"pw"_s));
        QCOMPARE(Uses_Left(), 1);
        m_desktop.Key(u"ctrl+f"_s);
        m_desktop.Type(u"RARE"_s);
        m_desktop.Key(u"Return"_s);
        QVERIFY(Shows(u"Second - Book"_s));
        m_desktop.Key(u"ctrl+Prior"_s);
        QVERIFY(Shows(u"First - Book"_s));
        m_desktop.Key(u"ctrl+q"_s);
        QVERIFY(m_viewer.waitForFinished(30'000));

        Start_Again();
        QVERIFY(Shows(u"Book"_s));
        QVERIFY(Leads_To(u"First - Book"_s, u"pw"_s)); // past the box that says that it was the last time
        QCOMPARE(Uses_Left(), 0);
        const QByteArray left = Bytes_Of(m_path);
        QVERIFY(!left.contains("rare"));
        QVERIFY(left.size() < Bytes_Of(QStringLiteral(ZELQOR_VIEWER)).size() + 200);
        End();
        Start_Again();
        QVERIFY(Shows(u"Book"_s));
        QVERIFY(Ends());
        QCOMPARE(m_viewer.exitCode(), 1);
    }

    void Hostile_Documents_Leave_It_Open()
    {
        const std::string jpeg = Picture("JPG", 300, 300);
        const std::vector<Document> documents{{"a", "TXT", ""},
                                              {"b", "JPG", jpeg.substr(0, jpeg.size() / 2)},
                                              {"c", "JPG", jpeg.substr(0, 20)},
                                              {"d", "JPG", Huge("JPG")},
                                              {"e", "RTF", In_Rich_Text(Huge("PNG"))},
                                              {"f", "RTF", "{\\rtf1 " + std::string(1'000'000, '{') + "x"},
                                              {"g", "RTF", "{\\rtf1\\trowd\\cellx1\\cellx1\\pard\\intbl\\fs1 a\\cell"},
                                              {"h", "TXT", std::string(100'000, '\xFF')},
                                              {"i", "RTF", In_Rich_Text(Picture("PNG", 50, 50))},
                                              {"j", "RTF", "{\\rtf1\\li-99999999\\fi99999999\\fs9999 x\\par"}};
        Start(Book_Of(documents, "", 9));
        for (const Document &document : documents) {
            QVERIFY2(Shows(QLatin1String(document.title) + u" - Book"_s), document.title);
            for (const QString &key : {u"ctrl+plus"_s, u"ctrl+Next"_s})
                m_desktop.Key(key);
        }
        QVERIFY(Is_Alive());
    }

    void Hostile_Books_Are_Refused_data()
    {
        QTest::addColumn<QByteArray>("book");
        const QByteArray good = QByteArray::fromStdString(Book_Of({{"a", "TXT", Book::Scrambled("x")}}, "", 9));
        const QByteArray viewer = Bytes_Of(QStringLiteral(ZELQOR_VIEWER));
        QByteArray patched = good;
        patched[viewer.size() + 3] = static_cast<char>(patched[viewer.size() + 3] ^ 1);
        QTest::newRow("no book") << viewer;
        QTest::newRow("truncated") << good.first(viewer.size() + 60);
        QTest::newRow("parameters patched") << patched;
        QTest::newRow("a book in a book") << viewer + good; // its items tell other places
    }
    void Hostile_Books_Are_Refused()
    {
        QFETCH(QByteArray, book);
        Start(book.toStdString());
        QVERIFY(Shows(u"Book"_s));
        QVERIFY(Ends());
        QCOMPARE(Bytes_Of(m_path), book);
    }
};

QTEST_MAIN(E2e_Book)
#include "e2e_book.moc"
