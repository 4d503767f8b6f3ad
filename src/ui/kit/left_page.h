// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/models/list_model.h"
#include "views/list_engine.h"

#include <QWidget>
#include <functional>

class Shell;

/// A page on the left side of the main window: what is chosen on it is listed. It is filled when it comes forward, and
/// not again before something has changed.
class Left_Page : public QWidget
{
    Q_OBJECT

public:
    /// Fills one page of the list.
    using Source = std::function<Page_Info(List_Model &list, int page)>;

    using QWidget::QWidget;

    /// What it shows may have changed.
    void Set_Stale() { m_stale = true; }
    /// Fills it anew if something has changed; what is chosen stays so and is not listed.
    void Refresh();
    /// It is on screen now: what is chosen on it is listed.
    void Come_Forward();
    /// More of what is listed is wanted; the list is filled anew after this.
    virtual void List_More() {}

signals:
    /// To be listed. @param emptyText  what stands in a list without rows
    void Chosen(const Left_Page::Source &source, const QString &emptyText);

protected:
    virtual void Fill() = 0;
    /// Emits Chosen, unless nothing is chosen.
    virtual void List_Chosen() = 0;

private:
    bool m_stale = true;
};

/// Pages that a wing brings: one row each.
namespace Left_Pages
{
struct Row {
    const char *name; ///< of the tab; its caption, and that of "Mnu_" + name, stand in the section of the main window
    const char *setting; ///< whether it is shown
    Left_Page *(*make)(Shell &shell, QWidget *parent);
};

template <class Page>
Left_Page *Make(Shell &shell, QWidget *parent)
{
    return new Page(shell, parent);
}
} // namespace Left_Pages
