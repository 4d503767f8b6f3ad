// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

/// The tables of the calendar; docs/calendar.md names their sources.
namespace Calendar_Tables
{
inline constexpr int First_Year = 1900;
inline constexpr int Last_Year = 2049;
inline constexpr int Years = Last_Year - First_Year + 1;

/// Bits 0 to 3: number of the leap month, 0 for none; bit 16 - m: month m has 30 days, not 29; bit 16: the leap month
/// has; bit 20 is always set.
inline constexpr std::array<int, Years> Year_Codes = {
    0x104bd8, 0x104ae0, 0x10a570, 0x1054d5, 0x10d260, 0x10d950, 0x116554, 0x1056a0, 0x109ad0, 0x1055d2, 0x104ae0,
    0x10a5b6, 0x10a4d0, 0x10d250, 0x11d255, 0x10b540, 0x10d6a0, 0x10ada2, 0x1095b0, 0x114977, 0x104970, 0x10a4b0,
    0x10b4b5, 0x106a50, 0x106d40, 0x11ab54, 0x102b60, 0x109570, 0x1052f2, 0x104970, 0x106566, 0x10d4a0, 0x10ea50,
    0x106e95, 0x105ad0, 0x102b60, 0x1186e3, 0x1092e0, 0x11c8d7, 0x10c950, 0x10d4a0, 0x11d8a6, 0x10b550, 0x1056a0,
    0x11a5b4, 0x1025d0, 0x1092d0, 0x10d2b2, 0x10a950, 0x10b557, 0x106ca0, 0x10b550, 0x115355, 0x104da0, 0x10a5b0,
    0x114573, 0x1052b0, 0x10a9a8, 0x10e950, 0x106aa0, 0x10aea6, 0x10ab50, 0x104b60, 0x10aae4, 0x10a570, 0x105260,
    0x10f263, 0x10d950, 0x105b57, 0x1056a0, 0x1096d0, 0x104dd5, 0x104ad0, 0x10a4d0, 0x10d4d4, 0x10d250, 0x10d558,
    0x10b540, 0x10b6a0, 0x1195a6, 0x1095b0, 0x1049b0, 0x10a974, 0x10a4b0, 0x10b27a, 0x106a50, 0x106d40, 0x10af46,
    0x10ab60, 0x109570, 0x104af5, 0x104970, 0x1064b0, 0x1074a3, 0x10ea50, 0x106b58, 0x105ac0, 0x10ab60, 0x1096d5,
    0x1092e0, 0x10c960, 0x10d954, 0x10d4a0, 0x10da50, 0x107552, 0x1056a0, 0x10abb7, 0x1025d0, 0x1092d0, 0x10cab5,
    0x10a950, 0x10b4a0, 0x10baa4, 0x10ad50, 0x1055d9, 0x104ba0, 0x10a5b0, 0x115176, 0x1052b0, 0x10a930, 0x107954,
    0x106aa0, 0x10ad50, 0x105b52, 0x104b60, 0x10a6e6, 0x10a4e0, 0x10d260, 0x10ea65, 0x10d530, 0x105aa0, 0x1076a3,
    0x1096d0, 0x104afb, 0x104ad0, 0x10a4d0, 0x11d0b6, 0x10d250, 0x10d520, 0x10dd45, 0x10b5a0, 0x1056d0, 0x1055b2,
    0x1049b0, 0x10a577, 0x10a4b0, 0x10aa50, 0x11b255, 0x106d20, 0x10ada0,
};

consteval std::array<int, Years> Lengths()
{
    std::array<int, Years> lengths{};
    for (size_t i = 0; i < lengths.size(); ++i) {
        const int code = Year_Codes[i];
        lengths[i] = 12 * 29;
        for (int bit = 4; bit < 16; ++bit)
            lengths[i] += (code >> bit) & 1;
        if ((code & 15) != 0)
            lengths[i] += 29 + ((code >> 16) & 1);
    }
    return lengths;
}
inline constexpr std::array<int, Years> Year_Lengths = Lengths();
static_assert(Year_Lengths[0] == 384 && Year_Lengths[1] == 354 && Year_Lengths[2] == 355 && Year_Lengths[3] == 383);

inline constexpr std::array Month_Lengths = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

inline constexpr std::array Stems = {u"甲", u"乙", u"丙", u"丁", u"戊", u"己", u"庚", u"辛", u"壬", u"癸"};
inline constexpr std::array Branches = {u"子", u"丑", u"寅", u"卯", u"辰", u"巳",
                                        u"午", u"未", u"申", u"酉", u"戌", u"亥"};
inline constexpr std::array Animals = {u"鼠", u"牛", u"虎", u"兔", u"龙", u"蛇",
                                       u"马", u"羊", u"猴", u"鸡", u"狗", u"猪"};

inline constexpr std::array Terms = {u"小寒", u"大寒", u"立春", u"雨水", u"惊蛰", u"春分", u"清明", u"谷雨",
                                     u"立夏", u"小满", u"芒种", u"夏至", u"小暑", u"大暑", u"立秋", u"处暑",
                                     u"白露", u"秋分", u"寒露", u"霜降", u"立冬", u"小雪", u"大雪", u"冬至"};
/// Minutes from the year's first term to each.
inline constexpr std::array Term_Offsets = {0,      21208,  42467,  63836,  85337,  107014, 128867, 150921,
                                            173149, 195551, 218072, 240693, 263343, 285989, 308563, 331033,
                                            353350, 375494, 397447, 419210, 440795, 462224, 483532, 504758};

inline constexpr std::array Number_Words = {u"日", u"一", u"二", u"三", u"四", u"五",
                                            u"六", u"七", u"八", u"九", u"十"};
inline constexpr std::array Ten_Days = {u"初", u"十", u"廿", u"卅", u"\u3000"};
inline constexpr std::array Month_Abbreviations = {u"JAN", u"FEB", u"MAR", u"APR", u"MAY", u"JUN",
                                                   u"JUL", u"AUG", u"SEP", u"OCT", u"NOV", u"DEC"};

struct Festival {
    int month;
    int day;
    bool holiday;
    const char16_t *name;
};
inline constexpr Festival Solar_Festivals[] = {
    {1, 1, true, u"元旦"},
    {2, 2, false, u"世界湿地日"},
    {2, 10, false, u"国际气象节"},
    {2, 14, false, u"情人节"},
    {3, 1, false, u"国际海豹日"},
    {3, 5, false, u"学雷锋纪念日"},
    {3, 8, false, u"妇女节"},
    {3, 12, false, u"植树节 孙中山逝世纪念日"},
    {3, 14, false, u"国际警察日"},
    {3, 15, false, u"消费者权益日"},
    {3, 17, false, u"中国国医节 国际航海日"},
    {3, 21, false, u"世界森林日 消除种族歧视国际日 世界儿歌日"},
    {3, 22, false, u"世界水日"},
    {3, 24, false, u"世界防治结核病日"},
    {4, 1, false, u"愚人节"},
    {4, 3, false, u"本软件作者生日"},
    {4, 7, false, u"世界卫生日"},
    {4, 22, false, u"世界地球日"},
    {4, 28, false, u"08胶济铁路火车相撞"},
    {5, 1, true, u"劳动节"},
    {5, 2, true, u"劳动节"},
    {5, 4, false, u"青年节"},
    {5, 8, false, u"世界红十字日"},
    {5, 12, false, u"08汶川地震 护士节"},
    {5, 12, false, u"国际护士节"},
    {5, 31, false, u"世界无烟日"},
    {6, 1, false, u"儿童节"},
    {6, 5, false, u"世界环境保护日"},
    {6, 26, false, u"国际禁毒日"},
    {7, 1, false, u"建党节 香港回归纪念 世界建筑日"},
    {7, 11, false, u"世界人口日"},
    {8, 1, false, u"建军节"},
    {8, 8, false, u"中国男子节 父亲节"},
    {8, 15, false, u"抗日战争胜利纪念"},
    {9, 3, false, u"抗日战争胜利日"},
    {9, 9, false, u"毛泽东逝世纪念"},
    {9, 10, false, u"教师节"},
    {9, 18, false, u"九·一八事变纪念日"},
    {9, 20, false, u"国际爱牙日"},
    {9, 20, false, u"全国爱牙日"},
    {9, 27, false, u"世界旅游日"},
    {9, 28, false, u"孔子诞辰"},
    {10, 1, true, u"国庆节 国际音乐日"},
    {10, 2, true, u"国庆节假日"},
    {10, 3, true, u"国庆节假日"},
    {10, 6, false, u"老人节"},
    {10, 8, false, u"全国高血压日"},
    {10, 15, false, u"国际盲人节(白手杖日)"},
    {10, 16, false, u"世界粮食日"},
    {10, 24, false, u"联合国日"},
    {10, 31, false, u"万圣节"},
    {11, 1, false, u"国际旅游电影节"},
    {11, 8, false, u"中国记者日"},
    {11, 10, false, u"世界青年日"},
    {11, 12, false, u"孙中山诞辰纪念"},
    {11, 14, false, u"世界糖尿病日"},
    {11, 17, false, u"世界学生节"},
    {12, 1, false, u"世界艾滋病日"},
    {12, 3, false, u"世界残疾人日"},
    {12, 9, false, u"世界足球日"},
    {12, 10, false, u"世界人权日"},
    {12, 13, false, u"南京大屠杀纪念日"},
    {12, 20, false, u"澳门回归纪念"},
    {12, 24, false, u"平安夜"},
    {12, 25, false, u"圣诞节"},
    {12, 26, false, u"毛泽东诞辰纪念"},
};
inline constexpr Festival Lunar_Festivals[] = {
    {1, 1, true, u"春节"},        {1, 15, false, u"元宵节"},          {5, 5, true, u"端午节"},
    {7, 7, false, u"七夕情人节"}, {7, 15, false, u"中元节 盂兰盆节"}, {8, 15, true, u"中秋节"},
    {9, 9, false, u"重阳节"},     {12, 8, false, u"腊八节"},          {12, 23, false, u"小年"},
};
/// Not in the tables: it is found by looking one day ahead.
inline constexpr const char16_t *New_Years_Eve = u"除夕";

/// The `week`-th `weekday` of a month; Sunday is 0.
struct Weekday_Festival {
    int month;
    int week;
    int weekday;
    const char16_t *name;
};
inline constexpr Weekday_Festival Weekday_Festivals[] = {
    {5, 2, 0, u"国际母亲节"},          {5, 3, 0, u"全国助残日"}, {6, 3, 0, u"父亲节"},
    {9, 3, 2, u"国际和平日"},          {9, 4, 0, u"国际聋人节"}, {10, 1, 1, u"国际住房日"},
    {10, 2, 3, u"国际减轻自然灾害日"}, {11, 4, 4, u"感恩节"},
};

/// The signs by the day on which each ends, month * 100 + day.
struct Sign_End {
    int last;
    const char16_t *name;
};
inline constexpr Sign_End Signs[] = {
    {119, u"摩羯座"},  {218, u"水瓶座"},  {320, u"双鱼座"},  {419, u"白羊座"}, {520, u"金牛座"},
    {621, u"双子座"},  {722, u"巨蟹座"},  {822, u"狮子座"},  {922, u"处女座"}, {1023, u"天秤座"},
    {1121, u"天蝎座"}, {1221, u"射手座"}, {1231, u"摩羯座"},
};

/// A way of counting years: those up to `last`; `first` is its year one.
struct Era_Row {
    int last;
    int first;
    const char16_t *name;
    bool first_has_word; ///< year one is "元年"
};
inline constexpr Era_Row Eras[] = {
    {1908, 1874, u"清朝光绪", true},
    {1910, 1909, u"清朝宣统", false},
    {1948, 1912, u"中华民国", false},
    {9999, 1950, u"中华人民共和国成立", false}, // years since 1949
};
} // namespace Calendar_Tables
