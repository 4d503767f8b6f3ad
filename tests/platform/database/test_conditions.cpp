// SPDX-License-Identifier: GPL-3.0-or-later
#include "database_fixture.h"

#include <QCollator>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>
#include <memory>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{
using Truth = std::optional<bool>; // no value: unknown, as a comparison with Null is

struct Data_Row {
    std::optional<QString> text;
    std::optional<QString> memo;
    std::optional<QString> other;
    std::optional<int> number;
    std::optional<QString> date; // stored form
};

/// A condition as text and as the naive rule that it means.
struct Condition {
    QString sql;
    std::function<Truth(const Data_Row &)> rule;
};

bool Compared(int order, const QString &sign)
{
    return sign == u"="_s    ? order == 0
           : sign == u"<>"_s ? order != 0
           : sign == u"<"_s  ? order < 0
           : sign == u"<="_s ? order <= 0
           : sign == u">"_s  ? order > 0
                             : order >= 0;
}

/// The like operator by way of a regular expression.
bool Matches(const QString &pattern, const QString &text)
{
    QString regex;
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        const QChar c = pattern[i];
        const qsizetype close = c == u'[' ? pattern.indexOf(u']', i) : -1;
        if (close > 0) {
            regex += pattern.mid(i, close - i + 1).replace(u'!', u'^');
            i = close;
        } else {
            regex += c == u'%' ? u".*"_s : c == u'_' ? u"."_s : QRegularExpression::escape(QString(c));
        }
    }
    const auto options = QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption;
    return QRegularExpression(QRegularExpression::anchoredPattern(regex), options).match(text).hasMatch();
}
} // namespace

/// Random conditions over random rows give what a plain reading of the rules gives.
class Test_Conditions : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Database_Fixture::Both_Kinds(); }

    void Random_Conditions()
    {
        constexpr int rowCount = 80;
        constexpr int conditionCount = 1500;
        const Database_Fixture db(Database_Fixture::Kind_Now());
        std::vector<Data_Row> data;
        Database_Engine::One_Action(db.connection, [&] {
            db.Run(u"create table r (i Long PRIMARY KEY, t Text(50), m memo, u Text(50), n Long, d DateTime)"_s);
            for (int i = 0; i < rowCount; ++i) {
                const Data_Row row = New_Row();
                data.push_back(row);
                const auto quoted = [](const std::optional<QString> &v) {
                    return v ? u'\'' + *v + u'\'' : u"null"_s;
                };
                db.Run(u"insert into r values (%1,%2,%3,%4,%5,%6)"_s.arg(
                    QString::number(i), quoted(row.text), quoted(row.memo), quoted(row.other),
                    row.number ? QString::number(*row.number) : u"null"_s, quoted(row.date)));
            }
        });
        for (int round = 0; round < conditionCount; ++round) {
            const Condition condition = Random_Condition(2);
            QStringList expected;
            for (size_t i = 0; i < data.size(); ++i) {
                if (condition.rule(data[i]).value_or(false)) {
                    expected.append(QString::number(i));
                }
            }
            const QString rows = db.Rows(u"select i from r where "_s + condition.sql + u" order by i"_s);
            QVERIFY2(rows == expected.join(u';'),
                     qPrintable(condition.sql + u" gives "_s + rows + u" instead of "_s + expected.join(u';')));
            QSet<QString> texts;
            for (const QString &row : std::as_const(expected)) {
                const auto &text = data[row.toUInt()].text;
                texts.insert(text ? u'.' + text->toLower() : QString());
            }
            for (const QString &told : {u"distinct t from r where %1"_s, u"t from r where %1 group by t"_s,
                                        u"t from r where %1 union select t from r where 1=0"_s}) {
                const QString query = u"select count(*) from (select "_s + told.arg(condition.sql) + u')';
                QVERIFY2(db.Rows(query) == QString::number(texts.size()), qPrintable(query));
            }
            std::stable_sort(expected.begin(), expected.end(), [&](const QString &a, const QString &b) {
                return data[a.toUInt()].number < data[b.toUInt()].number;
            });
            QCOMPARE(db.Rows(u"select top 7 i from r where %1 order by n, i"_s.arg(condition.sql)),
                     expected.mid(0, 7).join(u';'));
        }
    }

    /// Thousands of rows are sorted by several threads, and by the same rule as few: the dictionary, then the letters,
    /// then the place in the table; Null first.
    void Many_Texts_In_Order()
    {
        constexpr int rowCount = 12000;
        Database_Engine::Keep_In_Order({u"t"_s}); // in the table with a text key, so that both ways are gone
        const Database_Fixture db(Database_Fixture::Kind_Now());
        std::vector<std::optional<QString>> data;
        std::vector<size_t> order;
        Database_Engine::One_Action(db.connection, [&] {
            db.Run(u"create table r (i Long, t Text(50))"_s);
            for (size_t i = 0; i < rowCount; ++i) {
                const QString word = Word() + Word() + Word();
                order.push_back(i);
                data.push_back(Below(50) == 0 ? std::optional<QString>() : word);
                db.Run(u"insert into r values (%1,%2)"_s.arg(QString::number(i),
                                                             data[i] ? u'\'' + word + u'\'' : u"null"_s));
            }
        });
        QCollator dictionary(QLocale(QLocale::Chinese, QLocale::China));
        dictionary.setCaseSensitivity(Qt::CaseInsensitive);
        std::stable_sort(order.begin(), order.end(), [&](size_t a, size_t b) {
            if (!data[a] || !data[b]) {
                return data[a] < data[b];
            }
            const int byDictionary = dictionary.compare(*data[a], *data[b]);
            return (byDictionary != 0 ? byDictionary : QString::compare(data[a]->toLower(), data[b]->toLower())) < 0;
        });
        QStringList expected;
        for (const size_t row : order) {
            expected.append(QString::number(row));
        }
        db.Run(u"create table s (k Text(9) PRIMARY KEY, i Long, t Text(50))"_s);
        db.Run(u"insert into s(k,i,t) select cstr(i),i,t from r"_s);
        QStringList backwards = expected;
        std::reverse(backwards.begin(), backwards.end());
        for (const QString &table : {u"r"_s, u"s"_s}) {
            QCOMPARE(db.Rows(u"select top 20000 i from %1 order by t"_s.arg(table)), expected.join(u';'));
            QCOMPARE(db.Rows(u"select top 500 i from %1 order by t desc"_s.arg(table)),
                     backwards.mid(0, 500).join(u';'));
        }
    }

private:
    int Below(int limit) { return m_random.bounded(limit); }
    QString One_Of(const QStringList &choices) { return choices[Below(static_cast<int>(choices.size()))]; }
    QString Word()
    {
        static const QStringList pieces{u"a"_s, u"A"_s, u"b"_s,  u"É"_s, u"é"_s, u"中"_s, u"文"_s,
                                        u"0"_s, u"1"_s, u"12"_s, u" "_s, u"-"_s, u"ß"_s,  u"K"_s};
        QString word;
        for (int i = Below(4); i > 0; --i) {
            word += One_Of(pieces);
        }
        return word;
    }
    QString Date() { return One_Of({u"2023-05-01"_s, u"2023-05-01 10:00:00"_s, u"2023-06-02"_s, u"2024-01-05"_s}); }
    Data_Row New_Row()
    {
        Data_Row row;
        const auto given = [this] {
            return Below(6) > 0;
        };
        if (given()) {
            row.text = Word();
        }
        if (given()) {
            row.memo = Word();
        }
        if (given()) {
            row.other = Word();
        }
        if (given()) {
            row.number = Below(5) - 1;
        }
        if (given()) {
            row.date = Date();
        }
        return row;
    }

    Condition Random_Condition(int depth)
    {
        if (depth > 0 && Below(3) > 0) {
            const Condition a = Random_Condition(depth - 1);
            const Condition b = Random_Condition(depth - 1);
            if (Below(4) == 0) {
                return {u"not ("_s + a.sql + u')', [a](const Data_Row &row) {
                            const Truth x = a.rule(row);
                            return x ? Truth(!*x) : x;
                        }};
            }
            const bool both = Below(2) == 0;
            return {u'(' + a.sql + (both ? u" and "_s : u" or "_s) + b.sql + u')', [a, b, both](const Data_Row &row) {
                        const Truth x = a.rule(row);
                        const Truth y = b.rule(row);
                        if ((x && *x != both) || (y && *y != both)) {
                            return Truth(!both);
                        }
                        return x && y ? Truth(both) : Truth();
                    }};
        }
        return Simple();
    }

    Condition Simple()
    {
        const bool memo = Below(2) == 0;
        const auto value = [memo](const Data_Row &row) {
            return memo ? row.memo : row.text;
        };
        const QString column = memo ? u"m"_s : u"t"_s;
        const QString sign = One_Of({u"="_s, u"<>"_s, u"<"_s, u"<="_s, u">"_s, u">="_s});
        switch (Below(11)) {
        case 0: {
            const QString word = Word();
            return {column + u' ' + sign + u" '"_s + word + u'\'', [=](const Data_Row &row) {
                        const auto v = value(row);
                        return v ? Truth(Compared(QString::compare(v->toLower(), word.toLower()), sign)) : Truth();
                    }};
        }
        case 1: {
            const QString pattern = One_Of({u"%"_s, u"1%"_s, u"12%"_s, u"0[0-9]%"_s, u"%中%"_s, u"_a%"_s, u"[!a]%"_s,
                                            u"%é"_s, u"1_"_s, u""_s, u"%1%2%"_s, u"[a-c]%"_s});
            const bool negated = Below(2) == 0;
            const QString quoted = One_Of({u"'%1'"_s, u"('%1')"_s, u"(('%1'))"_s, u"+'%1'"_s}).arg(pattern);
            return {column + (negated ? u" not like "_s : u" like "_s) + quoted, [=](const Data_Row &row) {
                        const auto v = value(row);
                        return v ? Truth(Matches(pattern, *v) != negated) : Truth();
                    }};
        }
        case 2: {
            const int number = Below(5) - 1;
            return {u"n "_s + sign + u' ' + QString::number(number), [=](const Data_Row &row) {
                        return row.number ? Truth(Compared(*row.number - number, sign)) : Truth();
                    }};
        }
        case 3: {
            const QString date = Date();
            const QString quote = One_Of({u"#"_s, u"'"_s});
            return {u"d "_s + sign + u' ' + quote + date + quote, [=](const Data_Row &row) {
                        return row.date ? Truth(Compared(QString::compare(*row.date, date), sign)) : Truth();
                    }};
        }
        case 4: {
            const QString pattern = One_Of({u"2023%"_s, u"2023-05%"_s, u"2023-05-01%"_s, u"%-0_-%"_s, u"20%"_s});
            return {u"d like '"_s + pattern + u'\'', [=](const Data_Row &row) {
                        return row.date ? Truth(Matches(pattern, *row.date)) : Truth();
                    }};
        }
        case 5: {
            const QString word = Word();
            return {u"instr(1,lcase("_s + column + u"),lcase('"_s + word + u"'),0)<>0"_s, [=](const Data_Row &row) {
                        const auto v = value(row);
                        return v ? Truth(v->toLower().contains(word.toLower())) : Truth();
                    }};
        }
        case 6:
        case 7:
            return {column + u' ' + sign + u" u"_s, [=](const Data_Row &row) {
                        const auto v = value(row);
                        return v && row.other
                                   ? Truth(Compared(QString::compare(v->toLower(), row.other->toLower()), sign))
                                   : Truth();
                    }};
        case 8: {
            const QStringList words{Word(), Word(), Word()};
            return {column + u" in ('"_s + words.join(u"','"_s) + u"')"_s, [=](const Data_Row &row) {
                        const auto v = value(row);
                        return v ? Truth(words.contains(*v, Qt::CaseInsensitive)) : Truth();
                    }};
        }
        case 9: {
            const QString low = Word();
            const QString high = Word();
            return {column + u" between '"_s + low + u"' and '"_s + high + u'\'', [=](const Data_Row &row) {
                        const auto v = value(row);
                        return v ? Truth(low.toLower() <= v->toLower() && v->toLower() <= high.toLower()) : Truth();
                    }};
        }
        default:
            return {column + u" is null"_s, [=](const Data_Row &row) {
                        return Truth(!value(row));
                    }};
        }
    }

    QRandomGenerator m_random{20261122};
};

QTEST_GUILESS_MAIN(Test_Conditions)
#include "test_conditions.moc"
