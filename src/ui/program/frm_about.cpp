// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/program/frm_about.h"

#include "core/process_state.h"
#include "platform/errors/run_time_error.h"
#include "ui_frm_about.h"

#include <QFileDialog>
#include <QImageReader>
#include <QTextDocument>
#include <QTextEdit>
#include <QTreeView>
#include <chrono>

namespace
{
using namespace std::chrono_literals;
constexpr auto State_Interval = 400ms;
constexpr int Most_Dots = 3;

bool Rich_Text_Works()
{
    QTextDocument document;
    document.setHtml(QStringLiteral("<b>Zelqor</b>"));
    QTextEdit editor;
    editor.setDocument(&document);
    return editor.toPlainText() == QLatin1String("Zelqor");
}

bool File_Dialog_Works()
{
    QFileDialog dialog;
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    return dialog.layout() != nullptr; // its own widgets are made with the option
}

bool Tree_Works()
{
    const QTreeView tree;
    return tree.viewport() != nullptr;
}

bool Icons_Work()
{
    return !Program_Icon().pixmap(16).isNull();
}

struct Component {
    const char *name;
    bool (*works)();
};

constexpr Component Components[] = {
    {"rich text editor", Rich_Text_Works},
    {"file dialog", File_Dialog_Works},
    {"tree view", Tree_Works},
    {"SVG icon engine", Icons_Work},
};

/// Formats of the pictures that documents and icon folders hold; each is a plug-in that an installation may lack.
constexpr const char *Picture_Formats[] = {"bmp", "gif", "ico", "jpeg", "png", "svg"};

/// Name of the first part that cannot be made, "" when all is there.
QString Missing_Component()
{
    for (const Component &component : Components) {
        if (!component.works())
            return QLatin1String(component.name);
    }
    const QList<QByteArray> formats = QImageReader::supportedImageFormats();
    for (const char *format : Picture_Formats) {
        if (!formats.contains(format))
            return QStringLiteral("picture format ") + QLatin1String(format);
    }
    return {};
}
} // namespace

Frm_About::Frm_About(Role role, QWidget *parent) : QDialog(parent), m_ui(std::make_unique<Ui::Frm_About>())
{
    m_ui->setupUi(this);
    Tmr_State.setObjectName(QStringLiteral("Tmr_State"));
    Tmr_State.setInterval(State_Interval);
    Load_Lang();
    const QString missing = Missing_Component();
    if (!missing.isEmpty())
        throw Run_Time_Error(Error_Number::Missing_Component, Lang.GetString("_Missing") + missing,
                             Failure::Missing_Component);
    const bool splash = role == Role::Splash;
    setWindowFlags((splash ? Qt::SplashScreen : Qt::Dialog) | Qt::FramelessWindowHint);
    m_ui->Cmd_Exit->setVisible(!splash);
    Show_Title();
    Set_State(splash ? Lang.GetString("_Loading") : Lang.GetString("_License"));
    connect(&Tmr_State, &QTimer::timeout, this, &Frm_About::Tmr_State_Timer);
    connect(m_ui->Cmd_Exit, &QPushButton::clicked, this, &Frm_About::accept);
}

Frm_About::~Frm_About() = default;

void Frm_About::Load_Lang()
{
    Lang.LoadControlsCaption();
    m_ui->lblVersion->setText(m_ui->lblVersion->text() + QLatin1Char(' ') + Version_Text());
    m_ui->Img_Logo->setAccessibleName(App().App_Title);
}

void Frm_About::Show_Title()
{
    QFont large = font();
    large.setPointSizeF(large.pointSizeF() * 2.6);
    large.setWeight(QFont::DemiBold);
    m_ui->lblTitle->setFont(large);
    for (QLabel *quiet : {m_ui->lblVersion, m_ui->lblState})
        quiet->setForegroundRole(QPalette::PlaceholderText);
}

void Frm_About::Set_State(const QString &state)
{
    m_state = state;
    m_ui->lblState->setText(state);
}

void Frm_About::Set_Login_Uname(const QString &name)
{
    m_ui->Login_Uname->setText(name);
}

QString Frm_About::Login_Uname() const
{
    return m_ui->Login_Uname->text();
}

void Frm_About::Tmr_State_Timer()
{
    m_ticks = (m_ticks + 1) % (Most_Dots + 1);
    m_ui->lblState->setText(m_state + QString(m_ticks, QLatin1Char('.')));
}
