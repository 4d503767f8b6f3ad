// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/links.h"

#include "core/language_pack.h"
#include "core/process_state.h"
#include "platform/files/paths.h"
#include "platform/prompts/prompts.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QUrl>

namespace
{
Links::Opener &The_Opener()
{
    static Links::Opener opener = QDesktopServices::openUrl;
    return opener;
}

/// A page writes the path of a file as it is, or with signs escaped as in an address.
QString File_At(const QString &path)
{
    const QString asWritten = Files::Native_Path(path);
    const QString decoded = Files::Native_Path(QUrl::fromPercentEncoding(path.toUtf8()));
    return !QFileInfo::exists(asWritten) && QFileInfo::exists(decoded) ? decoded : asWritten;
}

QUrl Address_Of(const QString &target)
{
    return Files::Is_Absolute(target) ? QUrl::fromLocalFile(File_At(target)) : QUrl(target);
}
} // namespace

Links::Kind Links::Kind_Of(const QString &target)
{
    static const QStringList web{QStringLiteral("http"), QStringLiteral("https"), QStringLiteral("mailto"),
                                 QStringLiteral("ftp")};
    if (target.startsWith(u'#'))
        return Kind::Place;
    const QUrl url = Address_Of(target.trimmed());
    if (url.isLocalFile())
        return Kind::File;
    return url.isValid() && web.contains(url.scheme()) ? Kind::Web : Kind::Refused;
}

QString Links::Completed(const QString &typed)
{
    QString text = typed.trimmed();
    if (text.isEmpty() || text.startsWith(u'#'))
        return text;
    if (Files::Is_Absolute(text))
        return QUrl::fromLocalFile(Files::Native_Path(text)).toString(QUrl::FullyEncoded);
    if (text.contains(u'@') && !text.contains(u':') && !text.contains(u'/'))
        return QStringLiteral("mailto:") + text;
    const bool hasScheme = text.contains(QLatin1String("://")) || text.startsWith(QLatin1String("mailto:"));
    return hasScheme ? text : QStringLiteral("https://") + text;
}

void Links::Open(const QString &target)
{
    const Kind kind = Kind_Of(target);
    const QUrl url = Address_Of(target.trimmed());
    const auto say = [](const char *key, const QString &what) {
        Prompts::Message(Pack_Text("Editor_Bar", key).arg(what), App().App_Title, Prompts::Icon::Exclamation);
    };
    if (kind == Kind::Refused || kind == Kind::Place)
        return say("_Link_Refused", target);
    if (kind == Kind::File) {
        const QString question = Pack_Text("Editor_Bar", "_Link_File").arg(QDir::toNativeSeparators(url.toLocalFile()));
        if (Prompts::Ask(question, App().App_Title, Prompts::Choice::Yes_No, Prompts::Answer::No) !=
            Prompts::Answer::Yes)
            return;
    }
    if (!Start(url))
        say("_Link_Failed", target);
}

bool Links::Start(const QUrl &address)
{
    return The_Opener()(address);
}

void Links::Set_Opener(const Opener &opener)
{
    The_Opener() = opener;
}
