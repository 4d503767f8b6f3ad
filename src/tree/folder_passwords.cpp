// SPDX-License-Identifier: GPL-3.0-or-later
#include "tree/folder_passwords.h"

#include "core/error_log.h"
#include "core/process_state.h"
#include "core/sql_text.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "tree/folder_ids.h"
#include "tree/folder_sql.h"
#include "users/scrambling.h"

namespace
{
/// Opens one folder's lock for writing.
void Open_Locks(Recordset &locks, const char16_t *statement, const QString &id)
{
    locks.CursorType = Cursor_Type::Keyset;
    locks.LockType = Lock_Type::Optimistic;
    locks.Open(Sql_Text(statement, id), App().Conn_Str);
}

/// A password without the blanks around it, as it is when it has gone to the stored form and back.
QString Trimmed(const QString &password)
{
    return Unscramble_Text(Scramble_Text(password));
}
} // namespace

Password_Change Set_Folder_Password(const QString &id, const QString &oldPassword, const QString &newPassword,
                                    bool wholeSubtree)
{
    const QString field = QStringLiteral("Cate_pass");
    Recordset own;
    own.Open(Sql_Text(Sql::Folder_Lock, id), App().Conn_Str);
    if (own.Eof())
        return Password_Change::No_Folder;
    if (Unscramble_Text(own[field].Text()) != Trimmed(oldPassword))
        return Password_Change::Wrong_Old;
    own.Close();
    const QString scrambled = Scramble_Text(newPassword);
    if (!scrambled.isEmpty() && scrambled.trimmed().isEmpty())
        return Password_Change::Not_Storable;
    Database_Engine::One_Action(App().Conn_Str, [&] {
        Recordset locks;
        Open_Locks(locks, wholeSubtree && Is_Folder_Id(id) ? Sql::Subtree_Locks : Sql::Folder_Lock, id);
        for (; !locks.Eof(); locks.MoveNext()) {
            locks[field].Set(scrambled);
            locks.Update();
        }
    });
    return Password_Change::Done;
}

QSet<QString> Locked_Folders(const QString &connection)
{
    return Trap(QStringLiteral("Mod_DataBase\\Locked_Folders"), [&] {
        QSet<QString> ids;
        Recordset rows;
        rows.Open(Sql_Text(Sql::Locked_Folders), connection);
        for (; !rows.Eof(); rows.MoveNext()) {
            if (!rows[1].Text().trimmed().isEmpty())
                ids.insert(rows[0].Text());
        }
        return ids;
    });
}
