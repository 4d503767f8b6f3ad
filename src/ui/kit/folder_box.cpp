// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/folder_box.h"

#include "platform/models/plain_tip.h"
#include "tree/tree_loading.h"

#include <QRegularExpression>
#include <QStylePainter>

namespace
{
/// A folder's name as the tree's lines stand before it in the list.
QString Name_Of(const QString &line)
{
    static const QRegularExpression branches(QStringLiteral("^[\\s\u2500-\u257F]+"));
    return QString(line).remove(branches).trimmed();
}
} // namespace

Folder_Box::Folder_Box(QWidget *parent) : QComboBox(parent)
{
    connect(this, &QComboBox::currentIndexChanged, this, [this] { setToolTip(Plain_Tip(Path())); });
}

void Folder_Box::Fill()
{
    const QVariant chosen = currentData();
    Folder_Combo combo{QStringLiteral("Comb_Cate"), {}};
    Reload_Cate(combo);
    clear();
    for (qsizetype i = 0; i < combo.items.size(); ++i)
        addItem(combo.items[i], Cate_ID_List().value(i));
    setCurrentIndex(chosen.isValid() ? findData(chosen) : 0);
}

void Folder_Box::Choose(const QString &id)
{
    setCurrentIndex(findData(id));
}

QString Folder_Box::Path() const
{
    constexpr qsizetype Level = 3; // characters of an id
    const QString id = Chosen();
    QStringList names;
    for (qsizetype end = Level; end < id.size(); end += Level) {
        if (const int row = findData(id.left(end)); row >= 0)
            names << Name_Of(itemText(row));
    }
    names << Name_Of(currentText());
    return names.join(QStringLiteral(" / "));
}

void Folder_Box::paintEvent(QPaintEvent * /*event*/)
{
    QStylePainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    const QRect room = style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    option.currentText = fontMetrics().elidedText(Path(), Qt::ElideLeft, room.width());
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}
