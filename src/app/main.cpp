// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/main_startup.h"
#include "core/process_state.h"
#include "platform/desktop/single_instance.h"
#include "ui/logo_view.h"

#include <QApplication>
#include <QProcess>

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(App().App_Title);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setWindowIcon(Program_Icon());
    App().App_Path = QCoreApplication::applicationDirPath() + QLatin1Char('/');

    Single_Instance instance(App().App_Path);
    if (!instance.Is_Only_One())
        return 0;
    Start_Up startUp;
    if (startUp.Main())
        return QApplication::exec();
    if (startUp.Wants_Restart()) {
        instance.Release();
        QProcess::startDetached(QCoreApplication::applicationFilePath(), {});
    }
    return 0;
}
