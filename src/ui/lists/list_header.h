// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHeaderView>

/// The head of the document list. The mark of the sorted column stands in its caption, where it is read aloud and
/// asked for; on screen the skin's own arrow takes its place.
class List_Header : public QHeaderView
{
    Q_OBJECT

public:
    explicit List_Header(QWidget *parent = nullptr) : QHeaderView(Qt::Horizontal, parent)
    {
        setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
        setSectionsClickable(true);
    }

    static constexpr QChar Ascending_Mark = QChar(u'△');
    static constexpr QChar Descending_Mark = QChar(u'▽');

protected:
    void initStyleOptionForIndex(QStyleOptionHeader *option, int logicalIndex) const override
    {
        QHeaderView::initStyleOptionForIndex(option, logicalIndex);
        if (option->text.endsWith(Ascending_Mark) || option->text.endsWith(Descending_Mark))
            option->text.chop(1);
    }
};
