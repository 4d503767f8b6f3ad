// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/help_file.h"

#include "core/language_pack.h"
#include "platform/errors/run_time_error.h"
#include "platform/files/door.h"
#include "platform/files/paths.h"
#include "platform/help/help_compiler.h"
#include "platform/mime/page_file.h"

#include <QFileInfo>

namespace
{
QString Text(const char *key)
{
    return Pack_Text("Export_Document", key);
}

const QString Topic = QStringLiteral("topic.htm");
const QString Caption = QStringLiteral("Zelqor");
const QString Head = QStringLiteral("<!DOCTYPE HTML PUBLIC \"-//IETF//DTD HTML//EN\"><HTML><HEAD><meta "
                                    "name=\"GENERATOR\" content=\"Zelqor\"><!-- Sitemap 1.0 --></HEAD><BODY>");

/// The target's name without what ends a value in a project file.
QString Project_Name(const QString &target)
{
    QString name = Files::Name_For(QFileInfo(target).completeBaseName(), QStringLiteral("document"));
    for (QChar &sign : name) {
        if (sign.isPunct() ? !QStringView(u"-_.()").contains(sign) : sign.isSymbol() || !sign.isPrint())
            sign = QLatin1Char('_');
    }
    return name;
}

QStringList Project(const QString &name)
{
    return {QStringLiteral(" [Options]"),
            QStringLiteral(" Compatibility = 1.1 Or later "),
            QStringLiteral(" Compiled file = ") + name + QStringLiteral(".chm "),
            QStringLiteral(" Contents file = ") + name + QStringLiteral(".hhc "),
            QStringLiteral(" Default topic = ") + Topic,
            QStringLiteral(" Default Window = win "),
            QStringLiteral(" Language=0x0804 "),
            QStringLiteral(" [WINDOWS]"),
            QStringLiteral(" win = \"") + name + QStringLiteral(" - Zelqor; \""),
            QStringLiteral(" [Files] "),
            Topic};
}

QString Parameter(const char *name, const QString &value)
{
    return QStringLiteral(" <param name=\"%1\" value=\"%2\">").arg(QLatin1String(name), value);
}

QStringList Contents()
{
    return {Head,
            QStringLiteral(" <OBJECT type=\"text/site properties\">"),
            Parameter("FrameName", QStringLiteral("right")),
            Parameter("ImageType", QStringLiteral("Folder")),
            Parameter("Window Styles", QStringLiteral("0x627")),
            Parameter("Foreground", QStringLiteral("0x80000008")),
            Parameter("Background", QStringLiteral("0xFFFFFF")),
            Parameter("Font", QStringLiteral("MS Sans Serif,9,0")),
            QStringLiteral(" </OBJECT><UL>"),
            QStringLiteral(" <LI> <OBJECT type=\"text/sitemap\">"),
            Parameter("Name", Caption),
            Parameter("Local", Topic),
            QStringLiteral(" </OBJECT>"),
            QStringLiteral(" </UL>"),
            QStringLiteral(" </BODY></HTML>")};
}

QStringList Keywords()
{
    return {Head,
            QStringLiteral(" <OBJECT type=\"text/site properties\">"),
            QStringLiteral(" </OBJECT><UL>"),
            QStringLiteral(" <LI><OBJECT type=\"text/sitemap\">"),
            Parameter("Keyword", Caption),
            Parameter("Local", Topic),
            QStringLiteral(" </OBJECT>"),
            QStringLiteral(" </UL></BODY></HTML>")};
}

void Write_Lines(const QString &path, const QStringList &lines)
{
    Files::Write_Bytes(path, (lines.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n")).toUtf8(),
                       Files::Durability::Staging);
}

/// What readers of help books show is a page with pictures beside it: the parts of the page's file.
void Unpack(const QString &file, const Export_Room &room)
{
    Mime::Page page = Mime::Read_Page(Files::Read_Bytes(file));
    for (const Mime::Picture &picture : page.pictures) {
        Files::Write_Bytes(room.Path(picture.name), picture.bytes, Files::Durability::Staging);
        page.html.replace("\"" + Mime::Address(picture.name).toUtf8() + "\"", "\"" + picture.name.toUtf8() + "\"");
    }
    Files::Write_Bytes(room.Path(Topic), page.html, Files::Durability::Staging);
}

void Compile(const QString &project, Work &work)
{
    const QString step = Text("_Step_Compile");
    switch (Help::Compile(project, [&] { return work.Next(0, 0, step); })) {
    case Programs::End::Well:
        return;
    case Programs::End::Stopped:
        Stop_Export();
    case Programs::End::Out_Of_Time:
        Refuse_Export(Text("_Compiler_Late"));
    case Programs::End::Badly:
    case Programs::End::Not_Started:
        Refuse_Export(Text("_Compiler_Failed"));
    }
}
} // namespace

void Load_Chm_Tools()
{
    if (Help::Compiler().isEmpty())
        throw Run_Time_Error(Error_Number::Missing_Component, Text("_No_Compiler"));
}

Export_Outcome Make_Chm(const QString &target, Outgoing_Document &document, Work &work)
{
    Load_Chm_Tools();
    const Export_Room room;
    const QString name = Project_Name(target);
    const auto path = [&](const char *suffix) {
        return room.Path(name + QLatin1String(suffix));
    };
    Export_Outcome outcome = Db_to_file(path(".mht"), document, work);
    Unpack(path(".mht"), room);
    Write_Lines(path(".hhp"), Project(name));
    Write_Lines(path(".hhc"), Contents());
    Write_Lines(path(".hhk"), Keywords());
    Compile(path(".hhp"), work);
    if (!Files::Is_File(path(".chm"))) // the compiler says that all is well after a failure too
        Refuse_Export(Text("_Compiler_Failed"));
    Files::Copy_File(path(".chm"), target, Files::Durability::Given);
    return outcome;
}
