// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/kit/ctrl_language.h"

#include <QTimer>
#include <QWidget>
#include <memory>

class QMenu;
class QMimeData;
namespace Ui
{
class Frm_OnTop;
}

/// The floating window: one image, always on top and translucent. It is moved with the mouse, and takes what is dropped
/// on it. It knows where it stood, and comes back when that is off all screens.
class Frm_OnTop : public QWidget
{
    Q_OBJECT

public:
    Frm_OnTop();
    ~Frm_OnTop() override;

    /// Its menu, and the entry of a name.
    [[nodiscard]] QMenu *Menu() const;
    [[nodiscard]] QAction *Entry(const char *name) const;
    /// What the tip says of the folder that takes what is dropped.
    void Show_Folder(const QString &name);
    /// Writes its place to the settings.
    void Save_Place();
    /// Why this desktop may not keep it on top, "" where it does.
    [[nodiscard]] QString Limits_Of_Desktop() const;

signals:
    /// Files were dropped; what is no file is left out.
    void Files_Dropped(const QStringList &paths);
    /// Anything else was dropped. The data go with the call.
    void Content_Dropped(const QMimeData &content);
    void Window_Wanted();

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void moveEvent(QMoveEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    enum class Move { None, Possible, Of_Desktop, Own };

    void Take_Place();
    void Come_On_Screen();
    void Shape();
    void Set_Lit(bool lit);

    std::unique_ptr<Ui::Frm_OnTop> m_ui;
    ctrlLanguage m_lang{*this, QStringLiteral("Frm_OnTop")};
    QTimer m_placeSettled;
    QPoint m_pressed;
    Move m_move = Move::None;
    bool m_lit = false;
};
