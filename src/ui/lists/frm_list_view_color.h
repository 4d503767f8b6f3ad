// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/kit/ctrl_language.h"
#include "views/list_style.h"

#include <QDialog>
#include <QStringList>
#include <memory>
#include <optional>
#include <vector>

class QToolButton;
namespace Ui
{
class Frm_ListView_Color;
}

/// Chooses the colours in which documents stand in the list.
class Frm_ListView_Color : public QDialog
{
    Q_OBJECT

public:
    /// @param codeIds  the documents, the first of which gives the style to start with
    Frm_ListView_Color(QWidget *parent, QStringList codeIds);
    ~Frm_ListView_Color() override;

signals:
    /// The documents' style was stored.
    void Colors_Changed();

private:
    void Show_Presets();
    void Choose_Preset(int number);
    void Choose_Color(QColor &color, const QString &title);
    void Show_Preview();
    void Cmd_Apply();

    std::unique_ptr<Ui::Frm_ListView_Color> m_ui;
    ctrlLanguage m_lang{*this, QStringLiteral("Frm_ListView_Color")};
    QStringList m_codeIds;
    std::vector<QToolButton *> m_presets; ///< Txt_Color
    std::optional<Line_Style> m_style;    ///< no value for the default style
};
