// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/errors/run_time_error.h"
#include "updater/update.h"

#include <QCoreApplication>
#include <cstdio>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QString directory = QCoreApplication::applicationDirPath();
    try {
        const QList<Update::Item> items = Update::Read_List(directory + QStringLiteral("/UPDATE.RIS"), directory);
        Update::Apply(items);
        std::printf("%lld file(s) updated.\n", static_cast<long long>(items.size()));
        return 0;
    } catch (const Run_Time_Error &error) {
        std::fprintf(stderr, "Nothing was updated: %s\n", error.what());
        return 1;
    }
}
