// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/test_program.h"
#include "views/column_setup.h"
#include "views/line_colors.h"
#include "views/list_columns.h"
#include "views/list_engine.h"
#include "views/list_style.h"

#include "core/settings.h"

#include <QTest>

using namespace Qt::StringLiterals;

class Test_List_Setup : public QObject
{
    Q_OBJECT

private slots:
    void Widths_Are_Read_As_Far_As_They_Go_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QList<int>>("first"); ///< of the first columns
        const QList<int> initial = {46 * 15, 80 * 15, 80 * 15};
        QTest::addRow("none") << u""_s << initial;
        QTest::addRow("too short") << u"300,0,"_s << QList<int>{300, 0, 80 * 15};
        QTest::addRow("too long") << u"300,0,450,"_s + u"7,"_s.repeated(40) << QList<int>{300, 0, 450};
        QTest::addRow("junk") << u"abc,-5,450"_s << QList<int>{46 * 15, 80 * 15, 450};
        QTest::addRow("huge") << u"999999999,99999999999,450"_s << QList<int>{60000, 80 * 15, 450};
        QTest::addRow("nothing shown") << u"0,"_s.repeated(18) << initial;
    }
    void Widths_Are_Read_As_Far_As_They_Go()
    {
        QFETCH(QString, text);
        QFETCH(QList<int>, first);
        const std::vector<int> widths = Widths_From_Text(text);
        QCOMPARE(widths.size(), Document_Columns().size());
        QCOMPARE(QList<int>(widths.begin(), widths.begin() + first.size()), first);
        QCOMPARE(Widths_From_Text(Numbers_To_Text(widths)), widths);
    }

    void Each_Column_Has_One_Place_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QList<int>>("first");
        QTest::addRow("none") << u""_s << QList<int>{0, 1, 2, 3};
        QTest::addRow("some") << u"3,0,"_s << QList<int>{3, 0, 1, 2};
        QTest::addRow("junk, double, beyond") << u"3,3,x,99,-1,0"_s << QList<int>{3, 0, 1, 2};
    }
    void Each_Column_Has_One_Place()
    {
        QFETCH(QString, text);
        QFETCH(QList<int>, first);
        std::vector<int> order = Order_From_Text(text);
        QCOMPARE(QList<int>(order.begin(), order.begin() + first.size()), first);
        std::sort(order.begin(), order.end());
        QCOMPARE(order, Order_From_Text({}));
    }

    void Styles_Have_Three_Parts_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("style"); ///< as it would be stored, "" for the default one
        QTest::addRow("whole") << u"255|16711680|True"_s << u"255|16711680|True"_s;
        QTest::addRow("bold as a number") << u"0|0|-1"_s << u"0|0|True"_s;
        QTest::addRow("more parts") << u"1|2|false|9"_s << u"1|2|False"_s;
        QTest::addRow("one part") << u"255"_s << u""_s;
        QTest::addRow("title in italics") << u"255|16711680|False|True"_s << u"255|16711680|False|True"_s;
        QTest::addRow("two parts") << u"255|255"_s << u""_s;
        QTest::addRow("none") << u""_s << u""_s;
    }
    void Styles_Have_Three_Parts()
    {
        QFETCH(QString, stored);
        const std::optional<Line_Style> style = Style_From_Text(stored);
        QTEST(style ? Style_To_Text(*style) : QString(), "style");
        const std::optional<Line_Style> junk = Style_From_Text(u"red|99999999|maybe"_s);
        QVERIFY(junk && !junk->sub_color.isValid() && !junk->item_color.isValid() && !junk->bold);
    }

    void Colours_Are_Stored_For_All_Selected()
    {
        const Test_Program program;
        Add_Document(u"{1}"_s, u"001"_s, u"a"_s);
        Add_Document(u"{2}"_s, u"001"_s, u"b"_s);
        Store_Line_Color({u"{1}"_s, u"{2}"_s}, u"1|2|True"_s);
        QCOMPARE(Line_Color_Of(u"{2}"_s), u"1|2|True"_s);
        Store_Line_Color({u"{2}"_s}, {});
        QCOMPARE(Line_Color_Of(u"{1}"_s) + u'-' + Line_Color_Of(u"{2}"_s), u"1|2|True-"_s);
    }

    void Any_Page_Size_Lists_data()
    {
        QTest::addColumn<int>("size");
        QTest::addColumn<QList<qint64>>("labels");
        QTest::addRow("one") << 1 << QList<qint64>{3, 3, 1, 1};
        QTest::addRow("largest") << 32767 << QList<qint64>{3, 1, 32767, 3};
        QTest::addRow("none") << 0 << QList<qint64>{3, 3, 1, 1};
        QTest::addRow("negative") << -7 << QList<qint64>{3, 3, 1, 1};
    }
    void Any_Page_Size_Lists()
    {
        QFETCH(int, size);
        QFETCH(QList<qint64>, labels);
        const Test_Program program;
        Add_Folder(u"001"_s, u"f"_s);
        for (const char16_t *id : {u"{1}", u"{2}", u"{3}"})
            Add_Document(QString::fromUtf16(id), u"001"_s, QString::fromUtf16(id));
        Config().MAX_RECORD = static_cast<qint16>(size);
        List_Model list;
        list.Set_Columns(Captioned_Columns());
        QString password;
        // The root's statement is a plain one, a folder's a union; pages behind the first begin where the one before
        // ended.
        for (const QString &folder : {u""_s, u"001"_s}) {
            QStringList titles;
            Page_Info info;
            for (int page = 1; page <= labels[Page_Info::Pages] + 1; ++page) {
                const Page_Info filled = ShowCodeInfoToList_Ex(folder, list, false, page, {}, password);
                if (page == 1)
                    info = filled;
                for (int row = 0; row < list.Row_Count(); ++row)
                    titles << list.Row(row).texts.value(3);
            }
            QCOMPARE(QList<qint64>(info.labels.begin(), info.labels.end()), labels);
            titles.sort();
            QCOMPARE(titles, QStringList({u"{1}"_s, u"{2}"_s, u"{3}"_s}));
        }
    }

    void Chinese_Sorts_By_Its_Sound()
    {
        List_Model list;
        list.Set_Columns({{u"t"_s, u"t"_s}});
        std::vector<List_Row> rows;
        const auto add = [&](const QString &text, qint64 place = -1) {
            List_Row row;
            row.texts = {text};
            row.tag = text;
            row.place = place;
            rows.push_back(row);
        };
        for (const char16_t *text : {u"重庆", u"张", u"北京", u"啊", u"apple", u"上海", u"10", u"Banana"})
            add(QString::fromUtf16(text));
        add(u"line of Banana"_s, 3);
        list.Replace(rows);
        const QPersistentModelIndex kept = list.index(2, 0);
        list.Sort_By(0, true);
        QStringList sorted;
        for (int i = 0; i < list.Row_Count(); ++i)
            sorted << list.Row(i).texts[0];
        QCOMPARE(sorted.indexOf(u"line of Banana"_s), sorted.indexOf(u"Banana"_s) + 1);
        sorted.removeOne(u"line of Banana"_s);
        QStringList chinese;
        for (const QString &text : sorted) {
            if (text.at(0).unicode() > 0x2E80)
                chinese << text;
        }
        QCOMPARE(chinese, QStringList({u"啊"_s, u"北京"_s, u"重庆"_s, u"上海"_s, u"张"_s}));
        QVERIFY(sorted.indexOf(u"10"_s) < sorted.indexOf(u"apple"_s));
        QVERIFY(sorted.indexOf(u"apple"_s) < sorted.indexOf(u"Banana"_s));
        QCOMPARE(kept.data().toString(), u"北京"_s);
    }
};

QTEST_MAIN(Test_List_Setup)
#include "test_list_setup.moc"
