// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// A text as a tool tip that shows it as it is. The toolkit takes a tip that looks like a page for one, and reads the
/// files that it names; every tip that holds data or words of a pack goes through here. A long one is cut.
QString Plain_Tip(const QString &text);
