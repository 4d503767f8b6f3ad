// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/html_pictures.h"

#include "platform/files/paths.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

namespace Html
{
namespace
{
/// A value between quotation marks, or up to a blank or the tag's end: the attribute values of HTML 4.01, 3.2.2.
QString Attribute_Value(const QRegularExpressionMatch &match)
{
    for (int group = 1; group <= 3; ++group) {
        if (match.hasCaptured(group))
            return match.captured(group);
    }
    return {};
}

QString Without_References(QString text)
{
    text.replace(QLatin1String("&lt;"), QLatin1String("<"), Qt::CaseInsensitive);
    text.replace(QLatin1String("&gt;"), QLatin1String(">"), Qt::CaseInsensitive);
    text.replace(QLatin1String("&quot;"), QLatin1String("\""), Qt::CaseInsensitive);
    return text.replace(QLatin1String("&amp;"), QLatin1String("&"), Qt::CaseInsensitive);
}
} // namespace

QStringList Picture_Sources(const QString &page)
{
    // The mark holds ">" itself, so that a tag is not simply what stands before the next one.
    static const QRegularExpression picture(
        QStringLiteral("<img\\b(?:[^>\"']|\"[^\"]*\"|'[^']*'|<<<Pic_Dir>>>)*?\\bsrc\\s*=\\s*"
                       "(?:\"([^\"]*)\"|'([^']*)'|((?:<<<Pic_Dir>>>)?[^\\s>\"']*))"),
        QRegularExpression::CaseInsensitiveOption);
    QStringList sources;
    for (auto matches = picture.globalMatch(page); matches.hasNext();)
        sources << Without_References(Attribute_Value(matches.next()));
    return sources;
}

QString Own_Picture(const QString &source, const QString &pictureDirectory)
{
    const QString mark = QLatin1String(Picture_Directory_Mark);
    const qsizetype at = source.indexOf(mark);
    if (at < 0 || pictureDirectory.isEmpty())
        return {};
    const QString name = source.mid(at + mark.size()).replace(QLatin1Char('/'), QLatin1Char('\\'));
    const QString directory = Files::Native_Path(Files::With_Final_Separator(pictureDirectory));
    const QString path = QDir::cleanPath(Files::Native_Path(directory + name));
    const QString inside = QDir::cleanPath(directory) + QLatin1Char('/');
    const QString real = QFileInfo(path).canonicalFilePath();
    const QString realInside = QFileInfo(inside).canonicalFilePath() + QLatin1Char('/');
    return path.startsWith(inside) && (real.isEmpty() || real.startsWith(realInside)) ? path : QString();
}

QStringList Own_Pictures(const QString &page, const QString &pictureDirectory)
{
    QStringList files;
    for (const QString &source : Picture_Sources(page)) {
        const QString path = Own_Picture(source, pictureDirectory);
        if (!path.isEmpty() && QFileInfo(path).isFile())
            files << path;
    }
    return files;
}
} // namespace Html
