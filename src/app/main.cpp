// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/main_startup.h"
#include "app/other_user.h"
#include "app/second_start.h"
#include "core/error_log.h"
#include "core/error_text.h"
#include "core/process_state.h"
#include "platform/desktop/desktop_kind.h"
#include "platform/desktop/plain_labels.h"
#include "platform/desktop/single_instance.h"
#include "platform/files/door.h"
#include "platform/prompts/prompts.h"
#include "ui/kit/dialog_finish.h"
#include "ui/kit/logo_view.h"

#include <QApplication>
#include <QProcess>

namespace
{
/// A failure that no procedure trapped ends what the user asked for, not the program with what is typed in it.
class Program : public QApplication
{
public:
    using QApplication::QApplication;

    bool notify(QObject *receiver, QEvent *event) override
    {
        return Trap(
            QStringLiteral("Main\\notify"), [&] { return QApplication::notify(receiver, event); },
            [] { Prompts::Message(Error_Text(Err()), App().Box_Title, Prompts::Icon::Exclamation); });
    }
};
} // namespace

int main(int argc, char **argv)
{
    Program application(argc, argv);
    QApplication::setApplicationName(App().App_Title);
    QGuiApplication::setDesktopFileName(QLatin1String(Desktop_Kind::Application_Id));
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setWindowIcon(Program_Icon());
    Keep_Labels_Plain();
    Finish_Dialogs();
    App().App_Path = QCoreApplication::applicationDirPath() + QLatin1Char('/');
    Files::Guard(App().App_Path);

    Single_Instance instance(App().App_Path);
    if (!instance.Is_Only_One()) {
        if (instance.Is_Held_By_Other_User())
            Tell_Of_Other_User();
        else
            Second_Start::Tell();
        return 0;
    }
    Start_Up startUp;
    if (startUp.Main())
        return QApplication::exec();
    if (startUp.Wants_Restart()) {
        instance.Release();
        QProcess::startDetached(QCoreApplication::applicationFilePath(), {});
    }
    return 0;
}
