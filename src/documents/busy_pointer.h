// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCursor>
#include <QGuiApplication>

/// The busy mouse pointer for as long as it lives.
class Busy_Pointer
{
public:
    Busy_Pointer() { QGuiApplication::setOverrideCursor(QCursor(Qt::WaitCursor)); }
    ~Busy_Pointer() { QGuiApplication::restoreOverrideCursor(); }
    Busy_Pointer(const Busy_Pointer &) = delete;
    Busy_Pointer &operator=(const Busy_Pointer &) = delete;
};
