// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace Html
{
/// A style sheet or the style of one tag, without what loads (`@import`, `url()`) and with numbers within bounds.
QString Bounded_Style(const QString &style);
/// A number that an attribute may have: at most `most`, its unit kept. "" for what is no number.
QString Bounded_Number(const QString &value, double most);
} // namespace Html
