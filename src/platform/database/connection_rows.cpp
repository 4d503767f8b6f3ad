// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/connection.h"
#include "platform/database/engine_error.h"
#include "platform/database/text_fold.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{
Row Read_Back(Connection &connection, const QString &table, const std::vector<Output> &outputs, qint64 rowid)
{
    QStringList columns;
    for (const Output &output : outputs) {
        columns.append(output.column.isEmpty() ? u"NULL"_s : Quoted_Name(output.column));
    }
    Row row;
    connection.Read_Row(
        (u"SELECT "_s + columns.join(u", "_s) + u" FROM "_s + Quoted_Name(table) + u" WHERE rowid = ?1"_s).toUtf8(),
        {rowid}, row);
    return row;
}
} // namespace

qint64 Connection::Write_Row(const Row_Change &change, const std::vector<Output> &outputs, Row &fresh)
{
    Before_Write(change.table);
    const Catalog_Table *table = Tables().Find(change.table);
    const Catalog_Column *key = table == nullptr ? nullptr : table->Single_Key();
    const auto set = std::find_if(change.values.begin(), change.values.end(), [&](const auto &value) {
        const auto *text = std::get_if<QString>(&value.second);
        return key != nullptr && outputs[static_cast<size_t>(value.first)].column == key->name && text != nullptr &&
               !Text_Fold::Is_Ascii(*text);
    });
    qint64 row = change.row;
    if (set == change.values.end()) {
        row = Store_Row(change, outputs);
    } else {
        Whole([&] {
            row = Store_Row(change, outputs);
            Check_Key(change.table, key->name, std::get<QString>(set->second));
        });
    }
    fresh = Read_Back(*this, change.table, outputs, row);
    return row;
}

qint64 Connection::Store_Row(const Row_Change &change, const std::vector<Output> &outputs)
{
    QStringList names;
    QStringList marks;
    QStringList changes;
    std::vector<Cell> values;
    for (const auto &[column, value] : change.values) {
        const QString name = Quoted_Name(outputs[static_cast<size_t>(column)].column);
        names.append(name);
        marks.append(u"?"_s);
        changes.append(name + u" = ?"_s);
        values.push_back(value);
    }
    if (change.row < 0) {
        const QString head = u"INSERT INTO "_s + Quoted_Name(change.table);
        Change((names.isEmpty() ? head + u" DEFAULT VALUES"_s
                                : head + u" ("_s + names.join(u", "_s) + u") VALUES ("_s + marks.join(u", "_s) + u')')
                   .toUtf8(),
               values);
        return Last_Rowid();
    }
    if (!names.isEmpty()) {
        values.emplace_back(change.row);
        const QString sql =
            u"UPDATE "_s + Quoted_Name(change.table) + u" SET "_s + changes.join(u", "_s) + u" WHERE rowid = ?"_s;
        if (Change(sql.toUtf8(), values) == 0) {
            throw Engine_Error::Row_Is_Gone();
        }
    }
    return change.row;
}

void Connection::Remove_Row(const QString &table, qint64 row)
{
    Before_Write(table);
    Change((u"DELETE FROM "_s + Quoted_Name(table) + u" WHERE rowid = ?1"_s).toUtf8(), {row});
}
