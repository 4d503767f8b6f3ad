// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/xml_text.h"

namespace
{
bool Is_Known(QChar c)
{
    return c >= u' ' ? c.unicode() < 0xFFFE : c == u'\t' || c == u'\n';
}
} // namespace

QString Xml_Text(QStringView text)
{
    QString xml;
    xml.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        const bool isPair = c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
        if (isPair)
            xml += text.sliced(i++, 2);
        else if (c.isSurrogate())
            xml += QChar::ReplacementCharacter;
        else if (c == u'&')
            xml += QLatin1String("&amp;");
        else if (c == u'<')
            xml += QLatin1String("&lt;");
        else if (c == u'>')
            xml += QLatin1String("&gt;");
        else if (c == u'"')
            xml += QLatin1String("&quot;");
        else if (Is_Known(c))
            xml += c;
    }
    return xml;
}
