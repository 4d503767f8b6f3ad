// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mime/page_file.h"

#include "platform/files/paths.h"

#include <memory>

#pragma push_macro("signals") // the library has a field of that name
#undef signals
#include <gmime/gmime.h>
#pragma pop_macro("signals")

namespace
{
const QString Place = QStringLiteral("@zelqor");

struct Unreference {
    void operator()(gpointer object) const { g_object_unref(object); }
};
/// An object of the library while it is needed here.
template <class Type>
using Held = std::unique_ptr<Type, Unreference>;

void Begin_Library()
{
    static const bool isReady = [] {
        g_mime_init();
        return true;
    }();
    Q_UNUSED(isReady)
}

Held<GMimePart> New_Part(const QByteArray &type, const QByteArray &bytes, GMimeContentEncoding encoding)
{
    const QList<QByteArray> names = type.split('/');
    Held<GMimePart> part(g_mime_part_new_with_type(names.value(0).constData(), names.value(1).constData()));
    const Held<GMimeStream> stream(
        g_mime_stream_mem_new_with_buffer(bytes.constData(), static_cast<size_t>(bytes.size())));
    const Held<GMimeDataWrapper> content(
        g_mime_data_wrapper_new_with_stream(stream.get(), GMIME_CONTENT_ENCODING_DEFAULT));
    g_mime_part_set_content(part.get(), content.get());
    g_mime_part_set_content_encoding(part.get(), encoding);
    return part;
}

QByteArray Bytes_In(GMimeStream *stream)
{
    const GByteArray *bytes = g_mime_stream_mem_get_byte_array(GMIME_STREAM_MEM(stream));
    return {reinterpret_cast<const char *>(bytes->data), static_cast<qsizetype>(bytes->len)};
}

QByteArray Content_Of(GMimePart *part)
{
    GMimeDataWrapper *content = g_mime_part_get_content(part);
    if (content == nullptr)
        return {};
    const Held<GMimeStream> stream(g_mime_stream_mem_new());
    g_mime_data_wrapper_write_to_stream(content, stream.get());
    return Bytes_In(stream.get());
}

Held<GMimeMultipart> Related(const Mime::Page &page)
{
    Held<GMimeMultipart> related(g_mime_multipart_new_with_subtype("related"));
    g_mime_object_set_content_type_parameter(GMIME_OBJECT(related.get()), "type", "text/html");
    const Held<GMimePart> text = New_Part("text/html", page.html, GMIME_CONTENT_ENCODING_QUOTEDPRINTABLE);
    g_mime_object_set_content_type_parameter(GMIME_OBJECT(text.get()), "charset", "utf-8");
    g_mime_part_set_content_location(text.get(), "file:///page.htm");
    g_mime_multipart_add(related.get(), GMIME_OBJECT(text.get()));
    for (const Mime::Picture &picture : page.pictures) {
        const Held<GMimePart> part = New_Part(picture.type, picture.bytes, GMIME_CONTENT_ENCODING_BASE64);
        g_mime_part_set_content_id(part.get(), (picture.name + Place).toUtf8().constData());
        g_mime_multipart_add(related.get(), GMIME_OBJECT(part.get()));
    }
    return related;
}

void Take_Part(GMimeObject * /*parent*/, GMimeObject *object, gpointer user)
{
    auto &page = *static_cast<Mime::Page *>(user);
    if (!GMIME_IS_PART(object))
        return;
    GMimePart *part = GMIME_PART(object);
    GMimeContentType *type = g_mime_object_get_content_type(object);
    if (g_mime_content_type_is_type(type, "text", "html")) {
        if (page.html.isEmpty())
            page.html = Content_Of(part);
        return;
    }
    const QString id = QString::fromUtf8(g_mime_part_get_content_id(part));
    const QString name = id.chopped(id.endsWith(Place) ? Place.size() : 0);
    if (!g_mime_content_type_is_type(type, "image", "*") || name == id || !Files::Is_Plain_Name(name))
        return;
    gchar *typeName = g_mime_content_type_get_mime_type(type);
    page.pictures.append({name, typeName, Content_Of(part)});
    g_free(typeName);
}
} // namespace

QString Mime::Address(const QString &name)
{
    return QStringLiteral("cid:") + name + Place;
}

QByteArray Mime::Write_Page(const Page &page, const QDateTime &date)
{
    Begin_Library();
    const Held<GMimeMessage> message(g_mime_message_new(TRUE));
    g_mime_message_add_mailbox(message.get(), GMIME_ADDRESS_TYPE_FROM, "Zelqor", "zelqor@localhost");
    g_mime_message_set_subject(message.get(), page.title.toUtf8().constData(), "utf-8");
    GDateTime *written = g_date_time_new_from_unix_utc(date.toSecsSinceEpoch());
    g_mime_message_set_date(message.get(), written);
    g_date_time_unref(written);
    const Held<GMimeMultipart> related = Related(page);
    g_mime_message_set_mime_part(message.get(), GMIME_OBJECT(related.get()));
    GMimeFormatOptions *format = g_mime_format_options_new();
    g_mime_format_options_set_newline_format(format, GMIME_NEWLINE_FORMAT_DOS);
    const Held<GMimeStream> stream(g_mime_stream_mem_new());
    g_mime_object_write_to_stream(GMIME_OBJECT(message.get()), format, stream.get());
    g_mime_format_options_free(format);
    return Bytes_In(stream.get());
}

Mime::Page Mime::Read_Page(const QByteArray &bytes)
{
    Begin_Library();
    Page page;
    const Held<GMimeStream> stream(
        g_mime_stream_mem_new_with_buffer(bytes.constData(), static_cast<size_t>(bytes.size())));
    const Held<GMimeParser> parser(g_mime_parser_new_with_stream(stream.get()));
    const Held<GMimeMessage> message(g_mime_parser_construct_message(parser.get(), nullptr));
    if (message == nullptr)
        return page;
    page.title = QString::fromUtf8(g_mime_message_get_subject(message.get()));
    g_mime_message_foreach(message.get(), Take_Part, &page);
    return page;
}
