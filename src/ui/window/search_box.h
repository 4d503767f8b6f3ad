// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLineEdit>
#include <QTimer>

/// The field of the tool bar from which everything is searched: it searches while one types, after a moment.
class Search_Box : public QLineEdit
{
    Q_OBJECT

public:
    explicit Search_Box(QWidget *parent);

    /// Shows what is searched elsewhere; nothing is told.
    void Show_Key(const QString &key);
    [[nodiscard]] QSize sizeHint() const override;

signals:
    /// To be searched. @param finished  by Enter; else while it is typed
    void Wanted(const QString &key, bool finished);
    /// The key was taken away.
    void Cleared();
    /// The keyboard is to go on to the rows.
    void Rows_Wanted();

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    QTimer m_typing;
    bool m_showing = false; ///< a key comes from elsewhere
};
