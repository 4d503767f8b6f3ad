// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QString>
#include <vector>

/// One document of a backlog that is spread over days.
struct New_Reading {
    QString code_id;
    QString title;
    QString from; ///< Code_ReadDateNext as it is, in the short form
    QString to;
};
using Backlog_Plan = std::vector<New_Reading>;

/// What is overdue, in equal parts over `days` days from today on; the oldest and most important come first. Nothing
/// is changed yet. Errors go under "Frm_Main\Plan_Backlog".
Backlog_Plan Plan_Backlog(const QDate &today, int days);
/// Gives the documents of a plan their new dates, in one commit. One whose date is no longer as the plan says keeps
/// it. Errors go under "Frm_Main\Apply_Backlog"; Last_Trouble (core/trouble.h) tells them.
bool Apply_Backlog(const Backlog_Plan &plan);
/// The plan that takes another one back.
Backlog_Plan Turned_Back(Backlog_Plan plan);
