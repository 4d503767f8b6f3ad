// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/errors/run_time_error.h"
#include "platform/richtext/rich_text.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QTextCursor>
#include <QTextDocument>

class Test_Plain_Text : public QObject
{
    Q_OBJECT

private slots:
    void decodes_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        const auto row = [](const char *name, const QByteArray &bytes, const QString &text) {
            QTest::newRow(name) << bytes << text;
        };
        row("empty", "", QString());
        row("UTF-8", "a中é", u"a中é"_qs);
        row("UTF-8 with mark", "\xEF\xBB\xBF中", u"中"_qs);
        row("UTF-16 little", QByteArray("\xFF\xFE-N\n\0", 6), u"中\n"_qs);
        row("UTF-16 big", QByteArray("\xFE\xFFN-\0a", 6), u"中a"_qs);
        row("UTF-16 little without mark", QByteArray("-N\x87\x65 \0a\0", 8), u"中文 a"_qs);
        row("UTF-16 big without mark", QByteArray("\0a\0b\0\n", 6), u"ab\n"_qs);
        row("GB18030", "\xD6\xD0\xCE\xC4 \x81\x30\x81\x30", u"中文 \u0080"_qs);
        row("UTF-8 with a bad byte", "中文，\xFF汉字。\n二\n", u"中文，\uFFFD汉字。\n二\n"_qs);
        row("UTF-8 that is cut", "中文\xE4\xB8", u"中文\uFFFD\uFFFD"_qs);
        row("GB18030 with a bad byte", "\xD6\xD0\xFF\xCE\xC4\n", u"中\uFFFD文\n"_qs);
        row("GB18030 that is cut", "\xD6\xD0\xCE", u"中\uFFFD"_qs);
        row("GB18030 of no character", "\xD6\xD0\x84\x31\xA5\x30", u"中\uFFFD1\uFFFD0"_qs);
        row("line ends", "a\r\nb\rc\nd\r\n", u"a\nb\nc\nd\n"_qs);
        row("a zero in text", QByteArray("abcdef\0ghijkl", 13), QString::fromLatin1("abcdef\0ghijkl", 13));
    }

    void decodes()
    {
        QFETCH(QByteArray, bytes);
        QTEST(Rich_Text::Decode_Plain(bytes), "text");
    }

    /// What was read is written back byte for byte, and after an edit in the same form if it holds the text.
    void saved_as_it_was_read_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QByteArray>("edited"); // with U+20000 before it
        const auto row = [](const char *name, const QByteArray &bytes, const QByteArray &edited) {
            QTest::newRow(name) << bytes << edited;
        };
        row("UTF-8", "a\xC2\xA0中\n\n", "𠀀a\xC2\xA0中\n\n");
        row("mark, returns and feeds", "\xEF\xBB\xBF中\r\nb\r\n", "\xEF\xBB\xBF𠀀中\r\nb\r\n");
        row("GB18030, returns", "\xD6\xD0\r\xCE\xC4", "\x95\x32\x82\x36\xD6\xD0\r\xCE\xC4");
        row("UTF-16", QByteArray("\xFF\xFE-N\n\0", 6), QByteArray("\xFF\xFE\x40\xD8\x00\xDC-N\n\0", 10));
        row("bytes of no sign", "中\xFF\xFE\n文\uFFFD", "𠀀中\xFF\xFE\n文\uFFFD");
        row("GB18030 with bytes of no sign", "\xD6\xD0\xFF\xCE\xC4\n", "\x95\x32\x82\x36\xD6\xD0\xFF\xCE\xC4\n");
        row("UTF-16, half a unit", QByteArray("\xFF\xFE-N\n", 5), QByteArray("\xFF\xFE\x40\xD8\x00\xDC-N\n", 9));
        row("UTF-16 that would not be known again", QByteArray("\0a", 2), "\xEF\xBB\xBF𠀀a");
    }

    void saved_as_it_was_read()
    {
        QFETCH(QByteArray, bytes);
        QTemporaryDir directory;
        const QString path = directory.filePath(u"a.txt"_qs);
        const auto stored = [&] {
            QFile file(path);
            return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        };
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        file.close();
        QTextDocument document;
        Rich_Text::Load_File(path, Rich_Text::Format::Plain, document);
        Rich_Text::Save_File(path, Rich_Text::Format::Plain, document);
        QCOMPARE(stored(), bytes);
        QTextCursor(&document).insertText(u"\U00020000"_qs);
        Rich_Text::Save_File(path, Rich_Text::Format::Plain, document);
        QTEST(stored(), "edited");
        document.setPlainText(u"中\n"_qs); // no longer what was read
        Rich_Text::Save_File(path, Rich_Text::Format::Plain, document);
        QCOMPARE(stored(), QByteArray("中\n"));
    }

    /// Signs that are taken out, put in or typed leave the others what they were.
    void bytes_follow_their_signs()
    {
        QTemporaryDir directory;
        const QString path = directory.filePath(u"a.txt"_qs);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadWrite) && file.write("1\xFF,\xFE;\xFD\n") == 7);
        file.flush();
        QTextDocument document;
        Rich_Text::Load_File(path, Rich_Text::Format::Plain, document);
        QTextCursor cursor = document.find(u"\uFFFD,"_qs);
        cursor.insertText(u"x"_qs, {});
        document.find(u";"_qs).insertText(u"\uFFFD"_qs, {});
        Rich_Text::Save_File(path, Rich_Text::Format::Plain, document);
        QFile stored(path);
        QVERIFY(stored.open(QIODevice::ReadOnly));
        QCOMPARE(stored.readAll(),
                 QByteArray("\uFEFF1x\xFE\uFFFD\xFD\n")); // with a mark, else it would read as GB18030
    }

    void files_data()
    {
        QTest::addColumn<Rich_Text::Format>("format");
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<QString>("shown");
        QTest::newRow("RTF") << Rich_Text::Format::Rtf << QByteArray("{\\rtf1 a\\par \\u20013?}") << u"a\n中"_qs;
        QTest::newRow("RTF as plain") << Rich_Text::Format::Plain << QByteArray("{\\rtf1 a}") << u"{\\rtf1 a}"_qs;
        QTest::newRow("plain as RTF") << Rich_Text::Format::Rtf << QByteArray("\xD6\xD0\r\nb") << u"中\nb"_qs;
        QTest::newRow("plain") << Rich_Text::Format::Plain << QByteArray("b中") << u"b中"_qs;
    }

    /// What was loaded shows the text, and what is saved then loads as the same.
    void files()
    {
        QFETCH(Rich_Text::Format, format);
        QFETCH(QByteArray, stored);
        QTemporaryDir directory;
        const QString path = directory.filePath(u"文件.bin"_qs);
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(stored) == stored.size());
        file.close();
        QTextDocument document, again;
        Rich_Text::Load_File(path, format, document);
        QTEST(document.toPlainText(), "shown");
        QVERIFY(!document.isModified());
        Rich_Text::Save_File(path, format, document);
        Rich_Text::Load_File(path, format, again);
        QTEST(again.toPlainText(), "shown");
    }

    void failures()
    {
        QTemporaryDir directory;
        QTextDocument document;
        document.setPlainText(u"kept"_qs);
        const auto number = [](const auto &action) {
            try {
                action();
            } catch (const Run_Time_Error &error) {
                return error.number;
            }
            return qint32(0);
        };
        QCOMPARE(
            number([&] { Rich_Text::Load_File(directory.filePath(u"none.rtf"_qs), Rich_Text::Format::Rtf, document); }),
            Error_Number::File_Not_Found);
        QCOMPARE(number([&] { Rich_Text::Load_File(directory.path(), Rich_Text::Format::Rtf, document); }),
                 Error_Number::Path_Access);
        QVERIFY(number([&] {
                    Rich_Text::Save_File(directory.filePath(u"no/such/a.rtf"_qs), Rich_Text::Format::Rtf, document);
                }) != 0);
        QCOMPARE(document.toPlainText(), u"kept"_qs);
    }
};

QTEST_MAIN(Test_Plain_Text)
#include "test_plain_text.moc"
