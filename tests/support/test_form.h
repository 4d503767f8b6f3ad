// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "documents/document_form.h"

#include <QTextDocument>

/// A document form with panes of its own, filled as the form of a new document in folder "001".
struct Test_Form : Document_Form {
    explicit Test_Form(const QString &text = {})
    {
        content = &m_content;
        memo = &m_memo;
        sum = &m_sum;
        title = QStringLiteral("A title");
        folder = QStringLiteral("001");
        create_date = QStringLiteral("2026-03-04");
        update_date = QStringLiteral("2026-03-05");
        type = QStringLiteral("RTF");
        m_content.setPlainText(text);
    }

private:
    QTextDocument m_content;
    QTextDocument m_memo;
    QTextDocument m_sum;
};
