// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/view_look.h"

#include "views/list_style.h"

#include <QTreeView>

void Use_Setting_Font(QTreeView &view, const QString &family, const QString &pointSize)
{
    QFont font = view.font();
    if (!family.isEmpty())
        font.setFamily(family);
    if (pointSize.toDouble() > 0)
        font.setPointSizeF(pointSize.toDouble());
    view.setFont(font);
}

void Fit_Column(QTreeView &view, int column)
{
    constexpr int Air = 16;
    view.resizeColumnToContents(column);
    view.setColumnWidth(column, view.columnWidth(column) + Air);
}

/// A style sheet and not a palette: the skin's own sheet would win against one.
void Use_Setting_Background(QTreeView &view, const QString &colorNumber)
{
    constexpr int Other_Row = 104;  // per cent of the background's darkness
    constexpr int Half_Light = 128; // of 255
    const QColor background = Chosen_Background(colorNumber);
    QString sheet;
    if (background.isValid())
        sheet = QStringLiteral("QTreeView { background-color: %1; alternate-background-color: %2; color: %3 }")
                    .arg(background.name(), background.darker(Other_Row).name(),
                         QColor(qGray(background.rgb()) > Half_Light ? Qt::black : Qt::white).name());
    if (view.styleSheet() != sheet)
        view.setStyleSheet(sheet);
}
