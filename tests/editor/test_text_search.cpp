// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/text_search.h"

#include <QTest>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

using namespace Qt::StringLiterals;

class Test_Text_Search : public QObject
{
    Q_OBJECT

private slots:
    void Finds_data();
    void Finds();
    void Replaces_All_data();
    void Replaces_All();
    void Replacing_Keeps_Formats_And_Is_One_Step();
    void Replaces_Only_A_Selected_Match();
    void A_Bad_Expression_Finds_Nothing();
};

void Test_Text_Search::Finds_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("wanted");
    QTest::addColumn<bool>("matchCase");
    QTest::addColumn<bool>("wholeWord");
    QTest::addColumn<bool>("pattern");
    QTest::addColumn<QList<int>>("places");

    QTest::newRow("any case") << u"One oNE\none"_s << u"one"_s << false << false << false << QList{0, 4, 8};
    QTest::newRow("this case") << u"One oNE\none"_s << u"one"_s << true << false << false << QList{8};
    QTest::newRow("chinese") << u"知识，知识库"_s << u"知识"_s << false << false << false << QList{0, 3};
    QTest::newRow("whole word") << u"cat scatter cat_ cat."_s << u"cat"_s << false << true << false << QList{0, 17};
    QTest::newRow("whole word beside chinese") << u"用cat写"_s << u"cat"_s << false << true << false << QList{1};
    QTest::newRow("whole chinese word") << u"大知识库"_s << u"知识"_s << false << true << false << QList{1};
    QTest::newRow("whole sign") << u"a+b + c"_s << u"+"_s << false << true << false << QList{1, 4};
    QTest::newRow("plain text is no pattern") << u"a.c abc"_s << u"a.c"_s << false << false << false << QList{0};
    QTest::newRow("pattern") << u"a.c abc"_s << u"a.c"_s << false << false << true << QList{0, 4};
    QTest::newRow("anchored pattern") << u"ab\nab"_s << u"^a|b$"_s << false << false << true << QList{0, 1, 3, 4};
    QTest::newRow("empty matches") << u"abc"_s << u"x*"_s << false << false << true << QList<int>();
    QTest::newRow("none") << u"abc"_s << u""_s << false << false << false << QList<int>();
    QTest::newRow("umlaut, any case") << u"Äpfel"_s << u"äPFEL"_s << false << false << false << QList{0};
}

void Test_Text_Search::Finds()
{
    QFETCH(QString, text);
    QFETCH(QString, wanted);
    QFETCH(bool, matchCase);
    QFETCH(bool, wholeWord);
    QFETCH(bool, pattern);
    QTextDocument document;
    document.setPlainText(text);
    QList<int> places;
    for (const Text_Search::Match &match : Text_Search({wanted, matchCase, wholeWord, pattern}).All(document))
        places << match.position;
    QTEST(places, "places");
}

void Test_Text_Search::Replaces_All_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("wanted");
    QTest::addColumn<bool>("pattern");
    QTest::addColumn<QString>("with");
    QTest::addColumn<QString>("result");
    QTest::addColumn<int>("count");

    QTest::newRow("longer") << u"a b a\na"_s << u"a"_s << false << u"aa"_s << u"aa b aa\naa"_s << 3;
    QTest::newRow("shorter") << u"aba aba"_s << u"ab"_s << false << u""_s << u"a a"_s << 2;
    QTest::newRow("groups") << u"2026-03"_s << u"(\\d+)-(\\d+)"_s << true << u"\\2/\\1 \\0"_s << u"03/2026 2026-03"_s
                            << 1;
    QTest::newRow("backslash in plain text") << u"a"_s << u"a"_s << false << u"\\1"_s << u"\\1"_s << 1;
    QTest::newRow("new paragraph") << u"a;b"_s << u";"_s << true << u"\\n"_s << u"a\nb"_s << 1;
    QTest::newRow("overlapping") << u"aaa"_s << u"aa"_s << false << u"b"_s << u"ba"_s << 1;
}

void Test_Text_Search::Replaces_All()
{
    QFETCH(QString, text);
    QFETCH(QString, wanted);
    QFETCH(bool, pattern);
    QFETCH(QString, with);
    QTextDocument document;
    document.setPlainText(text);
    QTEST(Text_Search({wanted, true, false, pattern}).Replace_All(document, with), "count");
    QTEST(document.toPlainText(), "result");
}

void Test_Text_Search::Replacing_Keeps_Formats_And_Is_One_Step()
{
    QTextDocument document;
    QTextCursor cursor(&document);
    QTextCharFormat bold;
    bold.setFontWeight(QFont::Bold);
    cursor.insertText(u"plain "_s);
    cursor.insertText(u"fat"_s, bold);
    cursor.insertText(u" plain fat"_s, QTextCharFormat());
    Text_Search({u"fat"_s}).Replace_All(document, u"thick"_s);
    QCOMPARE(document.toPlainText(), u"plain thick plain thick"_s);
    cursor.setPosition(8);
    QCOMPARE(cursor.charFormat().fontWeight(), int(QFont::Bold));
    cursor.setPosition(23);
    QVERIFY(cursor.charFormat().fontWeight() != QFont::Bold);
    document.undo();
    QCOMPARE(document.toPlainText(), u"plain fat plain fat"_s);
}

void Test_Text_Search::Replaces_Only_A_Selected_Match()
{
    QTextDocument document;
    document.setPlainText(u"ab abc"_s);
    const Text_Search search({u"ab"_s});
    QTextCursor cursor(&document);
    cursor.setPosition(3);
    cursor.setPosition(6, QTextCursor::KeepAnchor);
    QVERIFY(!search.Replace_Selected(cursor, u"x"_s));
    cursor.setPosition(3);
    cursor.setPosition(5, QTextCursor::KeepAnchor);
    QVERIFY(search.Replace_Selected(cursor, u"x"_s));
    QCOMPARE(document.toPlainText(), u"ab xc"_s);
}

void Test_Text_Search::A_Bad_Expression_Finds_Nothing()
{
    QTextDocument document;
    document.setPlainText(u"a(b"_s);
    const Text_Search search({u"(b"_s, false, false, true});
    QVERIFY(!search.Is_Valid());
    QVERIFY(!search.Trouble().isEmpty());
    QVERIFY(search.All(document).isEmpty());
    QCOMPARE(search.Replace_All(document, u"x"_s), 0);
}

QTEST_MAIN(Test_Text_Search)
#include "test_text_search.moc"
