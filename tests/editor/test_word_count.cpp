// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/word_count.h"

#include <QTest>

using namespace Qt::StringLiterals;

class Test_Word_Count : public QObject
{
    Q_OBJECT

private slots:
    void Counts_data();
    void Counts();
};

void Test_Word_Count::Counts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("words");
    QTest::addColumn<int>("ideographs");
    QTest::addColumn<int>("characters");
    QTest::addColumn<int>("blanks");
    QTest::addColumn<int>("paragraphs");

    QTest::newRow("nothing") << u""_s << 0 << 0 << 0 << 0 << 0;
    QTest::newRow("english") << u"Two words, 3.5 don't-stop"_s << 4 << 0 << 22 << 3 << 1;
    QTest::newRow("chinese") << u"知识管理。"_s << 4 << 4 << 5 << 0 << 1;
    QTest::newRow("mixed") << u"用Qt 6写程序"_s << 6 << 4 << 7 << 1 << 1;
    QTest::newRow("kana") << u"カタカナ"_s << 4 << 4 << 4 << 0 << 1;
    QTest::newRow("korean") << u"한국어 문서"_s << 2 << 0 << 5 << 1 << 1;
    QTest::newRow("beyond the basic plane") << u"𠀀𠀁"_s << 2 << 2 << 2 << 0 << 1;
    QTest::newRow("paragraphs") << u"a\n\n b\u2029c"_s << 3 << 0 << 3 << 1 << 3;
    QTest::newRow("picture") << u"a\uFFFCb"_s << 1 << 0 << 2 << 0 << 1;
    QTest::newRow("signs only") << u"-- ... !"_s << 0 << 0 << 6 << 2 << 1;
}

void Test_Word_Count::Counts()
{
    QFETCH(QString, text);
    const Word_Count count = Count_Words(text);
    QTEST(count.words, "words");
    QTEST(count.ideographs, "ideographs");
    QTEST(count.characters, "characters");
    QTEST(count.blanks, "blanks");
    QTEST(count.paragraphs, "paragraphs");
}

QTEST_APPLESS_MAIN(Test_Word_Count)
#include "test_word_count.moc"
