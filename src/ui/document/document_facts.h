// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QMetaType>

/// What is to be told beside a document that is on screen.
struct Document_Facts {
    enum class Mode { Editing, Reading, Foreign }; ///< the last: another program writes its content

    bool shown = false; ///< else no document is on screen, and the rest says nothing
    bool unsaved = false;
    QDateTime saved; ///< when it was stored last; invalid for never
    int words = 0;   ///< of the text, or of what is selected in it; -1 where counting would be felt
    bool of_selection = false;
    int line = 1; ///< the paragraph of the cursor
    int lines = 1;
    int zoom = 100; ///< percent
    Mode mode = Mode::Reading;
};
Q_DECLARE_METATYPE(Document_Facts)
