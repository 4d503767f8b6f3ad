// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/process_state.h"
#include "core/sql_text.h"
#include "platform/database/recordset.h"
#include "support/test_program.h"

#include <QDirIterator>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace
{
const QString Harmless = u"2020-01-01"_s;
const QString Secret = u"S3CRET"_s;

const QStringList Hostile = {
    u"'"_s,
    u"x' or '1'='1"_s,
    u"' or ''='"_s,
    u"' union select user_pass,user_pass,user_pass from user_pass where ''='"_s,
    u"' union select * from user_pass where user_pass like '%"_s,
    u"','"_s,
    u"x'--"_s,
    u"x' /*"_s,
    u"*/ or 1=1"_s,
    u"x'; delete from Code_Info; select '"_s,
    u"x;--"_s,
    u") or (1=1"_s,
    u"') or ('1'='1"_s,
    u"[' or ']'='"_s,
    u"]"_s,
    u"#"_s,
    u"2020-01-01# or 1=1 or #2020-01-01"_s,
    u"\" or \"\"=\""_s,
    u"\\' or 1=1--"_s,
    u"x'' or ''1''=''1"_s,
    u"x%00' or '1'='1"_s.replace(u"%00"_s, QString(QChar(0))),
    QString(200000, u'x'),
    QString(50001, u'\''),
};

/// Every statement that the program's headers hold: what stands between quotes, adjoining pieces as one.
QStringList All_Statements()
{
    QStringList statements;
    QDirIterator files(QStringLiteral(ZELQOR_SOURCES), {u"*_sql.h"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        file.open(QIODevice::ReadOnly);
        QString source = QString::fromUtf8(file.readAll()).remove(QRegularExpression(u"//[^\\n]*"_s));
        static const QRegularExpression macro(u"#define (\\w+)((?:[^\\n]*\\\\\\n)*[^\\n]*)"_s);
        const QRegularExpressionMatch defined = macro.match(source);
        if (defined.hasMatch())
            source.replace(defined.captured(1), defined.captured(2).remove(u"\\\n"_s));
        static const QRegularExpression literals(u"(?:u\"(?:[^\"\\\\]|\\\\.)*\"\\s*)+"_s);
        static const QRegularExpression seams(u"\"\\s*u\"|^u\"|\"\\s*$"_s);
        for (auto found = literals.globalMatch(source); found.hasNext();)
            statements << found.next().captured().remove(seams).replace(u"\\\""_s, u"\""_s);
    }
    return statements;
}

using Arguments = std::vector<Sql_Argument>;

/// Harmless values of the kinds that the places of a statement take; empty when it takes none.
Arguments Harmless_Values(const QString &statement)
{
    const std::array<Sql_Argument, 4> kinds = {Harmless, 1, Sql_Name{u"Code_ID"_s}, Sql_Part()};
    Arguments values;
    const auto fits = [&] {
        try {
            Sql_Join(statement, values);
            return true;
        } catch (const Run_Time_Error &) {
            return false;
        }
    };
    for (int combination = 0; combination < 4 * 4 * 4 * 4; ++combination) {
        values.clear();
        for (int i = 1, rest = combination; statement.contains(u'%' + QString::number(i)); ++i, rest /= 4)
            values.push_back(kinds[static_cast<size_t>(rest % 4)]);
        if (values.empty() || fits())
            return values;
    }
    return {};
}

QStringList Everything()
{
    QStringList rows;
    for (const char *table : {"Cate_Info", "Code_Info", "tab_file", "tab_tag", "tab_VirCate", "Mess_Conf", "User_pass",
                              "User_List", "tab_log"}) {
        for (const QStringList &row : Sql_Rows(u"select * from "_s + QLatin1String(table)))
            rows << QLatin1String(table) + row.join(u'|');
    }
    return rows;
}

/// Runs what was joined, if it is a statement; whatever it shows is not the secret.
void Run_Joined(const QString &statement)
{
    Recordset rows;
    try {
        rows.Open(statement, App().Conn_Str);
    } catch (const Run_Time_Error &) {
        return; // a part of a statement, a text longer than its column
    }
    for (; rows.Is_Open() && !rows.Eof(); rows.MoveNext()) {
        for (int i = 0; i < rows.Field_Count(); ++i)
            QVERIFY2(rows[i].Text() != Secret, qPrintable(statement));
    }
}
} // namespace

class Test_Sql_Text : public QObject
{
    Q_OBJECT

private slots:
    /// No value, in whatever place of whatever statement, is ever more than a value.
    void Values_Stay_In_Their_Places()
    {
        const Test_Program program;
        Sql_Run(u"delete from Mess_Conf"_s); // of which each statement may change the one row that it names
        Sql_Run(u"insert into user_pass(user_name,user_pass) values ('someone','%1')"_s.arg(Secret));
        Add_Folder(u"001"_s, u"Folder"_s);
        for (const QString &id : {u"one"_s, u"two"_s})
            Add_Document(id, u"001"_s, u"Title"_s);
        const QStringList before = Everything();
        int places = 0;
        for (const QString &statement : All_Statements()) {
            const Arguments harmless = Harmless_Values(statement);
            QVERIFY2(!harmless.empty() || !statement.contains(u"%1"_s), qPrintable(statement));
            for (size_t place = 0; place < harmless.size(); ++place, ++places) {
                for (const QString &value : Hostile)
                    Try(statement, harmless, place, value);
            }
            const QStringList after = Everything();
            for (const QString &row : before)
                QVERIFY2(after.contains(row), qPrintable(statement + u" lost "_s + row));
        }
        QVERIFY2(places > 90, qPrintable(QString::number(places)));
    }

private:
    static void Try(const QString &statement, Arguments values, size_t place, const QString &value)
    {
        const bool free = values[place].kind != Sql_Argument::Kind::Text;
        values[place] = value;
        QString joined;
        try {
            joined = Sql_Join(statement, values).Text();
        } catch (const Run_Time_Error &error) {
            QCOMPARE(error.number, Error_Number::Db_Syntax);
            return;
        }
        QVERIFY2(!free && !QString(value).remove(u"''"_s).contains(u'\''), qPrintable(joined.left(300)));
        Run_Joined(joined);
    }
};

QTEST_GUILESS_MAIN(Test_Sql_Text)
#include "test_sql_text.moc"
