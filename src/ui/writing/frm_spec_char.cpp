// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/writing/frm_spec_char.h"

#include "core/config_store.h"
#include "editor/insert_commands.h"
#include "editor/text_editor.h"
#include "ui_frm_spec_char.h"

namespace
{
constexpr int Cell = 38;
constexpr Kept_Value Last_Group{"Page", "SpecCharGroup"};

/// The characters of each group, in the order of the form's list.
const char16_t *const Groups[] = {
    u"，。、；：？！…—～·‘’“”（）【】《》〈〉「」『』〔〕〖〗※§¶†‡•‣©®™№℡℃℉‰‱′″",
    u"±×÷≈≠≡≤≥＜＞∝∞√∛∜∑∏∫∬∮∂∇∈∉∋⊂⊃⊆⊇∪∩∅∀∃∄∧∨¬⊕⊗⊥∥∠∟△∽≌∵∴¹²³⁴ⁿ½⅓¼¾",
    u"←↑→↓↔↕↖↗↘↙⇐⇑⇒⇓⇔⇕↩↪↺↻➔➜➤⟵⟶⟷",
    u"￥¥$€£¢₩₽₹฿㎎㎏㎜㎝㎞㎡㏄㏎㏑㏒㏕ΩμÅ°",
    u"①②③④⑤⑥⑦⑧⑨⑩⑪⑫⑬⑭⑮⑯⑰⑱⑲⑳⑴⑵⑶⑷⑸⑹⑺⑻⑼⑽ⅠⅡⅢⅣⅤⅥⅦⅧⅨⅩⅪⅫⅰⅱⅲⅳⅴ㈠㈡㈢㈣㈤㈥㈦㈧㈨㈩",
    u"ΑΒΓΔΕΖΗΘΙΚΛΜΝΞΟΠΡΣΤΥΦΧΨΩαβγδεζηθικλμνξοπρστυφχψω",
    u"āáǎàēéěèīíǐìōóǒòūúǔùǖǘǚǜüêńňǹÄÖÜßäöåæøçñ",
    u"■□▢▪▫▲△▶▷▼▽◀◁◆◇○◎●◐◑★☆☑☒✓✔✗✘☀☁☂☎☞♀♂♠♡♢♣♥♦♪♫",
    u"─━│┃┄┅┆┇┌┍┎┏┐┑┒┓└┗┘┛├┝┠┣┤┥┨┫┬┳┴┻┼╋═║╔╗╚╝╠╣╦╩╬",
};
} // namespace

Frm_SpecChar::Frm_SpecChar(Text_Editor &editor, QWidget *parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::Frm_SpecChar>()), m_editor(editor)
{
    m_ui->setupUi(this);
    m_lang.LoadControlsCaption();
    QFont large = font();
    large.setPointSizeF(large.pointSizeF() * 1.5);
    m_ui->Lst_Chars->setFont(large);
    m_ui->Lst_Chars->setGridSize(QSize(Cell, Cell));
    m_ui->Lst_Chars->setAccessibleName(windowTitle());
    connect(m_ui->Comb_Group, &QComboBox::currentIndexChanged, this, &Frm_SpecChar::Show_Group);
    connect(m_ui->Lst_Chars, &QListWidget::currentItemChanged, this, &Frm_SpecChar::Show_Code);
    connect(m_ui->Lst_Chars, &QListWidget::itemDoubleClicked, this, &Frm_SpecChar::Insert);
    connect(m_ui->cmdOK, &QPushButton::clicked, this, &Frm_SpecChar::Insert);
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    const int group = std::clamp(Last_Group.Read().toInt(), 0, static_cast<int>(std::size(Groups)) - 1);
    m_ui->Comb_Group->setCurrentIndex(group);
    Show_Group(group);
}

Frm_SpecChar::~Frm_SpecChar() = default;

void Frm_SpecChar::Show_Group(int group)
{
    if (group < 0 || group >= static_cast<int>(std::size(Groups)))
        return;
    m_ui->Lst_Chars->clear();
    for (const QChar character : QStringView(Groups[group])) {
        auto *item = new QListWidgetItem(character, m_ui->Lst_Chars);
        item->setTextAlignment(Qt::AlignCenter);
        item->setSizeHint(QSize(Cell, Cell));
    }
    m_ui->Lst_Chars->setCurrentRow(0);
    Last_Group.Keep(QString::number(group));
}

void Frm_SpecChar::Show_Code()
{
    const QListWidgetItem *item = m_ui->Lst_Chars->currentItem();
    m_ui->Lab_Code->setText(
        item == nullptr ? QString()
                        : QStringLiteral("U+%1").arg(item->text().at(0).unicode(), 4, 16, QLatin1Char('0')).toUpper());
}

void Frm_SpecChar::Insert()
{
    if (const QListWidgetItem *item = m_ui->Lst_Chars->currentItem())
        Insert_Commands::Text(m_editor, item->text());
}
