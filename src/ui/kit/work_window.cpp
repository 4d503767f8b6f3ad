// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/work_window.h"

#include "core/language_pack.h"
#include "platform/prompts/prompts.h"
#include "ui/kit/ctrl_language.h"
#include "ui_frm_work.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDialog>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QLocale>
#include <QScopedValueRollback>
#include <QThread>
#include <QTime>
#include <QTimer>
#include <atomic>
#include <exception>
#include <mutex>

namespace
{
constexpr int Shown_After = 500;   // milliseconds
constexpr int Drawn_Every = 100;   // milliseconds
constexpr int Guess_After = 2'000; // milliseconds: before, nobody knows how long it takes

/// How far the work is, told by its thread and read by the window's.
class Progress : public Work
{
public:
    bool Next(qint64 done, qint64 all, const QString &name) override
    {
        const std::lock_guard lock(m_mutex);
        m_done = done;
        m_all = all;
        m_name = name;
        return !m_calledOff;
    }
    void Call_Off() { m_calledOff = true; }
    void Read(qint64 &done, qint64 &all, QString &name) const
    {
        const std::lock_guard lock(m_mutex);
        done = m_done;
        all = m_all;
        name = m_name;
    }

private:
    mutable std::mutex m_mutex;
    qint64 m_done = 0;
    qint64 m_all = 0;
    QString m_name;
    std::atomic<bool> m_calledOff = false;
};

class Frm_Work : public QDialog
{
public:
    Frm_Work(QWidget *parent, const QString &title, Progress &progress, bool canEnd, QString question)
        : QDialog(parent), m_progress(progress), m_canEnd(canEnd), m_question(std::move(question))
    {
        m_ui.setupUi(this);
        ctrlLanguage(*this, QStringLiteral("Frm_Work")).LoadControlsCaption();
        m_ui.Cmd_Cancel->setVisible(canEnd);
        setWindowTitle(title);
        setWindowModality(Qt::ApplicationModal);
        connect(m_ui.Cmd_Cancel, &QPushButton::clicked, this, &Frm_Work::reject);
        connect(&m_timer, &QTimer::timeout, this, &Frm_Work::Draw);
        m_timer.start(Drawn_Every);
        m_clock.start();
    }

    /// Calling off takes until the item that is under way is done.
    void reject() override
    {
        if (!m_canEnd || !m_ui.Cmd_Cancel->isEnabled())
            return;
        if (!m_question.isEmpty() && Prompts::Ask(m_question, windowTitle(), Prompts::Choice::Yes_No,
                                                  Prompts::Answer::No) != Prompts::Answer::Yes)
            return;
        m_progress.Call_Off();
        m_ui.Cmd_Cancel->setEnabled(false);
        m_ui.Lab_Count->setText(Pack_Text("Frm_Work", "_Stopping"));
        m_timer.stop();
    }

    /// A window that came after a question would keep its answer out.
    void Run_Question(const std::function<void()> &question)
    {
        const QScopedValueRollback asking(m_isAsking, true);
        question();
    }

private:
    void Draw()
    {
        if (!isVisible() && !m_isAsking && m_clock.hasExpired(Shown_After))
            show();
        qint64 done = 0;
        qint64 all = 0;
        QString name;
        m_progress.Read(done, all, name);
        constexpr int Whole = 1000;
        m_ui.Bar_Work->setRange(0, all > 0 ? Whole : 0);
        m_ui.Bar_Work->setValue(all > 0 ? static_cast<int>(done * Whole / all) : 0);
        m_ui.Lab_Name->setText(m_ui.Lab_Name->fontMetrics().elidedText(name, Qt::ElideMiddle, m_ui.Lab_Name->width()));
        m_ui.Lab_Count->setText(Count_Text(done, all));
    }
    [[nodiscard]] QString Count_Text(qint64 done, qint64 all) const
    {
        const QLocale locale;
        if (all <= 0)
            return done > 0 ? locale.toString(done) : QString();
        QString text = Pack_Text("Frm_Work", "_Count").arg(locale.toString(done), locale.toString(all));
        if (done > 0 && m_clock.hasExpired(Guess_After)) {
            constexpr qint64 Second = 1000;
            const qint64 left = (m_clock.elapsed() * (all - done) / done + Second - 1) / Second;
            text += Pack_Text("Frm_Work", "_Left")
                        .arg(QTime(0, 0)
                                 .addSecs(static_cast<int>(left))
                                 .toString(left < 3600 ? QStringLiteral("m:ss") : QStringLiteral("h:mm:ss")));
        }
        return text;
    }

    Ui::Frm_Work m_ui;
    Progress &m_progress;
    bool m_canEnd;
    QString m_question;
    bool m_isAsking = false;
    QTimer m_timer;
    QElapsedTimer m_clock;
};

/// While it lives, mouse and keys reach the window of the work only, from the first moment on, and those of questions.
class Only_This_Window : public QObject
{
public:
    explicit Only_This_Window(QWidget &window) : m_window(window), m_before(QApplication::activeModalWidget())
    {
        qApp->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
        case QEvent::KeyPress:
        case QEvent::Shortcut:
        case QEvent::ShortcutOverride:
        case QEvent::Wheel:
        case QEvent::Drop:
        case QEvent::Close:
            break;
        default:
            return false;
        }
        const auto *widget = qobject_cast<QWidget *>(watched);
        const QWidget *modal = QApplication::activeModalWidget();
        const QWidget *allowed = modal == nullptr || modal == m_before ? &m_window : modal;
        return widget != nullptr && widget->window() != allowed && QApplication::activePopupWidget() == nullptr;
    }

private:
    QWidget &m_window;
    const QWidget *m_before; ///< the form that began the work, where it is modal
};

Frm_Work *Present_Window = nullptr;

void Run_In_Thread(QWidget *parent, const QString &title, bool canEnd, const std::function<void(Work &)> &body,
                   const QString &question = {})
{
    Progress progress;
    Frm_Work window(parent, title, progress, canEnd, question);
    const Only_This_Window only(window);
    std::exception_ptr failure;
    QEventLoop loop;
    const std::unique_ptr<QThread> thread(QThread::create([&] {
        try {
            body(progress);
        } catch (...) {
            failure = std::current_exception();
        }
    }));
    QObject::connect(thread.get(), &QThread::finished, &loop, &QEventLoop::quit);
    Present_Window = &window;
    thread->start();
    loop.exec();
    thread->wait();
    Present_Window = nullptr;
    if (failure)
        std::rethrow_exception(failure);
}
} // namespace

namespace Long_Work
{
void Run(QWidget *parent, const QString &title, const std::function<void(Work &)> &body, const QString &question)
{
    Run_In_Thread(parent, title, true, body, question);
}

void Run_To_End(QWidget *parent, const QString &title, const std::function<void()> &body)
{
    Run_In_Thread(parent, title, false, [&](Work & /*work*/) { body(); });
}

void Ask(const std::function<void()> &question)
{
    if (Present_Window == nullptr || QThread::currentThread() == Present_Window->thread())
        question();
    else
        QMetaObject::invokeMethod(
            Present_Window, [&] { Present_Window->Run_Question(question); }, Qt::BlockingQueuedConnection);
}

bool Is_Under_Way()
{
    return Present_Window != nullptr;
}
} // namespace Long_Work
