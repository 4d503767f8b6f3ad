// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/ladder_rungs.h"

#include "core/sql_text.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "storage/ladder_sql.h"
#include "storage/update_241.h"

using namespace Ladder_Sql;

namespace
{
bool Raise_To_235(Ladder_Run &run)
{
    return run.Opens(Tiny_Class_Of_Files) || run.Show_Upgrade_Window();
}

bool Raise_To_241(Ladder_Run &run)
{
    const qint64 documents = run.Count(Document_Count);
    const qint64 folders = documents < 0 ? -1 : run.Count(Folder_Count);
    if (documents < 0 || folders < 0 || (folders == 0 && documents > 0))
        Update_241_Start(run);
    return true;
}

void Add_Recycle_Bin(Ladder_Run &run)
{
    const bool added = Resume_Next([&] { run.Execute(Sql_Text(Insert_Recycle_Bin)); });
    if (added)
        return;
    const bool passwordsToCome = Err().failure == Failure::Missing_Column;
    const Run_Time_Error error(Err().number, Err().description, Err().failure);
    Clear_Pending();
    if (!passwordsToCome)
        throw error;
    run.Execute(Sql_Text(Insert_Recycle_Bin_Without_Password));
}

bool Raise_Folder_Passwords(Ladder_Run &run)
{
    std::span<const Statement> action;
    if (!run.Opens(Bin_Password))
        action = Add_Folder_Password;
    else if (run.Has_Row(Bin_Password_Missing))
        action = Empty_Bin_Password;
    run.Act([&] {
        for (const Statement statement : action)
            run.Execute(Sql_Text(statement));
    });
    return true;
}

/// Hands the row of `test` on: the facts that a database had before it had users.
void With_Old_Facts(Ladder_Run &run, const std::function<void(Recordset &facts)> &body)
{
    Recordset facts;
    facts.Open(Sql_Text(Old_Facts), run.Conn_Str());
    if (!facts.Eof())
        body(facts);
}

QString Old_Name(Recordset &facts)
{
    return Quoted(facts[QStringLiteral("temp_name")].Text());
}

/// Start date of a user of whom nothing else is known, as that of the default user.
const QDate First_Release(2008, 11, 30);

void Insert_First_User(Ladder_Run &run)
{
    With_Old_Facts(run, [&](Recordset &facts) {
        const QDateTime start = Database_Engine::Date_From_Text(facts[QStringLiteral("temp_add")].Text());
        const QDate day = start.isValid() ? start.date() : First_Release;
        run.Execute(Sql_Text(Insert_Credentials, Old_Name(facts), day.toString(Qt::ISODate)));
    });
}

void Insert_First_Profile(Ladder_Run &run)
{
    With_Old_Facts(run, [&](Recordset &facts) { run.Execute(Sql_Text(Insert_Profile, Old_Name(facts))); });
}

void Create_Facts_Of_Program(Ladder_Run &run)
{
    With_Old_Facts(run, [&](Recordset &facts) {
        run.Execute(Sql_Text(Insert_Fact, QStringLiteral("COM_NAME"), Old_Name(facts)));
        run.Execute(
            Sql_Text(Insert_Fact, QStringLiteral("COM_ICON"), Quoted(facts[QStringLiteral("temp_txt")].Text())));
    });
}

constexpr Rung Rungs[] = {
    {.mark = u"Chk_Update_235_Start", .probe = Probe::None, .act = Raise_To_235},
    {.mark = u"Chk_Update_236_Start",
     .probe = Probe::Width,
     .statement = File_Name,
     .column = u"file_name",
     .width = 50,
     .action = Widen_File_Name},
    {.mark = u"Chk_Update_238_Start", .statement = Documents, .column = u"Code_Color", .action = Add_Code_Color},
    {.mark = u"Chk_Update_241_Start", .probe = Probe::None, .act = Raise_To_241},
    {.probe = Probe::Width, .statement = Titles, .column = u"Code_Title", .width = 50, .action = Widen_Titles},
    {.statement = Folder_Order, .action = Add_Folder_Order},
    {.statement = Folder_Expansion, .action = Add_Folder_Expansion},
    {.reach = Reach::File_And_Server, .probe = Probe::Row, .statement = Recycle_Bin, .more = Add_Recycle_Bin},
    {.statement = Code_Memo, .action = Add_Code_Memo},
    {.mark = u"Update_250_1", .statement = Code_Done, .action = Add_Code_Done},
    {.mark = u"Update_250_2", .statement = Code_Type, .action = Add_Code_Type},
    {.mark = u"Update_250_3",
     .probe = Probe::Width,
     .statement = File_Path,
     .column = u"file_path",
     .width = 100,
     .action = Widen_File_Path},
    {.mark = u"Update_251_1", .statement = File_Infor, .action = Add_File_Infor},
    {.probe = Probe::None, .act = Raise_Folder_Passwords},
    {.statement = Bookmarks, .action = Create_Bookmarks},
    {.statement = Code_Date, .action = Add_Code_Date, .always = Fill_Code_Date},
    {.statement = Code_File, .action = Add_Code_File},
    {.statement = More_Folders, .action = Create_More_Folders},
    {.statement = Credentials, .action = Create_Credentials, .more = Insert_First_User},
    {.statement = Profiles, .action = Create_Profiles, .more = Insert_First_Profile},
    {.statement = Facts, .action = Create_Facts, .more = Create_Facts_Of_Program},
    {.probe = Probe::Width, .statement = Facts, .column = u"Mess_ID", .width = 5, .action = Widen_Facts},
    {.statement = Code_ReadDate, .action = Add_Code_ReadDate, .always = Fill_Code_ReadDate},
    // Each table is asked by itself: a table that a rung above has just made has the narrow column too.
    {.probe = Probe::Width, .statement = Code_Id, .column = u"Code_id", .width = 30, .action = Widen_Code_Id},
    {.probe = Probe::Width,
     .statement = Code_Id_Of_Files,
     .column = u"Code_id",
     .width = 30,
     .action = Widen_Code_Id_Of_Files},
    {.probe = Probe::Width,
     .statement = Code_Id_Of_Bookmarks,
     .column = u"Code_id",
     .width = 30,
     .action = Widen_Code_Id_Of_Bookmarks},
    {.probe = Probe::Width,
     .statement = Code_Id_Of_More_Folders,
     .column = u"Code_id",
     .width = 30,
     .action = Widen_Code_Id_Of_More_Folders},
    {.statement = Code_UpdateNum, .action = Add_Code_UpdateNum},
    {.mark = u"Update_255_9 ", .statement = Log, .action = Create_Log},
    {.mark = u"Update_256_0 ",
     .reach = Reach::Every,
     .probe = Probe::Opens_No_More,
     .statement = Old_Classes,
     .action = Drop_Old_Classes},
    {.mark = u"Update_256_1 ", .reach = Reach::Every, .statement = Tags, .action = Create_Tags},
    {.mark = u"Update_256_2 ", .reach = Reach::Every, .statement = Code_Tags, .action = Add_Code_Tags},
    {.mark = u"Update_256_3 ", .reach = Reach::Every, .statement = Curves, .action = Create_Curves},
    {.mark = u"Update_256_4 ", .reach = Reach::Every, .statement = Review_State, .action = Add_Review_State},
};

bool Is_Due(const Rung &rung, const Ladder_Run &run)
{
    const QString column = rung.column == nullptr ? QString() : QString::fromUtf16(rung.column);
    switch (rung.probe) {
    case Probe::Opens:
        return !run.Opens(rung.statement, column);
    case Probe::Opens_No_More:
        return run.Opens(rung.statement, column);
    case Probe::Width:
        return run.Defined_Size(rung.statement, column) == rung.width;
    case Probe::Row:
        return !run.Has_Row(rung.statement);
    case Probe::None:
        break;
    }
    return false;
}
} // namespace

std::span<const Rung> Ladder_Rungs()
{
    return Rungs;
}

bool Run_Rung(const Rung &rung, Ladder_Run &run)
{
    if (rung.act != nullptr)
        return rung.act(run);
    if (Is_Due(rung, run)) {
        run.Act([&] {
            for (const Statement statement : rung.action)
                run.Execute(Sql_Text(statement));
            if (rung.more != nullptr)
                rung.more(run);
        });
    }
    if (rung.always != nullptr)
        run.Act([&] { run.Execute(Sql_Text(rung.always)); });
    return true;
}
