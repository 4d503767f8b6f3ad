// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/richtext/rtf_builder.h"

#include "platform/richtext/kept_properties.h"
#include "platform/richtext/list_labels.h"
#include "platform/richtext/picture_bytes.h"
#include "platform/richtext/rich_text.h"
#include "platform/richtext/rtf_borders.h"
#include "platform/richtext/rtf_formats.h"
#include "platform/richtext/rtf_page_texts.h"
#include "platform/richtext/rtf_tables.h"

#include <QCryptographicHash>
#include <QScopeGuard>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextList>
#include <QTextTable>
#include <QUrl>

#include <algorithm>
#include <array>
#include <atomic>
#include <optional>

namespace Rtf
{
namespace
{
// QTextList::add takes time in proportion to the items it has, so a very long list goes on as another one.
constexpr int mostItems = 1000;
constexpr int paragraphsBetweenAsking = 256;

class Builder
{
public:
    Builder(const Model &model, QTextDocument &document, const Rich_Text::Stop &stop)
        : m_model(model), m_document(document), m_stop(stop), m_charFormats(Char_Formats(model)),
          m_blockFormats(Block_Formats(model))
    {
    }

    void Fill()
    {
        QTextCursor cursor(&m_document);
        Fill_Flow(m_model.body, cursor);
    }

private:
    struct Open_Lists {
        std::array<QTextList *, 9> levels{};
        std::array<int, 9> definitions{-1, -1, -1, -1, -1, -1, -1, -1, -1}; ///< of old lists
        int family = 0;
    };

    void Fill_Flow(const Flow &flow, QTextCursor &cursor)
    {
        bool blockIsFree = true;
        for (const Flow_Item &item : flow) {
            if (item.isTable) {
                const Table &table = m_model.tables[static_cast<std::size_t>(item.index)];
                if (&item == &flow.front() || table.goesOn)
                    cursor.setBlockFormat(Filler_Format());
                if (!Fill_Table(table, cursor))
                    continue;
                blockIsFree = true;
                continue;
            }
            if (item.index % paragraphsBetweenAsking == 0)
                Rich_Text::Ask(m_stop);
            Fill_Paragraph(m_model.paragraphs[static_cast<std::size_t>(item.index)], cursor, blockIsFree);
            blockIsFree = false;
        }
    }

    static QTextBlockFormat Filler_Format()
    {
        QTextBlockFormat format;
        format.setProperty(Rich_Text::Filler, true);
        return format;
    }

    void Fill_Paragraph(const Paragraph &paragraph, QTextCursor &cursor, bool blockIsFree)
    {
        const auto style = static_cast<std::size_t>(paragraph.style);
        const QTextCharFormat &mark = m_charFormats[static_cast<std::size_t>(paragraph.markStyle)];
        if (blockIsFree) {
            cursor.setBlockFormat(Block_Format(paragraph));
            Set_Free_Mark(mark, cursor);
        } else {
            cursor.insertBlock(Block_Format(paragraph), mark);
        }
        Join_List(m_model.paraStyles[style], cursor);
        for (int i = paragraph.firstRun; i < paragraph.firstRun + paragraph.runCount; ++i)
            Insert_Run(m_model.runs[static_cast<std::size_t>(i)], cursor);
    }

    int Kind_Of(const Run &run) const
    {
        return m_model.charStyles[static_cast<std::size_t>(run.style)].flags & Out_Of_Sight;
    }

    QTextBlockFormat Block_Format(const Paragraph &paragraph) const
    {
        const auto index = static_cast<std::size_t>(paragraph.style);
        const Para_Style &style = m_model.paraStyles[index];
        QTextBlockFormat format = m_blockFormats[index];
        if (paragraph.runCount == 0 && style.back <= 0 && style.shading <= 0 && Is_Rule(style.borders))
            Make_Rule(m_model, style.borders, format);
        return format;
    }

    /// The mark of a block that begins a cell, or stands after a table, is also where QTextDocument keeps the cell's
    /// or the table's own format, spans and background among it.
    static void Set_Free_Mark(QTextCharFormat mark, QTextCursor &cursor)
    {
        mark.clearProperty(QTextFormat::BackgroundBrush);
        mark.clearProperty(QTextFormat::TextVerticalAlignment);
        cursor.mergeBlockCharFormat(mark);
    }

    void Insert_Run(const Run &run, QTextCursor &cursor)
    {
        const QTextCharFormat &format = m_charFormats[static_cast<std::size_t>(run.style)];
        const int hidden = Kind_Of(run);
        if (run.picture < 0 && hidden == 0) {
            cursor.insertText(m_model.text.mid(run.begin, run.length), format);
            return;
        }
        QTextCharFormat object = run.picture < 0 ? format : Picture_Format(run, format);
        if (run.picture < 0)
            object.setProperty(Rich_Text::Hidden_Text, m_model.text.mid(run.begin, run.length));
        if (hidden != 0) {
            object.setObjectType(Rich_Text::Hidden_Object);
            object.setProperty(Rich_Text::Hidden_Kind, hidden);
        }
        cursor.insertText(QString(QChar::ObjectReplacementCharacter), object);
    }

    /// The format of a picture, which becomes known to the document.
    QTextImageFormat Picture_Format(const Run &run, const QTextCharFormat &format)
    {
        const Picture &picture = m_model.pictures[static_cast<std::size_t>(run.picture)];
        QTextImageFormat image;
        image.merge(format);
        image.setName(Picture_Name(picture.bytes));
        if (picture.width > 0 && picture.height > 0) {
            image.setWidth(picture.width / Twips_Per_Pixel);
            image.setHeight(picture.height / Twips_Per_Pixel);
        }
        if (picture.part != QRectF(0, 0, 1, 1))
            image.setProperty(Rich_Text::Picture_Part, picture.part);
        m_document.addResource(QTextDocument::ImageResource, QUrl(image.name()), picture.bytes);
        return image;
    }

    void Join_List(const Para_Style &style, QTextCursor &cursor)
    {
        const bool isNew = Is_List_Item(m_model, style);
        if (!isNew && style.oldList == Goes_On)
            return;
        if (isNew || style.oldList < 0)
            m_oldLists = {};
        if (!isNew && style.oldList < 0)
            return;
        Open_Lists &open = isNew ? m_lists[m_model.listOfNumber.value(style.list)] : m_oldLists;
        const int level = isNew ? style.level : m_model.oldLists[static_cast<std::size_t>(style.oldList)].level;
        std::fill(open.levels.begin() + level + 1, open.levels.end(), nullptr);
        QTextList *&list = open.levels[static_cast<std::size_t>(level)];
        if (int &definition = open.definitions[static_cast<std::size_t>(level)]; definition != style.oldList) {
            definition = style.oldList;
            list = nullptr;
        }
        int &count = m_itemCounts[list];
        if (list && count < mostItems) {
            list->add(cursor.block());
            ++count;
            return;
        }
        list = cursor.createList(list ? Continued(list->format()) : New_List(style, isNew));
        m_itemCounts[list] = 1;
    }

    static QTextListFormat Continued(QTextListFormat format)
    {
        Rich_Text::Label_Rule rule = Rich_Text::Rule_Of(format);
        rule.start += mostItems;
        Rich_Text::Set_Rule(format, rule);
        return format;
    }

    QTextListFormat New_List(const Para_Style &style, bool isNew)
    {
        if (!isNew)
            return List_Format(m_model.oldLists[static_cast<std::size_t>(style.oldList)]);
        static std::atomic<int> lastFamily = 0; // they stay apart when documents are pasted into each other
        int &family = m_lists[m_model.listOfNumber.value(style.list)].family;
        if (family == 0 && Is_Family(m_model, style))
            family = ++lastFamily;
        return List_Format(m_model, style, family);
    }

    /// A QTextTable splits the block that the cursor stands in, so one block remains before it and one after.
    bool Fill_Table(const Table &source, QTextCursor &cursor)
    {
        Grid grid = Lay_Out(m_model, source, m_gridAllowance);
        if (grid.rows == 0 || grid.columns == 0)
            return false;
        const std::optional<Border> common = Common_Border(grid);
        QTextTable *table = cursor.insertTable(grid.rows, grid.columns,
                                               Table_Format(m_model, source, grid, common ? &*common : nullptr));
        for (const Placement &cell : grid.cells) {
            if (cell.rowSpan > 1 || cell.columnSpan > 1)
                table->mergeCells(cell.row, cell.column, cell.rowSpan, cell.columnSpan);
        }
        for (const Placement &cell : grid.cells) {
            QTextTableCell place = table->cellAt(cell.row, cell.column);
            QTextCharFormat format = place.format(); // it holds the spans
            format.merge(Cell_Format(m_model, cell.definition, !common));
            place.setFormat(format);
            QTextCursor inside = place.firstCursorPosition();
            Fill_Flow(cell.content, inside);
        }
        cursor = table->lastCursorPosition();
        cursor.movePosition(QTextCursor::NextBlock);
        cursor.setBlockFormat({});
        return true;
    }

    const Model &m_model;
    QTextDocument &m_document;
    const Rich_Text::Stop &m_stop;
    std::vector<QTextCharFormat> m_charFormats;
    std::vector<QTextBlockFormat> m_blockFormats;
    QHash<int, Open_Lists> m_lists; ///< by index of Model::lists, which several \ls may share
    QHash<const QTextList *, int> m_itemCounts;
    qint64 m_gridAllowance = Grid_Allowance;
    Open_Lists m_oldLists;
};
} // namespace

QString Picture_Name(const QByteArray &bytes)
{
    const QByteArray hash = QCryptographicHash::hash(bytes, QCryptographicHash::Sha1);
    return QLatin1String(Rich_Text::Held_Picture_Names) + QLatin1String(hash.toHex());
}

namespace
{
void Set_Or_Clear(QTextFrameFormat &format, int property, bool isSet, const QVariant &value)
{
    if (isSet)
        format.setProperty(property, value);
    else
        format.clearProperty(property);
}

void Keep_Outside_Text(const Model &model, QTextDocument &document)
{
    QStringList texts = model.pageTexts;
    for (QString &text : texts) {
        if (text.endsWith(u'\n'))
            text.chop(1);
    }
    QTextFrameFormat root = document.rootFrame()->frameFormat();
    Set_Or_Clear(root, Rich_Text::Page_Texts_Property, !texts.join(QString()).isEmpty(), texts);
    const QByteArray head = Head_Of(model);
    Set_Or_Clear(root, Rich_Text::Head_Property, !head.isEmpty(), head);
    Set_Or_Clear(root, Rich_Text::Losses_Property, model.losses != 0, model.losses);
    document.rootFrame()->setFrameFormat(root);
}
} // namespace

void Build_Document(const Model &model, QTextDocument &document, const Rich_Text::Stop &stop)
{
    const bool undo = document.isUndoRedoEnabled();
    document.setUndoRedoEnabled(false);
    const int tab = model.pageMeasures[Default_Tab_Measure];
    Rich_Text::Set_Measures(document, tab > 0 ? tab / Twips_Per_Pixel : Rich_Text::Indent_Width);
    // Only what grew out of nothing, told as one change, is laid out step by step; anything else keeps the window.
    QTextCursor whole(&document);
    whole.beginEditBlock();
    document.clear();
    Keep_Outside_Text(model, document);
    const auto atEnd = qScopeGuard([&] {
        whole.endEditBlock();
        document.setUndoRedoEnabled(undo);
        document.setModified(false);
    });
    Builder(model, document, stop).Fill();
}
} // namespace Rtf
