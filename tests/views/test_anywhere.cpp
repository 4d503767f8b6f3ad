// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/test_program.h"
#include "views/anywhere.h"
#include "views/pinyin.h"
#include "views/place_loading.h"

#include <QTest>

using namespace Qt::StringLiterals;

class Test_Anywhere : public QObject
{
    Q_OBJECT

    static QString Found(const Place_Index &index, const QString &typed, int limit = 9)
    {
        QStringList keys;
        for (const Place *place : index.Find(typed, limit))
            keys << place->key;
        return keys.join(u' ');
    }

private slots:
    void Initials_Follow_The_Pinyin()
    {
        const std::pair<char, const char16_t *> letters[] = {
            {'a', u"阿安奥"}, {'b', u"吧不"}, {'c', u"擦错成"}, {'d', u"大多"}, {'e', u"鹅二"},  {'f', u"发付"},
            {'g', u"该过"},   {'h', u"哈或"}, {'j', u"机军"},   {'k', u"卡阔"}, {'l', u"拉落"},  {'m', u"妈木"},
            {'n', u"那诺"},   {'o', u"哦欧"}, {'p', u"怕普"},   {'q', u"七群"}, {'r', u"然若"},  {'s', u"撒所"},
            {'t', u"他拖"},   {'w', u"挖物"}, {'x', u"西寻"},   {'y', u"压云"}, {'z', u"杂做中"}};
        for (const auto &[letter, characters] : letters) {
            for (const QChar character : QString::fromUtf16(characters))
                QCOMPARE(Pinyin_Initial(character), QChar(QLatin1Char(letter)));
        }
        QCOMPARE(Pinyin_Initials(u"知识管理 V2"_s), u"zsgl V2"_s);
        QCOMPARE(Pinyin_Initials(u"plain"_s), QString());
    }

    void Better_Places_Come_First_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("found");
        QTest::addRow("beginning, word, within, with gaps") << u"plan"_s << u"begin word within gaps"_s;
        QTest::addRow("words in any order") << u"2026  PLAN"_s << u"begin"_s;
        QTest::addRow("initials before gaps") << u"zsgl"_s << u"zh zh2"_s;
        QTest::addRow("characters") << u"管理"_s << u"zh zh2"_s;
        QTest::addRow("a word missing") << u"plan zzz"_s << u""_s;
        QTest::addRow("nothing typed: used last") << u" "_s << u"gaps begin"_s;
    }
    void Better_Places_Come_First()
    {
        Place_Index index;
        index.Add({Place_Kind::Document, u"gaps"_s, u"Public land"_s, {}, {}, 9});
        index.Add({Place_Kind::Document, u"within"_s, u"Explanations"_s, {}, {}, 0});
        index.Add({Place_Kind::Document, u"word"_s, u"Explain the plan"_s, {}, {}, 0});
        index.Add({Place_Kind::Document, u"begin"_s, u"Plan for 2026"_s, {}, {}, 5});
        index.Add({Place_Kind::Document, u"zh2"_s, u"关于知识的管理"_s, {}, {}, 0});
        index.Add({Place_Kind::Document, u"zh"_s, u"知识管理"_s, {}, {}, 0});
        QFETCH(QString, typed);
        QTEST(Found(index, typed), "found");
        QVERIFY(index.Find(typed, 1).size() <= 1);
    }

    void What_Does_Not_Apply_Comes_Last_Among_Equals()
    {
        Place_Index index;
        index.Add({Place_Kind::Command, u"pale"_s, u"Save"_s, {}, u"nothing to save"_s, 9});
        index.Add({Place_Kind::Command, u"now"_s, u"Save"_s, {}, {}, 0});
        QCOMPARE(Found(index, u"sv"_s), u"now pale"_s);
    }

    void The_Database_Is_Named_Without_Its_Secrets()
    {
        const Test_Program program;
        Add_Folder(u"001"_s, u"Work"_s);
        Add_Folder(u"001001"_s, u"Open"_s);
        Add_Folder(u"002"_s, u"Locked"_s, -1, u"x"_s);
        Add_Folder(u"002001"_s, u"Below"_s);
        for (const QString &folder : {u"001001"_s, u"002"_s, u"002001"_s, u"000"_s})
            Add_Document(u"{%1}"_s.arg(folder), folder, u"doc"_s);
        Sql_Run(u"insert into tab_tags(tags_Id,tags_Name,tags_Count) values (3,'tag',1)"_s);
        Sql_Run(u"insert into tab_tag(code_id,tag_name,tag_lineno) values ('{001001}','mark',7)"_s);
        Sql_Run(u"insert into tab_tag(code_id,tag_name,tag_lineno) values ('{002001}','mark',8)"_s);
        Add_Document(u"{read}"_s, u"001"_s, u"note"_s, u"Code_ReadNum=1"_s);
        Place_Index index;
        Load_Places(index);
        QCOMPARE(Found(index, {}), u"{read}"_s);
        QCOMPARE(Found(index, u"doc"_s), u"{001001}"_s);
        QCOMPARE(Found(index, u"op"_s), u"C_001001"_s);
        QCOMPARE(Found(index, u"mark"_s), u"{001001}/7"_s);
        QCOMPARE(Found(index, u"tag"_s), u"T_3"_s);
        Place_Index unlocked;
        Load_Places(unlocked, {u"002"_s});
        QCOMPARE(unlocked.Find(u"doc"_s, 9).size(), 3U);
        QCOMPARE(program.Logged(), QStringList());
    }
};

QTEST_MAIN(Test_Anywhere)
#include "test_anywhere.moc"
