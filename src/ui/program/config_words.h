// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

/// The words of the options in every language that is installed, so that a setting is found by any of them.
class Config_Words
{
public:
    /// Reads the packs of the program directory, and the one in force. A pack that cannot be read has no words.
    Config_Words();

    /// Whether a control has all words of a text in its captions, its entries or its tip, or in `more`.
    [[nodiscard]] bool Answer(const QStringList &controls, const QString &text, const QStringList &more = {}) const;

private:
    QHash<QString, QString> m_words; ///< by the name of the control
};
