// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/extract/office_text.h"

#include "platform/extract/office_parts.h"

#include <QXmlStreamReader>

namespace ExtractText
{
namespace
{
/// Collects the text of runs; what stands as the replacement of a drawing for older readers is left out, since it
/// repeats the drawing's text.
class Run_Collector
{
public:
    Run_Collector(QString &text, qint64 limit) : m_text(text), m_limit(limit) {}

    bool Take(QXmlStreamReader &xml)
    {
        if (xml.isStartElement())
            Start(xml);
        else if (xml.isEndElement())
            End(xml);
        else if (m_inText && xml.isCharacters() && m_skipped == 0)
            m_text += xml.text();
        return m_text.size() < m_limit;
    }

private:
    void Start(QXmlStreamReader &xml)
    {
        const auto name = xml.name();
        if (name == QLatin1String("Fallback"))
            ++m_skipped;
        m_inText = name == QLatin1String("t") && !xml.namespaceUri().contains(QLatin1String("/math"));
        if (m_skipped > 0)
            return;
        if (name == QLatin1String("tab") && m_inRun)
            m_text += QLatin1Char('\t');
        else if (name == QLatin1String("br") || name == QLatin1String("cr"))
            m_text += QLatin1Char('\n');
        else if (name == QLatin1String("noBreakHyphen"))
            m_text += QChar(0x2011);
        else if (name == QLatin1String("softHyphen"))
            m_text += QChar(0x00AD);
        else if (name == QLatin1String("r"))
            m_inRun = true;
    }
    void End(QXmlStreamReader &xml)
    {
        const auto name = xml.name();
        m_inText = false;
        if (name == QLatin1String("Fallback"))
            --m_skipped;
        else if (name == QLatin1String("r"))
            m_inRun = false;
        else if (name == QLatin1String("p") && m_skipped == 0)
            m_text += QLatin1Char('\n');
    }

    QString &m_text;
    qint64 m_limit;
    int m_skipped = 0;
    bool m_inText = false;
    bool m_inRun = false; ///< tabs stand in paragraph properties too, where they are stops
};
QString Words_Text(Office_Parts &parts, const QString &document, qint64 limit)
{
    const QString footnotes =
        parts.Related(document, QLatin1StringView("footnotes"), QLatin1StringView("word/footnotes.xml"));
    const QString endnotes =
        parts.Related(document, QLatin1StringView("endnotes"), QLatin1StringView("word/endnotes.xml"));
    QString text;
    for (const QString &part : {document, footnotes, endnotes}) {
        Run_Collector collector(text, limit);
        parts.Read(part, [&](QXmlStreamReader &xml) { return collector.Take(xml); });
    }
    return text.left(limit);
}

QString Slides_Text(Office_Parts &parts, const QString &presentation, qint64 limit)
{
    QStringList ids;
    parts.Read(presentation, [&](QXmlStreamReader &xml) {
        if (xml.isStartElement() && xml.name() == QLatin1String("sldId")) {
            for (const QXmlStreamAttribute &attribute : xml.attributes()) {
                if (attribute.name() == QLatin1String("id") &&
                    attribute.namespaceUri().contains(QLatin1String("relation")))
                    ids << attribute.value().toString();
            }
        }
        return ids.size() < Office_Parts::Most_Parts;
    });
    const QHash<QString, QString> targets = parts.Relationships(presentation);
    QString text;
    for (const QString &id : ids) {
        Run_Collector collector(text, limit);
        parts.Read(targets.value(id), [&](QXmlStreamReader &xml) { return collector.Take(xml); });
    }
    return text.left(limit);
}

QString Root_Of(Office_Parts &parts, const QString &part)
{
    QString root;
    parts.Read(part, [&](QXmlStreamReader &xml) {
        if (xml.isStartElement())
            root = xml.name().toString();
        return root.isEmpty();
    });
    return root;
}
} // namespace

QString Office_Text(Office_Parts &parts, qint64 limit)
{
    struct Row {
        QLatin1StringView root;
        QLatin1StringView usual;
        QString (*text)(Office_Parts &parts, const QString &main, qint64 limit);
    };
    static const Row rows[] = {
        {QLatin1StringView("document"), QLatin1StringView("word/document.xml"), Words_Text},
        {QLatin1StringView("workbook"), QLatin1StringView("xl/workbook.xml"), Sheets_Text},
        {QLatin1StringView("presentation"), QLatin1StringView("ppt/presentation.xml"), Slides_Text}};
    for (const Row &row : rows) {
        const QString main = parts.Related({}, QLatin1StringView("officeDocument"), row.usual);
        if (Root_Of(parts, main) == row.root)
            return row.text(parts, main, limit);
    }
    return {};
}
} // namespace ExtractText
