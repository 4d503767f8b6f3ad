// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/tools/frm_on_top_drop.h"

#include "arrivals/arrivals.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "core/trouble.h"
#include "platform/prompts/prompts.h"
#include "ui_frm_on_top_drop.h"

#include <QImage>
#include <QMimeData>
#include <QUrl>

namespace
{
constexpr int One_Line = 100; // percent
constexpr qsizetype Longest_Title = 100;

/// What a browser says beside an address that is dragged: "address, line end, title".
QString Title_Beside(const QMimeData &content)
{
    const QByteArray bytes = content.data(QStringLiteral("text/x-moz-url"));
    const QString text = QString::fromUtf16(reinterpret_cast<const char16_t *>(bytes.constData()), bytes.size() / 2);
    return text.section(QLatin1Char('\n'), 1, 1);
}

bool Is_Address(const QUrl &address)
{
    const QString scheme = address.scheme();
    return address.isValid() && (scheme == QLatin1String("http") || scheme == QLatin1String("https") ||
                                 scheme == QLatin1String("ftp") || scheme == QLatin1String("mailto"));
}
} // namespace

Frm_OnTop_Drop::Frm_OnTop_Drop(QWidget *parent) : QDialog(parent), m_ui(std::make_unique<Ui::Frm_OnTop_Drop>())
{
    m_ui->setupUi(this);
    m_lang.LoadControlsCaption();
    setWindowFlag(Qt::WindowStaysOnTopHint);
    m_ui->Txt_Drop->setAccessibleName(windowTitle());
    m_ui->Txt_Drop->Start_In(Config().FontName_Cont, Config().FontSize_Cont.toInt(), One_Line);
    m_ui->Comb_Cate->Fill();
    m_ui->Comb_Cate->Choose(Arrivals::Folder());
    m_kept = std::make_unique<Kept_Note>(*m_ui->Txt_Title, *m_ui->Txt_Drop);
    connect(m_ui->Cmd_Save, &QPushButton::clicked, this, &Frm_OnTop_Drop::Cmd_Save_Click);
    connect(m_ui->Cmd_Exit, &QPushButton::clicked, this, &Frm_OnTop_Drop::reject);
}

Frm_OnTop_Drop::~Frm_OnTop_Drop() = default;

void Frm_OnTop_Drop::Take(const QMimeData &content)
{
    if (content.hasUrls() && !content.hasHtml())
        Take_Address(content);
    else
        m_ui->Txt_Drop->Insert_Data(content);
    const QString beside = Title_Beside(content).simplified();
    if (!beside.isEmpty())
        m_ui->Txt_Title->setText(beside.left(Longest_Title));
    Taken();
}

void Frm_OnTop_Drop::Take_Picture(const QImage &picture, const QString &title)
{
    QMimeData content;
    content.setImageData(picture);
    m_ui->Txt_Drop->Insert_Data(content);
    m_ui->Txt_Title->setText(title);
    Taken();
}

/// An address can be followed later; nothing is asked of it now.
void Frm_OnTop_Drop::Take_Address(const QMimeData &content)
{
    QTextCursor cursor = m_ui->Txt_Drop->textCursor();
    const QTextCharFormat plain = cursor.charFormat();
    for (const QUrl &address : content.urls()) {
        QTextCharFormat format = plain;
        if (Is_Address(address)) {
            format.setAnchor(true);
            format.setAnchorHref(QString::fromLatin1(address.toEncoded()));
            format.setFontUnderline(true);
        }
        cursor.insertText(address.toDisplayString(), format);
        cursor.insertText(QStringLiteral("\n"), plain);
    }
}

void Frm_OnTop_Drop::Taken()
{
    constexpr qsizetype Title_From_Text = 30;
    m_ui->Txt_Drop->moveCursor(QTextCursor::Start);
    if (m_ui->Txt_Title->text().isEmpty())
        m_ui->Txt_Title->setText(m_ui->Txt_Drop->toPlainText()
                                     .remove(QChar::ObjectReplacementCharacter)
                                     .trimmed()
                                     .section(QLatin1Char('\n'), 0, 0)
                                     .simplified()
                                     .left(Title_From_Text));
    m_ui->Txt_Title->setCursorPosition(0);
    m_ui->Txt_Title->setFocus();
    m_ui->Txt_Drop->document()->setModified(false);
    m_ui->Txt_Title->setModified(false);
}

void Frm_OnTop_Drop::Cmd_Save_Click()
{
    const auto refuse = [this](const char *key, QWidget &field) {
        Prompts::Message(m_lang.GetString(key), App().App_Title, Prompts::Icon::Exclamation);
        field.setFocus();
    };
    const QString folder = m_ui->Comb_Cate->Chosen();
    const QString title = m_ui->Txt_Title->text().trimmed();
    if (folder.isEmpty())
        return refuse("_SelectDir", *m_ui->Comb_Cate);
    if (title.isEmpty() || title.size() > Longest_Title)
        return refuse("_Title", *m_ui->Txt_Title);
    const QString id = Arrivals::Take_Note(*m_ui->Txt_Drop->document(), title, folder);
    if (id.isEmpty())
        return Prompts::Message(m_lang.GetString("_Not_Stored", "Frm_Note") + Last_Trouble(), App().App_Title,
                                Prompts::Icon::Exclamation);
    m_kept->Remove();
    emit Stored(id, folder, m_lang.GetString("_AddSucc"));
    accept();
}

void Frm_OnTop_Drop::reject()
{
    const bool typed = m_ui->Txt_Drop->document()->isModified() || m_ui->Txt_Title->isModified();
    if (typed && Prompts::Ask(m_lang.GetString("_Give_Up"), App().App_Title, Prompts::Choice::Yes_No,
                              Prompts::Answer::No) != Prompts::Answer::Yes)
        return;
    m_kept->Remove();
    QDialog::reject();
}
