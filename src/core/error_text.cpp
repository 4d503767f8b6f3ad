// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/error_text.h"

#include "core/language_pack.h"
#include "platform/database/server.h"

namespace
{
struct Failure_Text {
    Failure failure;
    const char16_t *key;
};

constexpr Failure_Text Failure_Texts[] = {
    {Failure::File_Not_Found, u"_File_Not_Found"},
    {Failure::Path_Access, u"_Path_Access"},
    {Failure::Link, u"_Link"},
    {Failure::Disk_Full, u"_Disk_Full"},
    {Failure::Read_Only, u"_Read_Only"},
    {Failure::Locked, u"_Locked"},
    {Failure::Foreign_Journal, u"_Foreign_Journal"},
    {Failure::Not_A_Database, u"_Not_A_Database"},
    {Failure::Damaged, u"_Damaged"},
    {Failure::Missing_Table, u"_Missing_Table"},
    {Failure::Syntax, u"_Syntax"},
    {Failure::Too_Long, u"_Too_Long"},
    {Failure::Duplicate, u"_Duplicate"},
    {Failure::Missing_Component, u"_Missing_Component"},
    {Failure::Too_Large, u"_Too_Large"},
    {Failure::No_Output, u"_No_Output"},
    {Failure::Out_Of_Memory, u"_Out_Of_Memory"},
    {Failure::Stopped, u"_Stopped"},
    {Failure::Not_Rich_Text, u"_Not_Rich_Text"},
};
/// What only a server has trouble with has no failure of its own, but a number.
struct Number_Text {
    qint32 number;
    const char16_t *key;
};

constexpr Number_Text Number_Texts[] = {
    {Database_Server::Gone, u"_Server_Gone"},
    {Database_Server::Denied, u"_Server_Denied"},
    {Database_Server::Timed_Out, u"_Server_Slow"},
};

QString With_Description(const char16_t *key, const Pending_Error &error)
{
    const QString text = Language().GetString(QStringLiteral("Error_Texts"), QString::fromUtf16(key));
    return text.isEmpty() ? error.description : text + QStringLiteral("\n") + error.description;
}
} // namespace

QString Error_Text(const Pending_Error &error)
{
    for (const Number_Text &row : Number_Texts) {
        if (row.number == error.number)
            return With_Description(row.key, error);
    }
    for (const Failure_Text &row : Failure_Texts) {
        if (row.failure == error.failure)
            return With_Description(row.key, error);
    }
    return error.description;
}
