// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/error_log.h"
#include "core/trouble.h"
#include "support/test_program.h"
#include "views/list_engine.h"
#include "views/tag_care.h"
#include "views/tagged_documents.h"
#include "views/tags.h"

#include <QTest>
#include <optional>

using namespace Qt::StringLiterals;

class Test_Tags : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;
    List_Model m_list;
    Check_Model m_boxes;

    static QString Field(const QString &id)
    {
        return Sql_Cell(u"select Code_Tags from Code_Info where Code_ID='%1'"_s.arg(id));
    }
    static QString Counter(int tag) { return Sql_Cell(u"select tags_Count from tab_tags where tags_Id=%1"_s.arg(tag)); }
    /// Adds documents {0}, {1} ... with these fields.
    static void Add_Documents(const QStringList &fields)
    {
        for (int i = 0; i < fields.size(); ++i)
            Add_Document(u"{%1}"_s.arg(i), u"001"_s, u"t"_s, u"Code_Tags='%1'"_s.arg(fields[i]));
    }
    static void Add_Tags(const QStringList &names)
    {
        for (int i = 0; i < names.size(); ++i)
            QCOMPARE(Add_Tag(names[i]), i + 1);
    }
    [[nodiscard]] QStringList Listed() const
    {
        QStringList rows;
        for (int i = 0; i < m_list.Row_Count(); ++i)
            rows << m_list.Row(i).tag + u' ' + m_list.Row(i).texts.join(u' ');
        return rows;
    }
    [[nodiscard]] QString Boxes() const
    {
        QString boxes;
        for (int i = 0; i < m_boxes.Count(); ++i)
            boxes += m_boxes.Item(i).key + u"-/x"_s.at(m_boxes.Item(i).state) + u' ';
        return boxes.trimmed();
    }

private slots:
    void init()
    {
        m_program.emplace();
        Add_Folder(u"001"_s, u"Work"_s);
    }
    void cleanup()
    {
        QCOMPARE(m_program->Logged(), QStringList());
        m_program.reset();
    }

    void A_Name_Is_One_Tag()
    {
        Add_Tags({u"beta"_s, u" Work "_s});
        QCOMPARE(Add_Tag(u"work"_s), 2);
        QCOMPARE(Get_Tag_Id(u"WORK "_s), 2);
        QCOMPARE(Get_Tag_Id(u"none"_s), 0);
        QCOMPARE(Add_Tag(u"  "_s), 0);
        QVERIFY(!Rename_Tag(1, u" Work"_s));
        QVERIFY(!Last_Trouble().isEmpty());
        QVERIFY(Rename_Tag(1, u" Alpha"_s));
        QCOMPARE(Add_Tag_Words(u" gamma  alpha "_s, m_list), QList<int>({3, 1}));
        QCOMPARE(Listed(), QStringList({u"T_3 gamma 0"_s, u"T_1 alpha 0"_s}));
        Load_Tags(m_list);
        QCOMPARE(Listed(), QStringList({u"T_1 alpha 0"_s, u"T_3 gamma 0"_s, u"T_2 work 0"_s}));
    }

    void A_Document_Gets_And_Loses_Tags()
    {
        Add_Tags({u"b"_s, u"a"_s, u"c"_s});
        Add_Documents({u""_s, u"{1}{12}"_s});
        QVERIFY(Add_Doc_Tag(2, u"{0}"_s));
        QVERIFY(Add_Doc_Tag(1, u"{0}"_s));
        Sql_Run(u"update tab_tags set tags_Count=7"_s);
        QVERIFY(Add_Doc_Tag(1, u"{0}"_s)); // it has it: only the counter is put right
        QCOMPARE(Field(u"{0}"_s), u"{2}{1}"_s);
        QCOMPARE(Counter(1), u"2"_s);
        Load_Doc_Tags(m_boxes, u"{0}"_s, false);
        QCOMPARE(Boxes(), u"T_2x T_1x"_s);
        Load_Doc_Tags(m_boxes, u"{0}"_s, true);
        QCOMPARE(Boxes(), u"T_2x T_1x T_3-"_s);
        QVERIFY(Remove_Doc_Tag(2, u"{0}"_s));
        QCOMPARE(Field(u"{0}"_s), u"{1}"_s);
        QCOMPARE(Counter(2), u"0"_s);
        QVERIFY(Delete_Tag(1));
        QCOMPARE(Field(u"{0}"_s) + Field(u"{1}"_s), u"{12}"_s);
        QVERIFY(!Delete_Tag(1));
        QVERIFY(!Add_Doc_Tag(1, u"{0}"_s)); // deleted while its document is open
        QVERIFY(!Last_Trouble().isEmpty());
        QCOMPARE(Field(u"{0}"_s), QString());
        QCOMPARE(Add_Tag(u"b"_s), 4); // an id never comes again
    }

    void The_List_Of_A_Tag_Is_Wide()
    {
        Add_Documents({u"{5}"_s, u"{15}"_s, u"{51}"_s, u"{6}"_s, u"{3}{5}"_s});
        m_list.Set_Columns({});
        ShowCodeInfoToList_Ex_Key(Tag_Where(5), m_list, {}, 1, 100);
        QStringList ids;
        for (int i = 0; i < m_list.Row_Count(); ++i)
            ids << m_list.Row(i).tag;
        ids.sort();
        QCOMPARE(ids, QStringList({u"{0}"_s, u"{1}"_s, u"{2}"_s, u"{4}"_s}));
    }

    void A_Damaged_Field_Shows_Its_Numbers()
    {
        QCOMPARE(Tag_Ids(u"{3}{x}12}"_s), QList<int>({3, 12}));
        QCOMPARE(Tags_In(u"{3}{x}12}{3}{99999999999}"_s), QList<int>({3}));
    }

    void What_Cannot_Be_Stored_Is_Told_And_Changes_Nothing()
    {
        Add_Tags({u"a"_s});
        const QString full = u"{9}"_s.repeated(84) + u"{8"_s; // 254 characters
        Add_Documents({full, u""_s});
        QCOMPARE(Add_Tag(u"o'clock"_s), 0);
        QVERIFY(Last_Trouble().contains(u'\''));
        QCOMPARE(Add_Tag(QString(50, u'x')), 2);
        QCOMPARE(Add_Tag(QString(51, u'x')), 0);
        QVERIFY(!Last_Trouble().isEmpty());
        QCOMPARE(Add_Tag_Words(u"o'clock a"_s, m_list), QList<int>({1})); // what failed is told behind what did not
        QVERIFY(Last_Trouble().contains(u'\''));
        QVERIFY(!Rename_Tag(1, u"o'clock"_s));
        QVERIFY(!Rename_Tag(1, QString(51, u'y')));
        Sql_Run(u"update tab_tags set tags_Count=7"_s);
        QVERIFY(!Add_Doc_Tag(1, u"{0}"_s));
        QVERIFY(Last_Trouble().contains(u"255"));
        QCOMPARE(Counter(1), u"7"_s);
        const Tagging tagging = Change_Tags({u"{0}"_s, u"{1}"_s, u"{none}"_s}, {1}, {});
        QCOMPARE(tagging.full, QStringList(u"{0}"_s));
        QCOMPARE(tagging.gone, QStringList(u"{none}"_s));
        QCOMPARE(Field(u"{0}"_s), full);
        QCOMPARE(Field(u"{1}"_s), u"{1}"_s);
        QCOMPARE(Counter(1), u"1"_s);
        QCOMPARE(m_program->Logged().size(), 6);
        m_program.emplace();
    }

    void A_Selection_Is_Tagged_At_Once()
    {
        Add_Tags({u"all"_s, u"some"_s, u"none"_s});
        Add_Documents({u"{1}{2}"_s, u"{1}"_s, u"{1}{9}"_s});
        const QStringList documents = {u"{0}"_s, u"{1}"_s, u"{2}"_s};
        Load_Selection_Tags(m_boxes, documents);
        QCOMPARE(Boxes(), u"T_1x T_3- T_2/"_s);
        m_boxes.Set_State(m_boxes.Find(u"T_1"_s), Qt::Unchecked);
        m_boxes.Set_State(m_boxes.Find(u"T_3"_s), Qt::Checked);
        const Tagging tagging = Apply_Selection_Tags(m_boxes, documents);
        QVERIFY(tagging.done);
        QCOMPARE(tagging.changed, 3);
        QCOMPARE(Field(u"{0}"_s) + u' ' + Field(u"{1}"_s) + u' ' + Field(u"{2}"_s), u"{2}{3} {3} {9}{3}"_s);
        QCOMPARE(Counter(1) + Counter(3), u"03"_s);
    }

    void Drops_Make_And_Give_Tags()
    {
        Add_Tags({u"a"_s});
        Add_Documents({u""_s, u""_s, u""_s});
        QCOMPARE(Drop_On_Tags(m_list, u"LIST{0}/{1}/"_s, u"T_1"_s, {}), 1);
        QCOMPARE(Drop_On_Tags(m_list, u"LIST{2}/"_s, {}, {}), 0);
        QCOMPARE(Counter(1), u"2"_s);
        m_list.Clear();
        QCOMPARE(Drop_On_Tags(m_list, u" New words "_s, u"T_1"_s, u"{2}"_s), 2);
        QCOMPARE(Drop_On_Tags(m_list, u"new words"_s, {}, {}), 2);
        QCOMPARE(Listed(), QStringList(u"T_2 new words 0"_s));
        QCOMPARE(Field(u"{2}"_s), u"{2}"_s);
    }

    void Many_Tags_Are_Looked_After()
    {
        Add_Tags({u"note"_s, u"notes"_s, u"year 2025"_s, u"year 2026"_s, u"java"_s, u"lava"_s, u"go"_s, u"do"_s,
                  u"工作日记"_s});
        Add_Documents({u"{1}{2}{5}"_s, u"{9}{2}"_s, u"{7}"_s, u"{2}{1}{"_s});
        QCOMPARE(Refresh_Tag_Counts(), 5);
        Show_Tags(m_list, Tag_Filter::Alike, Tag_Order::Name);
        QCOMPARE(Listed(), QStringList({u"T_5 java 1"_s, u"T_6 lava 0"_s, u"T_1 note 2"_s, u"T_2 notes 3"_s}));
        Show_Tags(m_list, Tag_Filter::Once, Tag_Order::Name);
        QCOMPARE(Listed(), QStringList({u"T_9 工作日记 1"_s, u"T_7 go 1"_s, u"T_5 java 1"_s}));
        Show_Tags(m_list, Tag_Filter::Unused, Tag_Order::Name);
        QCOMPARE(m_list.Row_Count(), 4);
        Show_Tags(m_list, Tag_Filter::All, Tag_Order::Count);
        QCOMPARE(Listed().mid(0, 3), QStringList({u"T_2 notes 3"_s, u"T_1 note 2"_s, u"T_9 工作日记 1"_s}));

        QCOMPARE(Documents_Of_Tags({1, 5, 6}), 2);
        QVERIFY(Merge_Tags({2, 9, 1}, 1));
        QCOMPARE(Field(u"{0}"_s) + u' ' + Field(u"{1}"_s) + u' ' + Field(u"{3}"_s), u"{1}{5} {1} {1}{"_s);
        QCOMPARE(Counter(1), u"3"_s);
        QCOMPARE(Counter(2) + Counter(9), QString());
        QVERIFY(!Merge_Tags({5}, 2));
        QCOMPARE(Field(u"{0}"_s), u"{1}{5}"_s);
    }
};

QTEST_MAIN(Test_Tags)
#include "test_tags.moc"
