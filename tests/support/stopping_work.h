// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/work.h"

/// Work that is called off before an item, counted from 0.
class Stopping_Work : public Work
{
public:
    explicit Stopping_Work(qint64 before) : m_before(before) {}
    bool Next(qint64 done, qint64 /*all*/, const QString & /*name*/) override { return done < m_before; }

private:
    qint64 m_before;
};
