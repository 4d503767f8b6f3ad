// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/files/paths.h"
#include "platform/lzma/zelqorfun.h"

#include <QDir>
#include <QProcess>
#include <QRandomGenerator>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

namespace
{
QByteArray Random_Bytes(QRandomGenerator &random, qsizetype size, int first = 0, int count = 256)
{
    QByteArray bytes(size, Qt::Uninitialized);
    for (char &byte : bytes)
        byte = static_cast<char>(first + random.bounded(count));
    return bytes;
}

/// Rich text of several kinds: words, noise, one repeated character, one repeated phrase, nothing but line ends.
QByteArray Random_Rtf(QRandomGenerator &random, int kind)
{
    static const QList<QByteArray> words{"\\par ", "\\b ",    "{\\i text}", "\\'d6\\'d0", "hello ",
                                         "\r\n",   "\\fs20 ", "\\u20013?",  "}\r\n\r\n",  "}{"};
    QByteArray text = "{\\rtf1\\ansi\\ansicpg936\\deff0{\\fonttbl{\\f0 SimSun;}}\r\n";
    const int length = random.bounded(1, 200);
    const QByteArray phrase = Random_Bytes(random, random.bounded(1, 40), 32, 95);
    for (int i = 0; i < length; ++i)
        text += kind == 0   ? words.at(random.bounded(int(words.size())))
                : kind == 1 ? Random_Bytes(random, 1, 32, 95)
                : kind == 2 ? QByteArray(20, phrase.front())
                : kind == 3 ? phrase
                            : QByteArray(random.bounded(4) ? "\r\n" : "}\n\r");
    return text + '}';
}

/// What a document with a password stores: the tail begins at the stream's last byte, and zeros follow it.
QByteArray With_Tail(QByteArray stream, const QByteArray &scrambled)
{
    stream.chop(1);
    return stream + scrambled + (scrambled.size() < 10 ? "0" : "") + QByteArray::number(scrambled.size()) + "{}{}" +
           QByteArray(3, '\0');
}

QByteArray Stream_With_Header(int properties, quint32 dictionary, quint64 size, const QByteArray &coded)
{
    QByteArray header(13, '\0');
    header[0] = static_cast<char>(properties);
    qToLittleEndian(dictionary, header.data() + 1);
    qToLittleEndian(size, header.data() + 5);
    return header + coded;
}
} // namespace

class Test_Zelqorfun : public QObject
{
    Q_OBJECT
    QTemporaryDir m_folder;
    QRandomGenerator m_random{27481};

    [[nodiscard]] QByteArray At(const char *name) const { return m_folder.filePath(QString::fromUtf8(name)).toUtf8(); }
    [[nodiscard]] qint32 Run(const char *command, const char *from, const char *to) const
    {
        return zelqorfun(command, At(from).constData(), At(to).constData());
    }
    static QByteArray Whole(const QByteArray &stream)
    {
        bool complete = false;
        const QByteArray plain = Lzma_Decode(stream, complete);
        return complete ? plain : QByteArray("incomplete");
    }

private slots:
    void Files_Go_There_And_Back_data()
    {
        QTest::addColumn<QByteArray>("plain");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("one byte") << QByteArray("x");
        QTest::newRow("one zero byte") << QByteArray(1, '\0');
        QTest::newRow("a block") << Random_Bytes(m_random, 65536);
        QTest::newRow("a block and one") << Random_Bytes(m_random, 65537, 97, 20);
        QTest::newRow("10 MB") << Random_Bytes(m_random, 300'000).repeated(35);
    }
    void Files_Go_There_And_Back()
    {
        QFETCH(QByteArray, plain);
        Files::Write_Bytes(At("plain"), plain);
        QCOMPARE(Run("e", "plain", "coded"), 0);
        const QByteArray coded = Files::Read_Bytes(At("coded"));
        QCOMPARE(coded.first(5), QByteArray("\x5D\0\0\x80\0", 5));
        QCOMPARE(qFromLittleEndian<quint64>(coded.constData() + 5), quint64(plain.size()));
        QCOMPARE(Lzma_Encode(plain), coded);
        QCOMPARE(Whole(coded + QByteArray(10'001, '\0')), plain);
        QCOMPARE(Run("d", "coded ", "back  "), 0);
        QVERIFY(Files::Read_Bytes(At("back")) == plain);

        if (QStandardPaths::findExecutable("xz").isEmpty())
            QSKIP("xz is not installed");
        Files::Write_Bytes(At("coded.lzma"), coded);
        QCOMPARE(QProcess::execute("xz", {"--format=lzma", "-dkf", At("coded.lzma")}), 0);
        QVERIFY(Files::Read_Bytes(At("coded")) == plain);
        QStringList levels{"-0"}; // the header of these says that the size is unknown
        if (plain.size() < 1'000'000)
            levels += "-9";
        for (const QString &level : levels) {
            QCOMPARE(QProcess::execute("xz", {"--format=lzma", level, "-kf", At("plain")}), 0);
            QCOMPARE(Run("d", "plain.lzma", "back"), 0);
            QVERIFY(Files::Read_Bytes(At("back")) == plain);
        }
    }

    void Bad_Calls_Fail_And_Leave_The_Output_Alone_data()
    {
        QTest::addColumn<QByteArray>("command");
        QTest::addColumn<QByteArray>("input");
        const QByteArray text = Random_Bytes(m_random, 1000, 97, 26);
        const QByteArray good = Lzma_Encode(text);
        const QByteArray coded = good.sliced(13);
        QTest::newRow("command") << QByteArray("x") << text;
        QTest::newRow("empty command") << QByteArray() << text;
        QTest::newRow("nothing to decode") << QByteArray("d") << QByteArray();
        QTest::newRow("header cut off") << QByteArray("d") << good.first(12);
        QTest::newRow("header only") << QByteArray("d") << good.first(13);
        QTest::newRow("half") << QByteArray("d") << good.first(good.size() / 2);
        QTest::newRow("damaged early") << QByteArray("d") << good.first(40) + QByteArray(600, 'x');
        QTest::newRow("properties") << QByteArray("d") << Stream_With_Header(225, 1 << 23, 1000, coded);
        QTest::newRow("size beyond the limit") << QByteArray("d") << Stream_With_Header(93, 1 << 23, 1ULL << 62, coded);
        QTest::newRow("no end marker") << QByteArray("d") << Stream_With_Header(93, 1 << 23, ~0ULL, coded);
        QTest::newRow("text") << QByteArray("d") << text;
    }
    void Bad_Calls_Fail_And_Leave_The_Output_Alone()
    {
        QFETCH(QByteArray, command);
        QFETCH(QByteArray, input);
        Files::Write_Bytes(At("input"), input);
        Files::Write_Bytes(At("output"), "old");
        QCOMPARE(Run(command, "input", "output"), 1);
        QCOMPARE(Files::Read_Bytes(At("output")), QByteArray("old"));
        QCOMPARE(Run("e", "none", "output"), 1);
        QCOMPARE(Run("e", "", "output"), 1); // a folder
        QCOMPARE(Run("e", "input", "none/output"), 1);
        QCOMPARE(zelqorfun(nullptr, nullptr, nullptr), 1);
    }

    void Hostile_Streams_Stay_Within_Their_Bounds()
    {
        const QByteArray bomb = Lzma_Encode(QByteArray(10'000'000, 'a'));
        bool complete = true;
        QCOMPARE(Lzma_Decode(bomb, complete, 1000).size(), 1000);
        QVERIFY(!complete);
        QByteArray largest = bomb;
        largest.replace(1, 4, "\xFF\xFF\xFF\xFF");
        QCOMPARE(Whole(largest).size(), 10'000'000);
        for (int round = 0; round < 300; ++round) {
            QByteArray garbage = Random_Bytes(m_random, m_random.bounded(400));
            if (round % 2 && garbage.size() > 13) // let some pass for streams
                garbage.replace(0, 13, Stream_With_Header(93, ~0U, round % 4 == 1 ? ~0ULL : quint64(round), {}));
            QVERIFY(Lzma_Decode(garbage, complete, 100'000).size() <= 100'000);
        }
    }

    /// Line ends that no match can cover cheaply, so that what a changed last byte costs is never text.
    void Line_Ends_Behind_A_Text_Guard_It()
    {
        const QByteArray guard("\r\n\n\n\r\r\r\n\r\n\n\r\n\r\r\n\n\n\n\r\r\r\r\n");
        int damaged = 0;
        for (int round = 0; round < 600; ++round) {
            const QByteArray plain = Random_Rtf(m_random, round % 5);
            const QByteArray password = Random_Bytes(m_random, m_random.bounded(1, 20), 32, 95);
            const QByteArray stored = With_Tail(Lzma_Encode(plain + guard), password);
            bool complete = false;
            const QByteArray read = Lzma_Decode(stored, complete);
            QVERIFY2(read.startsWith(plain), qPrintable(QString::number(round)));
            damaged += read != plain + guard;
            if (round < 20) { // a file's way is the same
                Files::Write_Bytes(At("stored"), stored);
                QCOMPARE(Run("d", "stored", "read"), 0);
                QCOMPARE(Files::Read_Bytes(At("read")), read);
            }
        }
        QVERIFY2(damaged > 50, "the trap that this test is about must be met");
    }

    void A_Freed_Last_Byte_May_Be_Any()
    {
        for (int round = 0; round < 300; ++round) {
            const QByteArray plain = round < 5 ? QByteArray(round, 'a') : Random_Rtf(m_random, round % 5);
            QByteArray stream = Lzma_Encode(plain);
            Lzma_Free_Last_Byte(stream);
            for (int last = 0; last < 256; last += round % 10 ? 51 : 1) {
                stream.back() = static_cast<char>(last);
                QCOMPARE(Whole(stream + "07{}{}"), plain);
            }
        }
        QByteArray carried = Stream_With_Header(93, 1 << 23, 9, QByteArray("\0\x12\xFF\xFF\x80", 5));
        Lzma_Free_Last_Byte(carried);
        QCOMPARE(carried.last(5), QByteArray("\0\x13\0\0\0", 5));
    }
};

QTEST_GUILESS_MAIN(Test_Zelqorfun)
#include "test_zelqorfun.moc"
