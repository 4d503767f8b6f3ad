// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/odbc_text.h"
#include "platform/database/recordset.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class Test_Data_Source : public QObject
{
    Q_OBJECT

private slots:
    void Connection_String_data()
    {
        QTest::addColumn<QString>("udl");
        QTest::addColumn<QString>("odbc");
        const QString head = u"[oledb]\r\n; Everything after this line is an OLE DB initstring\r\n"_s;
        QTest::addRow("dsn") << head + u"Provider=MSDASQL.1;Persist Security Info=False;Data Source=zelqor;User ID=me;"
                                       "Password=\"a;b\";Initial Catalog=docs\r\n"_s
                             << u"DSN=zelqor;UID=me;PWD={a;b};DATABASE=docs;"_s;
        QTest::addRow("extended") << head + u"Provider=MSDASQL.1;Extended Properties=\"Driver=X;Server=s\""_s
                                  << u"Driver=X;Server=s;"_s;
        QTest::addRow("empty") << QString() << QString();
    }
    void Connection_String()
    {
        QFETCH(QString, udl);
        QTEST(Odbc_Text::Connection_String(udl), "odbc");
    }

    /// What a link may not ask for is refused before anything of it is loaded; here it would be a library that exists.
    void Refused_data()
    {
        QTest::addColumn<QString>("link");
        const QString library = u"libsqlite3odbc.so"_s;
        QTest::addRow("no such driver") << u"Driver=No such driver"_s;
        QTest::addRow("a library") << u"Driver="_s + library;
        QTest::addRow("in braces") << u"DRIVER = {%1};Database=x"_s.arg(library);
        QTest::addRow("behind a driver") << u"Driver=SQLite3;Driver="_s + library;
        QTest::addRow("behind a quote") << u"Server='a;Driver=%1;b='"_s.arg(library);
        QTest::addRow("behind a brace") << u"Server={a}b;Driver="_s + library;
        QTest::addRow("within braces") << u"Driver=SQLite3;PWD={a;LoadExt=/tmp/x.so}"_s;
        QTest::addRow("file of a source") << u"FileDSN=/tmp/x.dsn"_s;
        QTest::addRow("source by its path") << u"DSN=/tmp/x"_s;
        const QString postgres = u"Driver=PostgreSQL Unicode;pqopt={%1}"_s;
        QTest::addRow("engine of a key") << postgres.arg(u"sslkey=engine:x:y"_s);
        QTest::addRow("file of services") << postgres.arg(u"sslmode=require service=x"_s);
        QTest::addRow("behind a quote in it") << postgres.arg(u"host='a passfile=/tmp/x'"_s);
        QTest::addRow("extension") << u"Driver=SQLite3;LoadExt=/tmp/x.so"_s;
    }
    void Refused()
    {
        QFETCH(QString, link);
        Link(link);
        QCOMPARE(Failure_Of(u"select 1"_s), Failure::Missing_Component);
    }

    void Statements()
    {
        Link(u"Driver=SQLite3;Database="_s + m_folder.filePath(u"source.db"_s));
        if (Failure_Of(u"create table t (id integer, name varchar(20), n double)"_s) == Failure::Missing_Component) {
            QSKIP("no ODBC driver for SQLite");
        }
        Run_Statement(u"insert into t values (1, 'ünï 中文', 1.5)"_s, m_connection);
        Run_Statement(u"insert into t values (2, null, null)"_s, m_connection);
        Recordset rows;
        rows.CursorType = Cursor_Type::Static;
        rows.Open(u"select id, name, n from t order by id"_s, m_connection);
        QCOMPARE(rows.RecordCount(), 2);
        QCOMPARE(rows[u"NAME"_s].Text(), u"ünï 中文"_s);
        QCOMPARE(rows[u"id"_s].Number(), 1);
        QCOMPARE(rows[u"n"_s].Value().toDouble(), 1.5);
        rows.MoveNext();
        QVERIFY(rows[u"name"_s].Is_Null());
        QCOMPARE(Failure_Of(u"select * from absent"_s), Failure::Missing_Table);
    }

private:
    /// Writes the data link as the platform does, in UTF-16 with a mark.
    void Link(const QString &driver)
    {
        const QString name = m_folder.filePath(u"odbc.udl"_s);
        QFile file(name);
        QVERIFY(file.open(QIODevice::WriteOnly));
        const QString text =
            QChar(0xFEFF) + u"[oledb]\r\nProvider=MSDASQL.1;Extended Properties=\""_s + driver + u"\"\r\n"_s;
        file.write(reinterpret_cast<const char *>(text.utf16()), text.size() * 2);
        m_connection = u"File Name="_s + name;
    }
    [[nodiscard]] Failure Failure_Of(const QString &statement) const
    {
        try {
            Run_Statement(statement, m_connection);
        } catch (const Run_Time_Error &error) {
            return error.failure;
        }
        return Failure::Other;
    }

    QTemporaryDir m_folder;
    QString m_connection;
};

QTEST_GUILESS_MAIN(Test_Data_Source)
#include "test_data_source.moc"
