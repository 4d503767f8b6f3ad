// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QUrl>
#include <optional>

/// What the file update.txt says of the newest version: lines "Version=2.6.0" and "Page=https://...", in any order and
/// case; other lines say nothing. Whoever wrote it, it names a version and a page, and nothing of it is run or fetched.
struct Version_Notice {
    QString version;
    QUrl page;

    static constexpr qint64 Longest_File = 64 * 1024;
    /// None where it is not such a file: no version, or no address of a web page.
    static std::optional<Version_Notice> Read(const QByteArray &file);
    /// Numbers are compared, part by part.
    [[nodiscard]] bool Is_Newer_Than(const QString &other) const;
};

/// Whether the period of the setting COB_UPDATE ("D", "W", "M", a blank for never) is over.
/// @param last  the setting COB_UPDATE_DATE; one that lies ahead, or is no date, is over
bool Is_Check_Due(const QString &period, const QString &last, const QDateTime &now);
