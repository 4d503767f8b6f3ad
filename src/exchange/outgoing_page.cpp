// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/outgoing_page.h"

#include "editor/line_distance.h"
#include "platform/pictures/raster.h"
#include "platform/richtext/kept_properties.h"
#include "platform/richtext/list_labels.h"
#include "platform/richtext/picture_bytes.h"

#include <QRegularExpression>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextList>

namespace
{
struct Picture_Type {
    const char *begins;
    const char *type;
    const char *suffix;
};
constexpr Picture_Type Types[] = {
    {"\x89PNG", "image/png", ".png"}, {"\xFF\xD8\xFF", "image/jpeg", ".jpg"}, {"GIF8", "image/gif", ".gif"}};

const Picture_Type *Type_Of(const QByteArray &bytes)
{
    for (const Picture_Type &row : Types) {
        if (bytes.startsWith(row.begins))
            return &row;
    }
    return nullptr;
}

/// Labels that only this program makes, such as "1.2." and "(一)", become text before their items.
void Write_Out_Labels(QTextDocument &document)
{
    struct Item {
        QTextBlock block;
        QString label;
    };
    QList<Item> items; // all of them first: an item that leaves its list renumbers the others
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        if (const QTextList *list = block.textList(); list && list->format().style() == Rich_Text::Kept_Labels)
            items.append({block, Rich_Text::Item_Label(block)});
    }
    for (const Item &item : items) {
        const int indent = item.block.textList()->format().indent() + item.block.blockFormat().indent();
        item.block.textList()->remove(item.block);
        QTextCursor cursor(item.block);
        QTextBlockFormat format = item.block.blockFormat();
        format.setIndent(indent);
        cursor.setBlockFormat(format);
        if (!item.label.isEmpty())
            cursor.insertText(item.label + QLatin1Char(' '));
    }
}
} // namespace

Mime::Picture Shown_Picture(const QTextDocument &document, const QString &name)
{
    QByteArray bytes = Rich_Text::Held_Picture(document, name);
    if (Type_Of(bytes) == nullptr)
        bytes = Rich_Text::Picture_Bytes(Raster::Decode(bytes));
    const Picture_Type *type = Type_Of(bytes);
    return type == nullptr ? Mime::Picture() : Mime::Picture{QLatin1String(type->suffix), type->type, bytes};
}

QString Data_Address(const Mime::Picture &picture)
{
    return QStringLiteral("data:%1;base64,").arg(QLatin1String(picture.type)) +
           QString::fromLatin1(picture.bytes.toBase64());
}

Mime::Page Page_Of(QTextDocument &document, const QString &title,
                   const std::function<QString(const Mime::Picture &)> &address)
{
    static const QRegularExpression picture(QStringLiteral("<img src=\"([^\"]*)\"[^>]*>"));
    Write_Out_Labels(document);
    document.setMetaInformation(QTextDocument::DocumentTitle, {}); // which would be written as it is
    QString html = Line_Distance::Without(document.toHtml());
    const QString head = QStringLiteral("<head>");
    html.insert(html.indexOf(head) + head.size(), QStringLiteral("<title>%1</title>").arg(title.toHtmlEscaped()));
    Mime::Page page{title, {}, {}};
    QHash<QString, QString> addresses; // a picture that stands in several places goes once
    QString text;
    qsizetype done = 0;
    for (auto found = picture.globalMatch(html); found.hasNext();) {
        const QRegularExpressionMatch tag = found.next();
        text += html.mid(done, tag.capturedStart() - done);
        done = tag.capturedEnd();
        const QString name = tag.captured(1);
        if (!addresses.contains(name)) {
            Mime::Picture shown = Shown_Picture(document, name);
            shown.name.prepend(QStringLiteral("picture%1").arg(page.pictures.size() + 1));
            addresses[name] = shown.bytes.isEmpty() ? QString() : address(shown);
            if (!shown.bytes.isEmpty())
                page.pictures.append(shown);
        }
        if (!addresses[name].isEmpty())
            text += tag.captured().replace(tag.capturedStart(1) - tag.capturedStart(), name.size(), addresses[name]);
    }
    page.html = (text + html.mid(done)).toUtf8();
    return page;
}
