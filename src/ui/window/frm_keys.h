// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/kit/ctrl_language.h"

#include <QDialog>
#include <memory>
#include <vector>

class QAction;
namespace Ui
{
class Frm_Keys;
}

/// One group of commands on the sheet of keys.
struct Key_Group {
    QString caption;
    QList<QAction *> actions; ///< those without a key are left out
};

/// The sheet of all keys.
class Frm_Keys : public QDialog
{
    Q_OBJECT

public:
    explicit Frm_Keys(const std::vector<Key_Group> &groups, QWidget *parent = nullptr);
    ~Frm_Keys() override;

private:
    void Fill(const std::vector<Key_Group> &groups);
    void Filter(const QString &text);

    std::unique_ptr<Ui::Frm_Keys> m_ui;
    ctrlLanguage m_lang;
};
