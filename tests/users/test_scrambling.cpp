// SPDX-License-Identifier: GPL-3.0-or-later
#include "users/scrambling.h"
#include "users/scrambling_tables.h"

#include <QRandomGenerator>
#include <QSet>
#include <QTest>

namespace
{
QString Random_Text(QRandomGenerator &random, int length, int first, int count)
{
    QString text;
    for (int i = 0; i < length; ++i)
        text += QChar(first + random.bounded(count));
    return text;
}
} // namespace

class Test_Scrambling : public QObject
{
    Q_OBJECT
    QRandomGenerator m_random{95};

private slots:
    void Every_Table_Is_A_Permutation()
    {
        for (const std::string_view table : Scrambling_Tables::All) {
            QCOMPARE(table.size(), size_t(Scrambling_Tables::Length));
            QCOMPARE(QSet<char>(table.begin(), table.end()).size(), Scrambling_Tables::Length);
            QVERIFY(std::all_of(table.begin(), table.end(), [](char c) { return c >= ' ' && c <= '~'; }));
        }
    }

    void Decode_Undoes_Encode_data()
    {
        QTest::addColumn<int>("length");
        QTest::addColumn<int>("level");
        for (const int length : {0, 1, 2, 3, 94, 95, 96, 97, 191, 1000})
            for (const int level : {2, 4, 6, 20})
                QTest::addRow("%d characters, level %d", length, level) << length << level;
    }
    void Decode_Undoes_Encode()
    {
        QFETCH(int, length);
        QFETCH(int, level);
        for (int round = 0; round < 50; ++round) {
            QString text = Random_Text(m_random, length, 32, 95);
            for (int i = 0; i < length / 20; ++i)
                text[m_random.bounded(length)] = u"\r\n\""[m_random.bounded(3)];
            const QString scrambled = Encode(text, level);
            QCOMPARE(Decode(scrambled, level), text);
            QCOMPARE(scrambled.size(), length);
            for (int i = 0; i < length; ++i) {
                const bool stays = QStringLiteral("\r\n\"").contains(text.at(i));
                QVERIFY(stays ? scrambled.at(i) == text.at(i) : scrambled.at(i) >= u' ' && scrambled.at(i) <= u'~');
            }
        }
    }

    void What_Is_Stored_Never_Changes()
    {
        QCOMPARE(Encode("admin"), QString("t>U'q"));
        QCOMPARE(Encode(QString(8, 'a')), QString("tjRL!\\DC"));
        QCOMPARE(Encode(QString("The \"quick\" fox\r\n").repeated(6)), QString("0qQA\"ji$ca\"LMU'\r\n"
                                                                               "1j<Q\"x%w[#\"PXIu\r\n"
                                                                               "@xz<\"Gk;Z=\"]ifN\r\n"
                                                                               "&GWz\"_tL/r\"{%83\r\n"
                                                                               "9_yW\"e`P*U\"OkB(\r\n"
                                                                               "!eRy\"K>]hI\"^tlT\r\n"));
        QCOMPARE(Encode("admin", 6), QString("$,<_o"));
        QCOMPARE(Scramble_Text("abc"), QString("B+R"));
    }

    void Special_Characters_Are_Refused_And_Keep_The_Length_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("special");
        QTest::newRow("empty") << "" << false;
        QTest::newRow("ASCII") << " ~\t\"\x7f" << false;
        QTest::newRow("Chinese") << "密码" << true;
        QTest::newRow("Latin") << "passé" << true;
        QTest::newRow("beyond 16 bits") << "a😀" << true;
    }
    void Special_Characters_Are_Refused_And_Keep_The_Length()
    {
        QFETCH(QString, text);
        QTEST(Has_Special_Characters(text), "special");
        QCOMPARE(Encode(text).size(), text.size());
        QCOMPARE(Decode(text).size(), text.size());
    }

    void Unscramble_Undoes_Scramble()
    {
        QCOMPARE(Unscramble_Text(Scramble_Text("  a b\t ")), QString("a b\t"));
        QCOMPARE(Scramble_Text("ai"), QString("B ")); // the blank is part of it
        QCOMPARE(Unscramble_Text("B "), QString("ai"));
        for (int round = 0; round < 500; ++round) {
            const QString text = u'x' + Random_Text(m_random, m_random.bounded(60), 0, round % 2 ? 128 : 65536) + u'x';
            const QString scrambled = Scramble_Text(text);
            QCOMPARE(Unscramble_Text(scrambled), text);
            QCOMPARE(scrambled.size(), text.size());
            for (int i = 0; i < text.size(); ++i) {
                const int number = scrambled.at(i).unicode() ^ text.at(i).unicode();
                QVERIFY(number >= 30 && number <= 100);
            }
        }
        QCOMPARE(Scramble_Text("   "), QString());
    }
};

QTEST_APPLESS_MAIN(Test_Scrambling)
#include "test_scrambling.moc"
