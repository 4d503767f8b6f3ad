// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// A library of documents such as years of use leave behind: folders up to four levels deep, titles and texts in
/// Chinese and English, rich text in compressed streams, keys, authors, stars, tags, attachments, extra folders.
struct Library_Plan {
    int documents = 100000;
    int folders = 2000;
    quint32 seed = 1; ///< equal plans give equal libraries
    QString file;
    int paragraphs = 8; ///< of the longest text
};

/// Makes the library in a new file that must not exist. @throws Run_Time_Error when it cannot be written.
void Make_Library(const Library_Plan &plan);

/// Paragraphs that make about 4 KB of text for each document, 400 MB for 100,000.
inline constexpr int Long_Texts = 37;

/// A file that was made for these numbers before, in the directory for temporary files, or a new one.
QString Shared_Library(int documents, int folders, int paragraphs = 8);
