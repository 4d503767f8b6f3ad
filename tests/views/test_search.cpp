// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/process_state.h"
#include "core/settings.h"
#include "platform/database/connection_pool.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "support/test_program.h"
#include "tree/folder_ids.h"
#include "views/find_tree.h"
#include "views/list_columns.h"
#include "views/search.h"
#include "views/search_hit.h"
#include "views/search_run.h"

#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTest>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{
QStringList All_Fields()
{
    QStringList fields;
    for (const Search_Field &field : Search_Fields())
        fields << QLatin1String(field.column);
    return fields;
}

/// Pieces of which the texts are made, so that every key occurs, alone and beside its near misses.
const QStringList Pieces = {
    u"知"_s,         u"识"_s,     u"知识"_s,       u"识知"_s,   u"管理"_s,     u"Knowledge"_s, u"KNOWLEDGE"_s,
    u"know"_s,       u"Émile"_s,  u"émile"_s,      u"Emile"_s,  u"Привет"_s,   u"привет"_s,    u"ПРИВЕТ"_s,
    u"ＡＢＣ"_s,     u"ａｂｃ"_s, u"abc"_s,        u"100%"_s,   u"100"_s,      u"a_b"_s,       u"axb"_s,
    u"[x]"_s,        u"x"_s,      u"\"quoted\""_s, u"quoted"_s, u"one\ntwo"_s, u"one two"_s,   u"one\r\ntwo"_s,
    u"Qt和SQLite"_s, u"ß"_s,      u"ẞ"_s,          u"Straße"_s, u"STRASSE"_s,  u"İstanbul"_s,  u"istanbul"_s,
    u"ıı"_s,         u"𝒳"_s,      u"😀"_s,          u"#1#"_s,    u"?*!"_s,      u"K"_s,         u"k"_s,
    u";--"_s,        u"%1"_s,     u"\\"_s,         u"Σσς"_s,
};

/// The rule itself: one character after the other, lower case beside lower case. Letters whose small form is plain
/// Latin only by compatibility (the Kelvin sign, the dotted I) stay themselves.
bool Contains(const QString &text, const QString &key)
{
    const auto fold = [](const QString &s) {
        QList<uint> points;
        for (const uint c : s.toUcs4()) {
            const uint lower = QChar::toLower(c);
            points << (c >= 0x80 && lower < 0x80 ? c : lower);
        }
        return points;
    };
    const QList<uint> hay = fold(text);
    const QList<uint> needle = fold(key);
    for (qsizetype at = 0; at + needle.size() <= hay.size(); ++at) {
        if (std::equal(needle.begin(), needle.end(), hay.begin() + at))
            return true;
    }
    return false;
}

QString Random_Text(QRandomGenerator &random)
{
    QString text;
    for (quint32 i = random.bounded(random.bounded(4) == 0 ? 18U : 5U); i > 0; --i)
        text += Pieces.at(random.bounded(static_cast<int>(Pieces.size()))) + (random.bounded(3) == 0 ? u" "_s : u""_s);
    return text;
}

using Document = QHash<QString, QString>; ///< column to text; a column that is missing is Null

QHash<QString, Document> Make_Documents(int count)
{
    QRandomGenerator random(20260301);
    QHash<QString, Document> made;
    Recordset rows;
    rows.LockType = Lock_Type::Optimistic;
    rows.Open(u"Select top 1 * From Code_Info"_s, App().Conn_Str);
    Database_Engine::One_Action(App().Conn_Str, [&] {
        for (int i = 0; i < count; ++i) {
            const QString id = u"{%1}"_s.arg(i, 4, 10, QLatin1Char('0'));
            rows.AddNew();
            rows[u"Code_ID"_s].Set(id);
            rows[u"Cate_ID"_s].Set(i % 10 == 0 ? Recycle_Bin_Id : u"00%1"_s.arg(1 + i % 3));
            for (const QString &field : All_Fields()) {
                if (field != u"Code_Title" && random.bounded(6) == 0)
                    continue; // Null
                made[id][field] = Random_Text(random);
                rows[field].Set(made[id][field]);
            }
            rows.Update();
        }
    });
    return made;
}
} // namespace

class Test_Search : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;

    static QStringList Found(const Search_Request &request)
    {
        QStringList ids;
        const Condition_Rows found = Rows_By_Condition(Search_Where(request), {}, 100000, List_Setting::Now());
        for (const List_Row &row : found.rows)
            ids << row.tag;
        return ids;
    }
    static std::shared_ptr<Search_Outcome> Outcome(QSignalSpy &finished)
    {
        const bool one = (finished.count() == 1 || finished.wait(20000)) && finished.count() == 1;
        return one ? finished.takeFirst().first().value<std::shared_ptr<Search_Outcome>>() : nullptr;
    }
    static std::shared_ptr<Search_Outcome> Run(Search_Run &run, const QString &where, const QString &key)
    {
        QSignalSpy spy(&run, &Search_Run::Finished);
        run.Start(where, key, Search_Limit);
        return Outcome(spy);
    }
    /// So many that a search takes a while and is shared by threads; one of them holds "xxxy".
    static void Make_Long_Documents()
    {
        Recordset rows;
        rows.LockType = Lock_Type::Optimistic;
        rows.Open(u"Select top 1 * From Code_Info"_s, App().Conn_Str);
        Database_Engine::One_Action(App().Conn_Str, [&] {
            for (int i = 0; i < 2500; ++i) {
                rows.AddNew();
                rows[u"Code_ID"_s].Set(u"{%1}"_s.arg(i, 4, 10, QLatin1Char('0')));
                rows[u"Cate_ID"_s].Set(u"001"_s);
                rows[u"Code_Title"_s].Set(u"title %1."_s.arg(i));
                rows[u"Code_Content"_s].Set(QString(20000, u'x') + (i == 7 ? u"y"_s : QString()));
                rows.Update();
            }
        });
    }

private slots:
    void init()
    {
        m_program.emplace();
        for (const char16_t *id : {u"001", u"002", u"003"})
            Add_Folder(QString::fromUtf16(id), u"folder"_s);
    }
    void cleanup()
    {
        QCOMPARE(m_program->prompts.Problems(), QStringList());
        QCOMPARE(m_program->Logged(), QStringList());
        m_program.reset();
    }

    void Conditions_Are_The_Systems_Own_data()
    {
        QTest::addColumn<bool>("everywhere");
        QTest::addColumn<QStringList>("folders");
        QTest::addColumn<QStringList>("fields");
        QTest::addColumn<QString>("where");
        QTest::addRow("root, no field") << true << QStringList(u"001"_s) << QStringList()
                                        << u" WHERE Cate_ID like '%'    and ( "
                                           "instr(1,lcase(Code_Title),lcase('its'),0)<>0 )  order by Code_ID "_s;
        QTest::addRow("two folders, two fields")
            << false << QStringList({u"001"_s, u"000"_s}) << QStringList({u"Code_Keys"_s, u"Code_Sum"_s})
            << u" WHERE ( Cate_ID = '001'    or Cate_ID = '000'   ) and ( instr(1,lcase(Code_Keys),lcase('its'),0)<>0 "
               " or ( instr(1,lcase(Code_Sum),lcase('its'),0)<>0 )) order by Code_ID "_s;
    }
    void Conditions_Are_The_Systems_Own()
    {
        QFETCH(bool, everywhere);
        QFETCH(QStringList, folders);
        QFETCH(QStringList, fields);
        QTEST(Search_Where({u"it's"_s, everywhere, folders, fields}), "where");
    }

    /// Every document that holds the key in a ticked field is found, and no other one.
    void Nothing_Is_Left_Out()
    {
        const QHash<QString, Document> documents = Make_Documents(400);
        QStringList keys = Pieces;
        keys << u"识管"_s << u"e"_s << u"É"_s << u"п"_s << u"Ｂ"_s << u"%"_s << u"_"_s << u"["_s << u"\""_s << u"\n"_s
             << u" "_s << u"е"_s << u"nowl"_s << u"和S"_s << u"ss"_s;
        QList<QStringList> fieldSets{All_Fields()};
        for (const QString &field : All_Fields())
            fieldSets << QStringList(field);
        for (const QString &key : keys) {
            for (const QStringList &fields : fieldSets) {
                QStringList expected;
                for (auto it = documents.begin(); it != documents.end(); ++it) {
                    if (std::any_of(fields.begin(), fields.end(), [&](const QString &field) {
                            return it->contains(field) && Contains(it->value(field), key);
                        }))
                        expected << it.key();
                }
                expected.sort();
                const QStringList found = Found({key, true, {}, fields});
                QVERIFY2(found == expected, qPrintable(u"%1 in %2: %3 found, %4 there"_s.arg(key, fields.join(u','))
                                                           .arg(found.size())
                                                           .arg(expected.size())));
            }
        }
    }

    void Folders_Bound_The_Search()
    {
        Add_Document(u"{1}"_s, u"001"_s, u"needle"_s);
        Add_Document(u"{2}"_s, u"001001"_s, u"needle"_s);
        Add_Document(u"{3}"_s, u"002"_s, u"needle"_s);
        Add_Document(u"{4}"_s, u"000"_s, u"needle"_s);
        Add_Document(u"{5}"_s, u"999"_s, u"needle"_s); // its folder is not there
        QCOMPARE(Found({u"Needle"_s, false, {u"001"_s}, {}}), QStringList(u"{1}"_s));
        QCOMPARE(Found({u"Needle"_s, false, {u"001"_s, u"002"_s}, {}}), QStringList({u"{1}"_s, u"{3}"_s}));
        QCOMPARE(Found({u"Needle"_s, true, {}, {}}).size(), 5);
        // As many folders as a large library has.
        QStringList many;
        for (int i = 0; i < 3000; ++i)
            many << u"%1"_s.arg(i, 6, 10, QLatin1Char('0'));
        QCOMPARE(Found({u"Needle"_s, false, many + QStringList(u"002"_s), {}}), QStringList({u"{2}"_s, u"{3}"_s}));
    }

    void Places_Stand_Below_Their_Document()
    {
        Add_Document(u"{1}"_s, u"001"_s, u"first"_s, u"Code_Content='Abc 一二三 aBC end',Code_Color='★☆☆☆☆'"_s);
        Add_Document(u"{2}"_s, u"001"_s, u"abc in the title only"_s);
        const Search_Request request{u"abc"_s, true, {}, All_Fields()};
        const auto fill = [&] {
            return Rows_By_Condition(Search_Where(request), request.key, Search_Limit, List_Setting::Now());
        };
        const Condition_Rows found = fill();
        QCOMPARE(found.info.labels, (std::array<qint64, 4>{2, 1, 100, 100}));
        QStringList lines;
        for (const List_Row &row : found.rows)
            lines << u"%1|%2|%3|%4"_s.arg(row.tag).arg(row.place).arg(row.texts[0], row.texts.value(3));
        QCOMPARE(lines, QStringList({u"{1}|-1|1|first"_s, u"{1}|0||    Abc 一二三 aBC end"_s, u"{1}|8||    aBC end"_s,
                                     u"{2}|-1|2|abc in the title only"_s}));
        QCOMPARE(found.rows[1].texts.mid(1, 2), found.rows[0].texts.mid(1, 2));
        Config().CH_Lsv_Detail = u"0"_s;
        QCOMPARE(fill().rows.size(), size_t(2));
    }

    void A_Folders_Box_Drives_Its_Subtree()
    {
        Tree_Model tree;
        const auto load = [&](const QStringList &ids) {
            Tree_Builder builder;
            builder.Add({}, {Root_Key, u"root"_s, {}, true, {}, -1, 0, {}});
            for (const QString &id : ids)
                builder.Add(Parent_Key(id), {Folder_Key(id), id + u"[3]"_s, {}, false, {}, -1, 0, {}});
            tree.Replace(builder.Take());
        };
        load({u"001"_s, u"002"_s, u"001001"_s, u"001002"_s, u"002001"_s});
        Find_Tree boxes;
        const auto shown = [&boxes] {
            QString states;
            for (int i = 0; i < boxes.Node_Count(); ++i)
                states += u" ~x"_s.at(boxes.Index_Of(i).data(Qt::CheckStateRole).toInt());
            return states;
        };
        boxes.Copy(tree);
        QVERIFY(boxes.Root_Ticked());
        boxes.CheckedIndex(boxes.Find(u"C_001"_s), false);
        QVERIFY(!boxes.Root_Ticked());
        QCOMPARE(boxes.Ticked_Ids(), QStringList({u"002"_s, u"002001"_s}));
        QCOMPARE(shown(), u"~ x  x"_s);
        boxes.CheckedIndex(boxes.Find(u"C_001001"_s), true);
        QCOMPARE(boxes.Ticked_Names(), QStringList({u"002"_s, u"001001"_s, u"002001"_s}));
        QCOMPARE(shown(), u"~~xx x"_s);
        // The last folder that was left out comes back: everything is searched again.
        boxes.CheckedIndex(boxes.Find(u"C_001"_s), true);
        QVERIFY(boxes.Root_Ticked());
        boxes.CheckedIndex(boxes.Find(u"C_001002"_s), false);
        QCOMPARE(shown(), u"~~xx x"_s);
        boxes.CheckedIndex(boxes.Find(u"C_001"_s), false);
        boxes.CheckedIndex(boxes.Find(u"C_001001"_s), true);
        // The folders changed: ticks stay, new ones have their parent's.
        load({u"001"_s, u"002"_s, u"001001"_s, u"002001"_s, u"001003"_s, u"002002"_s});
        boxes.Copy(tree);
        QCOMPARE(boxes.Ticked_Ids(), QStringList({u"002"_s, u"001001"_s, u"002001"_s, u"002002"_s}));
        boxes.CheckedIndex(0, true);
        QVERIFY(boxes.Root_Ticked());
        QCOMPARE(boxes.Ticked_Ids().size(), 6);
        boxes.CheckedIndex(0, false);
        QCOMPARE(boxes.Ticked_Ids(), QStringList());
    }

    void Hits_Are_Shown_With_Their_Words_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<int>("place");
        QTest::addColumn<QString>("shown");
        QTest::addRow("title") << u"B>&"_s << -1 << u"按标题: a <|b>&|amp;"_s;
        QTest::addRow("body") << u"ÉÉ"_s << -1
                              << u"按正文: …"_s + QString(57, u'-') + u" 😀|éé|"_s + QString(140, u'x') + u"…"_s;
        QTest::addRow("a place") << u"x"_s << 105
                                 << u"按正文: …"_s + QString(55, u'-') + u" 😀éé|x|"_s + QString(140, u'x') + u"…"_s;
        QTest::addRow("a place that is gone") << u"x"_s << 3 << u""_s;
        QTest::addRow("at both ends") << u"last WORDS"_s << -1 << u"按备注: |Last words|"_s;
        QTest::addRow("gone") << u"nowhere"_s << -1 << u""_s;
    }
    void Hits_Are_Shown_With_Their_Words()
    {
        QFETCH(QString, key);
        QFETCH(int, place);
        Add_Document(u"{1}"_s, u"001"_s, u"a <b>&amp;"_s,
                     u"Code_Memo='Last words',Code_Content='%1\n😀éé%2'"_s.arg(QString(100, u'-'), QString(200, u'x')));
        const auto hit = Hit_Of(u"{1}"_s, key, All_Fields(), place);
        QTEST(hit ? hit->field + u": "_s + hit->before + u'|' + hit->key + u'|' + hit->after : QString(), "shown");
        QVERIFY(!hit || !Hit_Tip(*hit).contains(u"<b>&amp;"_s));
    }

    void A_Search_Runs_Beside_Its_Window()
    {
        Make_Long_Documents();
        Search_Run run;
        QSignalSpy early(&run, &Search_Run::Found_Early);
        const QString where = Search_Where({u"xxxY"_s, true, {}, All_Fields()});
        const auto outcome = Run(run, where, u"xxxY"_s);
        QVERIFY(outcome && outcome->error.number == 0 && !outcome->stopped);
        QVERIFY(!early.isEmpty());
        // Told ahead, and right at the end: the row, its place and the numbers.
        for (const Condition_Rows &found :
             {*early.front().front().value<std::shared_ptr<Condition_Rows>>(), outcome->found}) {
            QCOMPARE(found.rows.size(), size_t(2));
            QCOMPARE(found.rows.front().tag, u"{0007}"_s);
            QCOMPARE(found.info.labels, (std::array<qint64, 4>{1, 1, Search_Limit, Search_Limit}));
            QCOMPARE(found.info.unlisted, 0);
        }
        QVERIFY(!run.Is_Running());
        const auto failed = Run(run, u" where No_Such_Column = 1"_s, {});
        QVERIFY(failed && failed->error.number != 0);
    }

    /// Writers find a way in whenever they come, and the search finds what it would have found alone.
    void A_Search_Gives_Way_To_Writers()
    {
        Make_Long_Documents();
        const QString where = Search_Where({u"xxxy"_s, true, {}, All_Fields()});
        for (int pause = 0; pause < 40; pause += 3) {
            Search_Run run;
            QSignalSpy finished(&run, &Search_Run::Finished);
            run.Start(where, u"xxxy"_s, Search_Limit);
            for (int writes = 0; writes < 3; ++writes) {
                QTest::qWait(pause);
                Sql_Run(u"update Cate_Info set Cate_Name='new' where Cate_ID='001'"_s); // throws when it finds none
            }
            const auto outcome = Outcome(finished);
            QVERIFY(outcome && outcome->error.number == 0 && !outcome->stopped);
            QCOMPARE(outcome->found.rows.front().tag, u"{0007}"_s);
        }
    }

    void A_Search_Waits_For_A_Lock()
    {
        Add_Document(u"{1}"_s, u"001"_s, u"needle"_s);
        const QString where = Search_Where({u"needle"_s, true, {}, All_Fields()});
        const auto writer = Connection_Pool::Get(Database_Engine::File_Of(App().Conn_Str));
        for (const bool stopped : {false, true}) {
            Search_Run run;
            QSignalSpy finished(&run, &Search_Run::Finished);
            writer->Execute("BEGIN EXCLUSIVE");
            run.Start(where, u"needle"_s, Search_Limit);
            QTest::qWait(100);
            if (stopped)
                run.Stop();
            else
                writer->Execute("COMMIT");
            const auto outcome = Outcome(finished);
            QVERIFY(outcome && outcome->error.number == 0);
            QCOMPARE(outcome->stopped, stopped);
            QCOMPARE(outcome->found.rows.size(), stopped ? size_t(0) : size_t(1));
        }
        writer->Execute("COMMIT");
    }

    /// One end is told, that of the last search, however far the ones before it were.
    void A_Search_Takes_The_Place_Of_Another_One()
    {
        Make_Long_Documents();
        const QString slow = Search_Where({u"xxxy"_s, true, {}, All_Fields()});
        const QString quick = Search_Where({u"title 3."_s, true, {}, {}});
        Search_Run run;
        QSignalSpy finished(&run, &Search_Run::Finished);
        QSignalSpy progressed(&run, &Search_Run::Progressed);
        for (const int pause : {0, 5, 30, 90, 400}) {
            for (int i = 0; i < 3; ++i) {
                run.Start(i % 2 == 0 ? slow : quick, {}, Search_Limit);
                QThread::msleep(static_cast<unsigned long>(pause)); // no event is taken: the end waits there, perhaps
            }
            run.Start(quick, {}, Search_Limit);
            const auto outcome = Outcome(finished);
            QVERIFY(outcome && !outcome->stopped);
            QCOMPARE(outcome->found.info.labels[Page_Info::Total], 1);
            run.Start(slow, {}, Search_Limit);
            QThread::msleep(static_cast<unsigned long>(pause));
            run.Forget();
            progressed.clear();
            QVERIFY(!run.Is_Running());
            QTest::qWait(1);
            QVERIFY(finished.isEmpty() && progressed.isEmpty());
        }
        run.Start(slow, {}, Search_Limit);
        run.Start(slow, {}, Search_Limit);
        run.Stop();
        const auto outcome = Outcome(finished);
        QVERIFY(outcome && outcome->stopped && outcome->found.rows.empty());
    }
};

QTEST_MAIN(Test_Search)
#include "test_search.moc"
