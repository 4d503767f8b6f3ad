// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/update_241.h"

#include "core/sql_text.h"
#include "core/yield.h"
#include "platform/database/recordset.h"
#include "storage/ladder_run.h"
#include "storage/update_241_sql.h"

using namespace Update_241_Sql;

namespace
{
constexpr qsizetype Group_Width = 3;

/// One group of a folder id: a number with its pad in front. No number and 0 mean that there is no group.
QString Padded(const QString &number, qsizetype width = Group_Width, QChar pad = u'0')
{
    const QString text = number.trimmed();
    return text.isEmpty() || text == QLatin1String("0") ? QString() : text.rightJustified(width, pad);
}

class Folder_Move
{
public:
    explicit Folder_Move(Ladder_Run &run) : m_run(run) {}

    void Move()
    {
        const bool created = Resume_Next([&] { m_run.Execute(Sql_Text(Create_Folders)); });
        Clear_Pending();
        // The table is there already when an earlier program was stopped in the middle; documents that have folders
        // too were moved long ago, and what the class tables hold then must not come back.
        if (!created && m_run.Opens(Folder_Of_Documents))
            return;
        Yield();
        Move_Classes();
        Yield();
        m_run.Execute(Sql_Text(Add_Folder_Of_Documents));
        Move_Documents();
        m_run.Execute(Sql_Text(Add_Note_Of_Home));
    }

private:
    template <class Body>
    void Walk(const QString &statement, Body body)
    {
        Recordset rows;
        rows.Open(statement, m_run.Conn_Str());
        for (; !rows.Eof(); rows.MoveNext())
            body(rows);
    }

    /// A folder that cannot be inserted, because its id is there, never keeps the others out.
    void Insert(const QString &statement)
    {
        Resume_Next([&] { m_run.Execute(statement); });
        Clear_Pending();
    }

    void Insert_Inner(const QString &id, Recordset &row, const QString &nameColumn)
    {
        Insert(Sql_Text(Insert_Inner_Class, id, Quoted(row[nameColumn].Text()),
                        row[QStringLiteral("Code_Num")].Number(), Quoted(row[QStringLiteral("Icon_Name")].Text())));
    }

    void Move_Classes()
    {
        Walk(Sql_Text(Classes), [&](Recordset &row) {
            const QString number = row[QStringLiteral("Class_ID")].Text();
            const QString id = Padded(number);
            Insert(Sql_Text(Insert_Class, id, Quoted(row[QStringLiteral("Class_Name")].Text()),
                            Quoted(row[QStringLiteral("Icon_Name")].Text())));
            Move_Small_Classes(number, id);
        });
    }

    void Move_Small_Classes(const QString &classNumber, const QString &classId)
    {
        Walk(Sql_Text(Small_Classes, classNumber.toLongLong()), [&](Recordset &row) {
            const QString number = row[QStringLiteral("SmallClass_ID")].Text();
            const QString id = classId + Padded(number);
            Insert_Inner(id, row, QStringLiteral("SmallClass_Name"));
            Move_Tiny_Classes(number, id);
        });
    }

    void Move_Tiny_Classes(const QString &smallNumber, const QString &smallId)
    {
        Walk(Sql_Text(Tiny_Classes, smallNumber.toLongLong()), [&](Recordset &row) {
            Insert_Inner(smallId + Padded(row[QStringLiteral("TinyClass_ID")].Text()), row,
                         QStringLiteral("TinyClass_Name"));
        });
    }

    void Move_Documents()
    {
        Recordset row;
        row.CursorType = Cursor_Type::Keyset;
        row.LockType = Lock_Type::Optimistic;
        row.Open(Sql_Text(Documents), m_run.Conn_Str());
        for (; !row.Eof(); row.MoveNext()) {
            row[QStringLiteral("Cate_ID")].Set(Padded(row[QStringLiteral("Class_ID")].Text()) +
                                               Padded(row[QStringLiteral("SmallClass_ID")].Text()) +
                                               Padded(row[QStringLiteral("TinyClass_ID")].Text()));
            const QVariant lastChange = row[QStringLiteral("Code_Update")].Value();
            if (!lastChange.isNull())
                row[QStringLiteral("Code_Create")].Set(lastChange);
            row.Update();
            m_run.Pause();
        }
    }

    Ladder_Run &m_run;
};
} // namespace

void Update_241_Start(Ladder_Run &run)
{
    run.Copy_To(Copies_Folder() + QStringLiteral("zelqor241.db"));
    run.Act([&] { Folder_Move(run).Move(); });
}
