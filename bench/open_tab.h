// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/no_shell.h"
#include "ui/document/document_tabs.h"

#include <QApplication>
#include <QWidget>
#include <benchmark/benchmark.h>

/// Opens a document in a tab and closes it again; the closing does not count.
inline void Open_In_A_Tab(benchmark::State &state, const QString &id)
{
    No_Shell shell;
    Document_Tabs tabs(shell, nullptr);
    tabs.Add_List(new QWidget, QStringLiteral("List"));
    tabs.resize(1000, 700);
    tabs.show();
    for ([[maybe_unused]] auto _ : state) {
        tabs.Open(id);
        QApplication::processEvents();
        state.PauseTiming();
        tabs.Close(1);
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        state.ResumeTiming();
    }
}
