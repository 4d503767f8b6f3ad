// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/command_table.h"

#include "editor/character_commands.h"
#include "editor/edit_commands.h"
#include "editor/insert_commands.h"
#include "editor/paragraph_commands.h"
#include "editor/table_commands.h"

#include <QRgb>

namespace
{
using M = Command_Menu;
using R = Command_Request;
constexpr QRgb No_Color = 0xFF000000;

QColor Color_Of(QRgb rgb)
{
    return rgb == No_Color ? QColor() : QColor::fromRgb(rgb);
}

template <int Level>
void Heading(Text_Editor &editor, bool /*on*/)
{
    Paragraph_Commands::Set_Heading(editor, Level);
}

template <int Level>
bool Is_Heading(const Text_Editor &editor)
{
    return Paragraph_Commands::Heading_Level(editor) == Level;
}

template <Qt::AlignmentFlag Side>
void Align(Text_Editor &editor, bool /*on*/)
{
    Paragraph_Commands::Set_Alignment(editor, Side);
}

template <Qt::AlignmentFlag Side>
bool Is_Aligned(const Text_Editor &editor)
{
    return Paragraph_Commands::Has_Alignment(editor, Side);
}

template <int Percent>
void Spacing(Text_Editor &editor, bool /*on*/)
{
    Paragraph_Commands::Set_Line_Spacing(editor, Percent);
}

template <int Percent>
bool Is_Spaced(const Text_Editor &editor)
{
    return Paragraph_Commands::Line_Spacing(editor) == Percent;
}

template <QRgb Rgb>
void Color(Text_Editor &editor, bool /*on*/)
{
    Character_Commands::Set_Color(editor, Color_Of(Rgb));
}

template <QRgb Rgb>
void Highlight(Text_Editor &editor, bool /*on*/)
{
    Character_Commands::Set_Highlight(editor, Color_Of(Rgb));
}

// clang-format off
constexpr Command_Row Rows[] = {
    {"Cmd_Undo", "撤销(&U)", "undo", "Ctrl+Z", M::Edit, On_Bar, Edit_Commands::Undo},
    {"Cmd_Redo", "重做(&R)", "redo", "Ctrl+Y; Ctrl+Shift+Z", M::Edit, On_Bar, Edit_Commands::Redo},
    {"Cmd_Cut", "剪切(&T)", "cut", "Ctrl+X", M::Edit, Selected | New_Group | On_Context, Edit_Commands::Cut},
    {"Cmd_Copy", "复制(&C)", "copy", "Ctrl+C", M::Edit, Reads | Selected | On_Context, Edit_Commands::Copy},
    {"Cmd_Paste", "粘贴(&P)", "paste", "Ctrl+V", M::Edit, On_Context, Edit_Commands::Paste},
    {"Cmd_Paste_Plain", "粘贴为纯文本(&X)", "", "Ctrl+Shift+V", M::Edit, On_Context, Edit_Commands::Paste_Plain},
    {"Cmd_Select_All", "全选(&A)", "", "Ctrl+A", M::Edit, Reads | On_Context, Edit_Commands::Select_All},
    {"Cmd_Find", "查找(&F)...", "find", "Ctrl+F", M::Edit, Reads | Anywhere | On_Bar | New_Group, nullptr, nullptr, R::Find},
    {"Cmd_Find_Next", "查找下一个(&N)", "", "F3", M::Edit, Reads | Anywhere, nullptr, nullptr, R::Find_Next},
    {"Cmd_Find_Previous", "查找上一个(&V)", "", "Shift+F3", M::Edit, Reads | Anywhere, nullptr, nullptr, R::Find_Previous},
    {"Cmd_Replace", "替换(&E)...", "", "Ctrl+H", M::Edit, Anywhere, nullptr, nullptr, R::Replace},
    {"Cmd_Go_To", "转到行(&G)...", "", "Ctrl+G", M::Edit, Reads | Anywhere, nullptr, nullptr, R::Go_To},
    {"Cmd_Word_Count", "字数统计(&W)...", "", "Ctrl+Shift+G", M::Edit, Reads | Anywhere | New_Group, Edit_Commands::Word_Count_Box},
    {"Cmd_Move_Up", "段落上移(&U)", "", "Alt+Shift+Up", M::Paragraph, 0, Paragraph_Commands::Move_Up},
    {"Cmd_Move_Down", "段落下移(&D)", "", "Alt+Shift+Down", M::Paragraph, 0, Paragraph_Commands::Move_Down},
    {"Cmd_Sort", "段落排序(&S)", "", "", M::Paragraph, Selected, Paragraph_Commands::Sort},
    {"Cmd_New_Table", "插入表格(&T)...", "table", "", M::Insert, On_Bar, nullptr, nullptr, R::New_Table},
    {"Cmd_Picture", "图片(&P)...", "picture", "", M::Insert, On_Bar, Insert_Commands::Picture},
    {"Cmd_Picture_Size", "图片大小(&Z)...", "", "", M::Insert, On_Picture, nullptr, nullptr, R::Picture_Size},
    {"Cmd_Link", "超链接(&L)...", "link", "Ctrl+K", M::Insert, On_Bar | On_Context, Insert_Commands::Link},
    {"Cmd_Rule", "水平线(&H)", "rule", "", M::Insert, New_Group, Insert_Commands::Rule},
    {"Cmd_Date", "日期(&D)", "calendar", "Ctrl+;", M::Insert, 0, Insert_Commands::Date},
    {"Cmd_Date_Time", "日期和时间(&M)", "", "", M::Insert, 0, Insert_Commands::Date_And_Time},
    {"Cmd_Special", "特殊字符(&S)...", "omega", "", M::Insert, 0, nullptr, nullptr, R::Special_Character},
    {"Cmd_Bold", "粗体(&B)", "bold", "Ctrl+B", M::Format, On_Bar, Character_Commands::Bold, Character_Commands::Is_Bold},
    {"Cmd_Italic", "斜体(&I)", "italic", "Ctrl+I", M::Format, On_Bar, Character_Commands::Italic, Character_Commands::Is_Italic},
    {"Cmd_Underline", "下划线(&U)", "underline", "Ctrl+U", M::Format, On_Bar, Character_Commands::Underline, Character_Commands::Is_Underlined},
    {"Cmd_Strike", "删除线(&K)", "strike", "Ctrl+Shift+X", M::Format, On_Bar, Character_Commands::Strike, Character_Commands::Is_Struck},
    {"Cmd_Super", "上标(&P)", "superscript", "Ctrl+Shift+=; Ctrl++", M::Format, 0, Character_Commands::Superscript, Character_Commands::Is_Superscript},
    {"Cmd_Sub", "下标(&S)", "subscript", "Ctrl+=", M::Format, 0, Character_Commands::Subscript, Character_Commands::Is_Subscript},
    {"Cmd_Larger", "增大字号(&L)", "", "Ctrl+]", M::Format, 0, Character_Commands::Larger},
    {"Cmd_Smaller", "减小字号(&M)", "", "Ctrl+[", M::Format, 0, Character_Commands::Smaller},
    {"Cmd_Clear_Format", "清除格式(&C)", "clear_format", "Ctrl+\\", M::Format, On_Bar, Character_Commands::Clear_Format},
    {"Cmd_Bullets", "项目符号(&T)", "bullets", "Ctrl+Shift+L", M::Format, On_Bar | New_Group, Paragraph_Commands::Bullets, Paragraph_Commands::Is_Bulleted},
    {"Cmd_Numbers", "编号(&N)", "numbers", "Ctrl+Shift+K", M::Format, On_Bar, Paragraph_Commands::Numbers, Paragraph_Commands::Is_Numbered},
    {"Cmd_Outdent", "减少缩进(&O)", "outdent", "Ctrl+Shift+M", M::Format, On_Bar, Paragraph_Commands::Outdent},
    {"Cmd_Indent", "增加缩进(&D)", "indent", "Ctrl+M", M::Format, On_Bar, Paragraph_Commands::Indent},
    {"Cmd_Heading_0", "正文(&0)", "", "Ctrl+Alt+0", M::Heading, 0, Heading<0>, Is_Heading<0>},
    {"Cmd_Heading_1", "标题 1(&1)", "", "Ctrl+Alt+1", M::Heading, 0, Heading<1>, Is_Heading<1>},
    {"Cmd_Heading_2", "标题 2(&2)", "", "Ctrl+Alt+2", M::Heading, 0, Heading<2>, Is_Heading<2>},
    {"Cmd_Heading_3", "标题 3(&3)", "", "Ctrl+Alt+3", M::Heading, 0, Heading<3>, Is_Heading<3>},
    {"Cmd_Heading_4", "标题 4(&4)", "", "Ctrl+Alt+4", M::Heading, 0, Heading<4>, Is_Heading<4>},
    {"Cmd_Heading_5", "标题 5(&5)", "", "Ctrl+Alt+5", M::Heading, 0, Heading<5>, Is_Heading<5>},
    {"Cmd_Heading_6", "标题 6(&6)", "", "Ctrl+Alt+6", M::Heading, 0, Heading<6>, Is_Heading<6>},
    {"Cmd_Align_Left", "左对齐(&L)", "align_left", "Ctrl+L", M::Align, On_Bar, Align<Qt::AlignLeft>, Is_Aligned<Qt::AlignLeft>},
    {"Cmd_Align_Center", "居中(&C)", "align_center", "Ctrl+E", M::Align, On_Bar, Align<Qt::AlignHCenter>, Is_Aligned<Qt::AlignHCenter>},
    {"Cmd_Align_Right", "右对齐(&R)", "align_right", "Ctrl+R", M::Align, On_Bar, Align<Qt::AlignRight>, Is_Aligned<Qt::AlignRight>},
    {"Cmd_Align_Justify", "两端对齐(&J)", "align_justify", "Ctrl+J", M::Align, On_Bar, Align<Qt::AlignJustify>, Is_Aligned<Qt::AlignJustify>},
    {"Cmd_Spacing_100", "1.0", "", "", M::Spacing, 0, Spacing<100>, Is_Spaced<100>},
    {"Cmd_Spacing_115", "1.15", "", "", M::Spacing, 0, Spacing<115>, Is_Spaced<115>},
    {"Cmd_Spacing_150", "1.5", "", "", M::Spacing, 0, Spacing<150>, Is_Spaced<150>},
    {"Cmd_Spacing_200", "2.0", "", "", M::Spacing, 0, Spacing<200>, Is_Spaced<200>},
    {"Cmd_Spacing_250", "2.5", "", "", M::Spacing, 0, Spacing<250>, Is_Spaced<250>},
    {"Cmd_Spacing_300", "3.0", "", "", M::Spacing, 0, Spacing<300>, Is_Spaced<300>},
    {"Cmd_Color_Auto", "自动(&A)", "", "", M::Color, 0, Color<No_Color>},
    {"Cmd_Color_Dark_Red", "深红", "#C00000", "", M::Color, New_Group, Color<0xC00000>},
    {"Cmd_Color_Red", "红色", "#E03131", "", M::Color, 0, Color<0xE03131>},
    {"Cmd_Color_Orange", "橙色", "#E8710A", "", M::Color, 0, Color<0xE8710A>},
    {"Cmd_Color_Gold", "金色", "#B58900", "", M::Color, 0, Color<0xB58900>},
    {"Cmd_Color_Green", "绿色", "#2B8A3E", "", M::Color, 0, Color<0x2B8A3E>},
    {"Cmd_Color_Teal", "青色", "#0B7285", "", M::Color, 0, Color<0x0B7285>},
    {"Cmd_Color_Blue", "蓝色", "#1C6DD0", "", M::Color, 0, Color<0x1C6DD0>},
    {"Cmd_Color_Dark_Blue", "深蓝", "#1B3A8C", "", M::Color, 0, Color<0x1B3A8C>},
    {"Cmd_Color_Purple", "紫色", "#7B3FA0", "", M::Color, 0, Color<0x7B3FA0>},
    {"Cmd_Color_Pink", "粉红", "#D6336C", "", M::Color, 0, Color<0xD6336C>},
    {"Cmd_Color_Brown", "棕色", "#7A4B1E", "", M::Color, 0, Color<0x7A4B1E>},
    {"Cmd_Color_Gray", "灰色", "#808080", "", M::Color, 0, Color<0x808080>},
    {"Cmd_Color_Black", "黑色", "#000000", "", M::Color, 0, Color<0x000000>},
    {"Cmd_Color_White", "白色", "#FFFFFF", "", M::Color, 0, Color<0xFFFFFF>},
    {"Cmd_Color_Other", "其他颜色(&O)...", "", "", M::Color, New_Group, Character_Commands::Ask_Color},
    {"Cmd_Mark_None", "无(&N)", "", "Ctrl+Shift+J", M::Highlight, 0, Highlight<No_Color>},
    {"Cmd_Mark", "标记(&M)", "highlight", "Ctrl+Shift+H", M::Highlight, 0, Character_Commands::Mark, Character_Commands::Is_Marked},
    {"Cmd_Mark_Yellow", "黄色", "#FFF176", "", M::Highlight, New_Group, Highlight<0xFFF176>},
    {"Cmd_Mark_Green", "浅绿", "#B9F6CA", "", M::Highlight, 0, Highlight<0xB9F6CA>},
    {"Cmd_Mark_Cyan", "浅青", "#B2EBF2", "", M::Highlight, 0, Highlight<0xB2EBF2>},
    {"Cmd_Mark_Blue", "浅蓝", "#BBDEFB", "", M::Highlight, 0, Highlight<0xBBDEFB>},
    {"Cmd_Mark_Pink", "粉红", "#F8BBD0", "", M::Highlight, 0, Highlight<0xF8BBD0>},
    {"Cmd_Mark_Orange", "浅橙", "#FFCC80", "", M::Highlight, 0, Highlight<0xFFCC80>},
    {"Cmd_Mark_Purple", "浅紫", "#E1BEE7", "", M::Highlight, 0, Highlight<0xE1BEE7>},
    {"Cmd_Mark_Gray", "浅灰", "#E0E0E0", "", M::Highlight, 0, Highlight<0xE0E0E0>},
    {"Cmd_Mark_Other", "其他颜色(&O)...", "", "", M::Highlight, New_Group, Character_Commands::Ask_Highlight},
    {"Cmd_Row_Above", "在上方插入行(&A)", "", "", M::Table, In_Table, Table_Commands::Row_Above},
    {"Cmd_Row_Below", "在下方插入行(&B)", "", "", M::Table, In_Table, Table_Commands::Row_Below},
    {"Cmd_Column_Left", "在左侧插入列(&L)", "", "", M::Table, In_Table, Table_Commands::Column_Left},
    {"Cmd_Column_Right", "在右侧插入列(&R)", "", "", M::Table, In_Table, Table_Commands::Column_Right},
    {"Cmd_Merge", "合并单元格(&M)", "", "", M::Table, In_Table | New_Group | Selected, Table_Commands::Merge_Cells},
    {"Cmd_Split", "拆分单元格(&S)", "", "", M::Table, In_Table, Table_Commands::Split_Cell},
    {"Cmd_Even", "平均分布各列(&E)", "", "", M::Table, In_Table, Table_Commands::Even_Columns},
    {"Cmd_Delete_Rows", "删除行(&W)", "", "", M::Table, In_Table | New_Group, Table_Commands::Delete_Rows},
    {"Cmd_Delete_Columns", "删除列(&C)", "", "", M::Table, In_Table, Table_Commands::Delete_Columns},
    {"Cmd_Delete_Table", "删除表格(&T)", "", "", M::Table, In_Table, Table_Commands::Delete_Table},
};

constexpr Command_Menu_Row Menus[] = {
    {M::Edit, "Mnu_Edit_Commands", "编辑(&E)", "", M::Edit, false},
    {M::Insert, "Mnu_Insert_Commands", "插入(&I)", "", M::Insert, false},
    {M::Format, "Mnu_Format_Commands", "格式(&O)", "", M::Format, false},
    {M::Table, "Mnu_Table", "表格(&B)", "", M::Insert, false},
    {M::Heading, "Mnu_Heading", "标题(&H)", "", M::Format, false},
    {M::Paragraph, "Mnu_Paragraph", "段落(&E)", "", M::Format, false},
    {M::Align, "Mnu_Align", "对齐方式(&A)", "", M::Format, false},
    {M::Spacing, "Mnu_Spacing", "行距(&G)", "line_spacing", M::Format, true},
    {M::Color, "Mnu_Color", "文字颜色(&X)", "text_color", M::Format, true},
    {M::Highlight, "Mnu_Highlight", "突出显示(&R)", "highlight", M::Format, true},
};
// clang-format on
} // namespace

std::span<const Command_Row> Command_Table()
{
    return Rows;
}

std::span<const Command_Menu_Row> Command_Menus()
{
    return Menus;
}
