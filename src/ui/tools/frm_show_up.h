// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "arrivals/version_notice.h"
#include "ui/kit/ctrl_language.h"

#include <QFrame>
#include <QTimer>
#include <memory>

class QVariantAnimation;
namespace Ui
{
class frm_ShowUp;
}

/// A notice that slides in at the lower edge of the screen and leaves by itself, unless the pointer is on it. It takes
/// the keyboard from nobody.
class frm_ShowUp : public QFrame
{
    Q_OBJECT

public:
    explicit frm_ShowUp(const Version_Notice &notice);
    ~frm_ShowUp() override;

    void Slide_In();

signals:
    /// The user asks for the page.
    void Page_Wanted(const QUrl &page);

protected:
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void Slide(bool in);

    std::unique_ptr<Ui::frm_ShowUp> m_ui;
    ctrlLanguage m_lang{*this, QStringLiteral("frm_ShowUp")};
    QVariantAnimation *m_slide;
    QTimer m_stay;
};
