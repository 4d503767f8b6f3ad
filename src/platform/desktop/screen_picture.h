// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QPoint>
#include <functional>

class QObject;

/// A picture of what the user sees.
namespace Screen_Picture
{
enum class Failure { None, Called_Off, Not_Allowed };
/// @param picture  null after a failure
using Taken = std::function<void(const QImage &picture, Failure failure)>;

/// Takes the screen on which a point lies. Where programs may not look at the screen by themselves, the desktop's
/// portal asks its user. @param context  when it is gone, nothing is told
void Take(const QPoint &point, QObject &context, const Taken &taken);
} // namespace Screen_Picture
