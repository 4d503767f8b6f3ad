// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QRandomGenerator>
#include <QString>

/// Titles and texts put together from everyday words.
namespace Library_Words
{
QString Title(QRandomGenerator &random);
QString Name(QRandomGenerator &random);
QString Author(QRandomGenerator &random);
QString Keys(QRandomGenerator &random);
/// A paragraph, in one of the two languages.
QString Paragraph(QRandomGenerator &random);
} // namespace Library_Words
