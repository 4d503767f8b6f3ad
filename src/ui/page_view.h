// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTextBrowser>

/// Shows a stored web page safely: no scripts run, nothing is fetched from a network. Pictures come from the picture
/// directory and other files of this machine. A link is opened outside, after a question.
class Page_View : public QTextBrowser
{
    Q_OBJECT

public:
    explicit Page_View(QWidget *parent = nullptr);

    void Show_Page(const QString &page);

protected:
    QVariant loadResource(int type, const QUrl &name) override;

private:
    void Open_Link(const QUrl &link);
};
