// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

/// Five stars that one clicks, or sets with the arrow keys and the digits. Its text is five characters, as in "★★☆☆☆",
/// or
/// "" for a document that was never rated.
class Star_Field : public QWidget
{
    Q_OBJECT

public:
    explicit Star_Field(QWidget *parent = nullptr);

    [[nodiscard]] QString Text() const { return m_text; }
    void Set_Text(const QString &text);
    [[nodiscard]] int Stars() const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

signals:
    /// The user set another number.
    void Edited();

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void Choose(int stars);
    [[nodiscard]] int Star_Width() const;

    QString m_text;
};
