// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

/// Further folders in which a document appears, beside the one it lives in (tab_VirCate).

/// The document's title, and the folder it lives in.
struct Home_Folder {
    QString title;
    QString id;
    QString name; ///< "" when the folder does not exist
};
/// @throws Run_Time_Error
Home_Folder Home_Of(const QString &codeId);

struct Membership {
    QString id;
    QString name;
};

/// Memberships of a document in folders that exist. @throws Run_Time_Error
std::vector<Membership> Memberships_Of(const QString &codeId);

/// Puts a new set in place of the old one, in one commit. The home folder is never stored. @throws Run_Time_Error
void Save_Memberships(const QString &codeId, const QString &homeId, const QStringList &folders);
