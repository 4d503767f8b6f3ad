// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <functional>

/// Other programs, which are run without a shell and waited for, within bounds.
namespace Programs
{
/// Where the first of several programs stands that is installed; "" for none.
QString Find(const QStringList &names);

struct Call {
    QString program;
    QStringList arguments;
    QString folder;              ///< where it runs; "" for where this program does
    QStringList environment;     ///< "NAME=value", instead of what this program has under these names
    QStringList not_environment; ///< names that it is not to have
};

/// What it may take. The machine holds it to all but the time and the output, whatever becomes of this program.
struct Bounds {
    int time = 30'000;          ///< milliseconds
    qint64 memory = 0;          ///< bytes, 0 for no bound
    int processor_seconds = 60; ///< of each of its processes
    qint64 file_size = 0;       ///< bytes of a file that it writes
    qint64 output = 0;          ///< bytes of its output that are wanted; with more it has done enough
};

enum class End {
    Well,
    Badly,
    Not_Started,
    Out_Of_Time,
    Stopped,
};

struct Outcome {
    End end = End::Not_Started;
    QByteArray output;
};

/// Runs a program to its end. One that is ended takes along what it has started itself.
/// @param goOn  asked many times a second; the answer false ends the program
Outcome Run(const Call &call, const Bounds &bounds, const std::function<bool()> &goOn);
} // namespace Programs
