// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>

/// Long work as its procedure sees it. Who runs it (a window with a progress bar, a thread, a test) is not the
/// procedure's business.
class Work
{
public:
    virtual ~Work() = default;
    /// To be said before each item.
    /// @param done  items that are behind
    /// @param all   how many there are, 0 while that is not known
    /// @param name  what the user sees of the item
    /// @returns false when the work is called off: the procedure ends before this item, and what is done stays
    virtual bool Next(qint64 done, qint64 all, const QString &name) = 0;
};

/// Work that nobody watches or calls off.
class Unwatched_Work : public Work
{
public:
    bool Next(qint64 /*done*/, qint64 /*all*/, const QString & /*name*/) override { return true; }
};

/// An item that failed, and why, in the user's language.
struct Failed_Item {
    QString name;
    QString reason;
};

/// How long work ended.
struct Work_Result {
    qint64 done = 0;
    QList<Failed_Item> failed;
    bool stopped = false; ///< called off before its end
};
