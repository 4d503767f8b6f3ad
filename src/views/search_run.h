// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/process_state.h"
#include "views/list_engine.h"

#include <QObject>
#include <QThread>
#include <atomic>
#include <memory>
#include <optional>

/// How a search ended.
struct Search_Outcome {
    Condition_Rows found;
    bool stopped = false; ///< by the user; nothing but what was found early is known then
    Pending_Error error;  ///< number 0 for none
};

/// A search in a thread of its own, with a connection of its own, so that the window stays alive. It gives way to
/// whoever writes into the database meanwhile and begins anew.
class Search_Run : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;
    /// Stops a running search and waits for its end.
    ~Search_Run() override;

    /// Starts listing by a condition; a search that is running is stopped and forgotten, and this one follows it.
    void Start(const QString &where, const QString &searchKey, int limit);
    /// Asks the running search to stop; Finished follows.
    void Stop();
    /// Stops the running search, if any, without a word, and waits until it has let the file go.
    void Forget();
    [[nodiscard]] bool Is_Running() const { return m_thread != nullptr; }

signals:
    /// @param documents  those looked at so far; @param all  those to look at, 0 while that is not known
    void Progressed(qint64 documents, qint64 all);
    /// The first rows found so far, in their order: more may still come between them. Theirs to move from.
    void Found_Early(const std::shared_ptr<Condition_Rows> &found);
    /// The outcome is the receiver's to move from.
    void Finished(const std::shared_ptr<Search_Outcome> &outcome);

private:
    /// What a search is to list.
    struct Request {
        QString where;
        QString searchKey;
        int limit = 0;
        List_Setting setting;
    };
    void Begin(const Request &request);
    void End(const std::shared_ptr<Search_Outcome> &outcome);
    void Run(const Request &request, Search_Outcome &outcome);
    void Search_Once(const Request &request, Search_Outcome &outcome);
    template <class News>
    void Tell(News &&news);

    std::unique_ptr<QThread> m_thread;
    std::optional<Request> m_next; ///< waits for the end of the search that is running
    std::atomic<bool> m_stop{false};
};
