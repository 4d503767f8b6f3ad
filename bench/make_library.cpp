// SPDX-License-Identifier: GPL-3.0-or-later
#include "library.h"
#include "platform/errors/run_time_error.h"

#include <QCommandLineParser>
#include <QGuiApplication>
#include <cstdio>

using namespace Qt::StringLiterals;

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    QCommandLineParser options;
    options.setApplicationDescription(u"Makes a library of documents for measurements."_s);
    options.addHelpOption();
    options.addOption({u"docs"_s, u"documents"_s, u"N"_s, u"100000"_s});
    options.addOption({u"folders"_s, u"folders, the recycle bin among them"_s, u"M"_s, u"2000"_s});
    options.addOption({u"seed"_s, u"another seed, another library"_s, u"S"_s, u"1"_s});
    options.addOption({u"paragraphs"_s, u"paragraphs of the longest text"_s, u"P"_s, u"8"_s});
    options.addOption({u"out"_s, u"the new file"_s, u"FILE"_s});
    options.process(application);
    if (!options.isSet(u"out"_s))
        options.showHelp(2);
    try {
        Make_Library({options.value(u"docs"_s).toInt(), options.value(u"folders"_s).toInt(),
                      options.value(u"seed"_s).toUInt(), options.value(u"out"_s),
                      options.value(u"paragraphs"_s).toInt()});
        return 0;
    } catch (const Run_Time_Error &error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
