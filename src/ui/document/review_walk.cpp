// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/document/review_walk.h"

#include "core/language_pack.h"
#include "platform/machine/machine.h"
#include "ui/document/frm_doc_standard.h"
#include "ui/kit/ctrl_language.h"
#include "ui/kit/icons.h"
#include "ui/kit/shell.h"

#include <QMenu>
#include <utility>

Review_Walk::Review_Walk(QMenu &menu, Document_Tabs &tabs, Shell &shell) : QObject(&tabs), m_tabs(tabs), m_shell(shell)
{
    auto *command = new QAction(Line_Icon(QStringLiteral("refresh")), {}, this);
    command->setObjectName(QStringLiteral("Mnu_Review"));
    Set_Caption(*command, Pack_Text("Frm_Main", "_Review"));
    command->setShortcut(Qt::CTRL | Qt::ALT | Qt::Key_R);
    menu.addAction(command);
    connect(command, &QAction::triggered, this, &Review_Walk::Begin);
    // Behind what the score itself sets off: the form may close now.
    connect(&m_tabs, &Document_Tabs::Scored, this, &Review_Walk::Take_Score, Qt::QueuedConnection);
}

void Review_Walk::Begin()
{
    m_session.Begin(Machine::Now().date());
    m_id.clear();
    Open_Next();
}

void Review_Walk::Open_Next()
{
    const bool begins = m_id.isEmpty();
    const std::optional<Due_Document> next = m_session.Next();
    m_id = next ? next->code_id : QString();
    if (!next)
        return m_shell.Set_Status(Pack_Text("Frm_Main", begins ? "_Review_None" : "_Review_Done"));
    m_shell.Open_Document(m_id);
    m_shell.Set_Status(Filled(Pack_Text("Frm_Main", "_Review_Left"), {QString::number(m_session.Left())}));
}

/// A document that was only read makes room for the next one; one with unsaved text stays.
void Review_Walk::Take_Score(const QString &code_id)
{
    if (code_id.isEmpty() || code_id != m_id)
        return;
    const int tab = m_tabs.Find(code_id);
    const Frm_Doc_Standard *document = m_tabs.Current_Document();
    if (tab > 0 && document != nullptr && document->Code_Id() == code_id && !document->Is_Changed())
        m_tabs.Close(tab);
    Open_Next();
}
