// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/window/frm_keys.h"

#include "ui_frm_keys.h"

#include <QAction>
#include <QHeaderView>
#include <QRegularExpression>
#include <QTreeWidget>

namespace
{
/// A caption without access key and dots.
QString Plain(const QString &caption)
{
    static const QRegularExpression menuOnly(QStringLiteral("\\(&\\w\\)|&|\\.\\.\\.$"));
    return QString(caption).remove(menuOnly);
}

QString Keys_Of(const QAction &action)
{
    QStringList keys;
    for (const QKeySequence &key : action.shortcuts())
        keys << key.toString(QKeySequence::NativeText);
    return keys.join(QStringLiteral("   "));
}
} // namespace

Frm_Keys::Frm_Keys(const std::vector<Key_Group> &groups, QWidget *parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::Frm_Keys>()), m_lang(*this, QStringLiteral("Frm_Keys"))
{
    m_ui->setupUi(this);
    m_lang.LoadControlsCaption();
    m_ui->LV_Keys->setAccessibleName(windowTitle());
    m_ui->LV_Keys->header()->setStretchLastSection(true);
    Fill(groups);
    connect(m_ui->Txt_Filter, &QLineEdit::textChanged, this, &Frm_Keys::Filter);
    connect(m_ui->Cmd_Exit, &QPushButton::clicked, this, &QDialog::reject);
}

Frm_Keys::~Frm_Keys() = default;

void Frm_Keys::Fill(const std::vector<Key_Group> &groups)
{
    QTreeWidget &sheet = *m_ui->LV_Keys;
    for (const Key_Group &group : groups) {
        auto *head = new QTreeWidgetItem({Plain(group.caption), QString()});
        QFont bold = sheet.font();
        bold.setBold(true);
        head->setFont(0, bold);
        head->setFlags(Qt::ItemIsEnabled);
        for (const QAction *action : group.actions) {
            if (!action->shortcut().isEmpty())
                head->addChild(new QTreeWidgetItem({Plain(action->text()), Keys_Of(*action)}));
        }
        if (head->childCount() == 0) {
            delete head;
            continue;
        }
        sheet.addTopLevelItem(head);
        head->setFirstColumnSpanned(true);
    }
    sheet.expandAll();
    sheet.resizeColumnToContents(0);
}

void Frm_Keys::Filter(const QString &text)
{
    const QString sought = text.trimmed();
    for (int i = 0; i < m_ui->LV_Keys->topLevelItemCount(); ++i) {
        QTreeWidgetItem *head = m_ui->LV_Keys->topLevelItem(i);
        bool any = false;
        for (int j = 0; j < head->childCount(); ++j) {
            const bool fits = head->child(j)->text(0).contains(sought, Qt::CaseInsensitive) ||
                              head->child(j)->text(1).contains(sought, Qt::CaseInsensitive);
            head->child(j)->setHidden(!fits);
            any = any || fits;
        }
        head->setHidden(!any);
    }
}
