// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/database/connection.h"
#include "platform/database/key_query.h"
#include "platform/database/text_order.h"

/// Many rows in the order of one text column, read and sorted by as many threads as there are processors: each takes a
/// range of row numbers. The calling thread holds the file as it is; the others have connections of their own, and
/// leave their share to it when they can't read.
class Ordered_Texts
{
public:
    Ordered_Texts(Connection &connection, const Key_Plan &plan, const Key_Set &rows);
    /// @throws Run_Time_Error, Failure::Stopped from a watch among them.
    std::vector<qint64> Rows();

private:
    struct Share {
        qint64 first = 0;
        qint64 last = 0;
        Text_Order::Sorter sorter;
        bool done = false;
    };
    void Read(Connection &connection, Share &share) const;
    void Read_Beside(Share &share) const;

    Connection &m_connection;
    const Key_Plan &m_plan;
    const Key_Set &m_rows;
    std::vector<Share> m_shares;
};
