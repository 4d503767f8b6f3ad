// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QString>
#include <deque>
#include <optional>
#include <vector>

/// A document whose next reading has come.
struct Due_Document {
    QString code_id;
    QString title;
    int stars = 0;
    QString next; ///< Code_ReadDateNext in the short form
};

/// What is due on a day or before, outside of the recycle bin: the oldest day first, on one day the most important
/// first. @throws Run_Time_Error
std::vector<Due_Document> Due_Documents(const QDate &last_day);

/// The documents of one review, one after the other. Leaving at any time loses nothing: each score is stored at once.
class Review_Session
{
public:
    /// Takes what is due today. Errors go under "Frm_Main\Review"; nothing is due then.
    void Begin(const QDate &today);
    /// The next document whose date is still the one that made it due: one that was scored elsewhere meanwhile, or is
    /// gone, is passed over. No value at the end. Errors as above; they end the session.
    std::optional<Due_Document> Next();
    /// Documents behind the one that Next gave last.
    [[nodiscard]] int Left() const { return static_cast<int>(m_queue.size()); }

private:
    std::deque<Due_Document> m_queue;
};
