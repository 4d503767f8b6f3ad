// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/day_marks.h"

#include "core/error_log.h"
#include "core/process_state.h"
#include "core/sql_text.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"

namespace
{
#define ZELQOR_DAYS(MARK, COLUMN)                                                                                      \
    u"select"                                                                                                          \
    u" " MARK u",format(" COLUMN u",'DD') from Code_Info where " COLUMN u" like '%1%' and Cate_ID not like '000%'"
#define ZELQOR_DAY(COLUMN) u" where " COLUMN u" like '%1%' and Cate_ID not like '000%' order by " COLUMN u" desc "

/// The number of a mark and a day, each pair once.
constexpr const char16_t *Days_Of_Month =
    ZELQOR_DAYS(u"1", u"Code_Date") u" union " ZELQOR_DAYS(u"2", u"Code_Update") u" union " ZELQOR_DAYS(
        u"4", u"Code_ReadDate") u" union " ZELQOR_DAYS(u"8", u"Code_ReadDateNext");
constexpr const char16_t *Made_On = ZELQOR_DAY(u"Code_Date");
constexpr const char16_t *Changed_On = ZELQOR_DAY(u"Code_Update");
constexpr const char16_t *Read_On = ZELQOR_DAY(u"Code_ReadDate");
constexpr const char16_t *Due_On = ZELQOR_DAY(u"Code_ReadDateNext");
#undef ZELQOR_DAYS
#undef ZELQOR_DAY

QString Date_Text(const QDate &date)
{
    return Database_Engine::Short_Date(date.startOfDay());
}
} // namespace

QHash<int, Day_Marks> Month_Marks(int year, int month)
{
    return Trap(QStringLiteral("Frm_Date\\Month_Marks"), [&] {
        constexpr qsizetype Of_A_Day = 3; // separator and two digits
        QHash<int, Day_Marks> marks;
        Recordset days;
        days.Open(Sql_Text(Days_Of_Month, Date_Text(QDate(year, month, 1)).chopped(Of_A_Day)), App().Conn_Str);
        for (; !days.Eof(); days.MoveNext())
            marks[days[1].Text().toInt()] |= static_cast<Day_Mark>(days[0].Number());
        return marks;
    });
}

QString Day_Where(const QDate &day, Day_Mark mark)
{
    switch (mark) {
    case Day_Mark::Made:
        return Sql_Text(Made_On, Date_Text(day));
    case Day_Mark::Changed:
        return Sql_Text(Changed_On, Date_Text(day));
    case Day_Mark::Read:
        return Sql_Text(Read_On, Date_Text(day));
    case Day_Mark::Due:
        return Sql_Text(Due_On, Date_Text(day));
    }
    return {};
}
