// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "support/test_server.h"

#include <QStringList>
#include <QTemporaryDir>
#include <QTest>

/// A database of its own, in a file or on a server, with the tables that the statements of these tests speak of.
class Database_Fixture
{
public:
    enum class Kind { File, Server };
    /// Rows of a test's global data: each of its functions runs on both.
    static void Both_Kinds()
    {
        QTest::addColumn<bool>("server");
        QTest::addRow("file") << false;
        QTest::addRow("server") << true;
    }
    static Kind Kind_Now()
    {
        QFETCH_GLOBAL(bool, server);
        return server ? Kind::Server : Kind::File;
    }
    explicit Database_Fixture(Kind kind = Kind::File)
        : connection(kind == Kind::File ? Database_Engine::File_Connection_String(path())
                                        : Server_Connection(m_folder.filePath(QStringLiteral("odbc.udl"))))
    {
        if (kind == Kind::File)
            Database_Engine::Create_File(connection);
        Database_Engine::One_Action(connection, [this] { Create_Tables(); });
    }
    ~Database_Fixture() { Database_Engine::Let_Go(); }
    Database_Fixture(const Database_Fixture &) = delete;
    Database_Fixture &operator=(const Database_Fixture &) = delete;

    [[nodiscard]] QString path() const { return m_folder.filePath(QStringLiteral("data.db")); }
    void Run(const QString &statement) const { Run_Statement(statement, connection); }
    /// The rows as texts, "|" between fields and ";" between rows; "~" for Null.
    [[nodiscard]] QString Rows(const QString &statement) const
    {
        Recordset rows;
        rows.Open(statement, connection);
        QStringList all;
        for (; rows.Is_Open() && !rows.Eof(); rows.MoveNext()) {
            QStringList fields;
            for (int i = 0; i < rows.Field_Count(); ++i) {
                fields.append(rows[i].Is_Null() ? QStringLiteral("~") : rows[i].Text());
            }
            all.append(fields.join(u'|'));
        }
        return all.join(u';');
    }

private:
    /// One database of the server serves all fixtures of the program, one after the other.
    static QString Server_Connection(const QString &link)
    {
        static const QString text = Test_Server::The_One().New_Database();
        Test_Server::The_One().Empty(QStringLiteral("t1"));
        Test_Server::Write_Link(link, text);
        return QStringLiteral("File Name=") + link;
    }
    void Create_Tables() const
    {
        Run(QStringLiteral("CREATE TABLE Cate_Info (Cate_ID Text(250) PRIMARY KEY,Cate_Name Text(50),Cate_Memo "
                           "Text(200),Cate_pass Text(255),Code_Num Long DEFAULT 0,Order_Id Long DEFAULT 0,Cate_Exp "
                           "TEXT(1))"));
        Run(QStringLiteral(
            "CREATE TABLE Code_Info (Code_ID Text(38) PRIMARY KEY,Cate_ID Text(250),Class_ID Long DEFAULT 1 NOT NULL,"
            "Code_Title Text(255) NOT NULL,Code_Content memo,Code_Content_IO OLEObject NULL,Code_Date DateTime,"
            "Code_Update DateTime DEFAULT Now() NOT NULL,Code_ReadNum Long DEFAULT 0,[Code_ReadDate_Sta ] Text(1) "
            ",[Code_ReadDateNext ] DateTime   , Code_Tags Text(255))"));
        Run(QStringLiteral("CREATE TABLE tab_file (file_id AutoIncrement PRIMARY KEY,code_id Text(38),order_id Long,"
                           "file_name Text(50),file_cont OLEOBJECT,file_type Long,file_date DateTime)"));
        Run(QStringLiteral("CREATE TABLE tab_VirCate (VirCate_id AutoIncrement PRIMARY KEY,Cate_ID Text(250),Code_id "
                           "Text(38))"));
        Run(QStringLiteral("CREATE TABLE tab_Gene (Gene_Index AutoIncrement PRIMARY KEY,Gene_Id Long,Gene_Name "
                           "Text(50),Gene_Num single)"));
    }

    QTemporaryDir m_folder;

public:
    QString connection;
};
