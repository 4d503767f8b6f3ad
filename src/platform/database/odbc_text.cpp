// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/odbc_text.h"

#include "platform/database/engine_error.h"

#include <QFile>
#include <QStringDecoder>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{
[[noreturn]] void Refuse(const QString &name, const QString &value)
{
    throw Engine_Error::Failed(
        u"The data link asks for '%1=%2', which is not set up on this computer."_s.arg(name, value),
        Failure::Missing_Component);
}

/// What may be handed to the library below a driver: where the server is and how it is reached. Among its other words
/// are those that load a library or read a service's file.
void Check_Library_Options(const QString &text)
{
    static const QStringList known{u"host"_s,
                                   u"port"_s,
                                   u"hostaddr"_s,
                                   u"application_name"_s,
                                   u"target_session_attrs"_s,
                                   u"tcp_user_timeout"_s,
                                   u"keepalives"_s,
                                   u"keepalives_idle"_s,
                                   u"keepalives_interval"_s,
                                   u"keepalives_count"_s,
                                   u"sslmode"_s,
                                   u"sslrootcert"_s,
                                   u"channel_binding"_s};
    for (const QString &option : text.split(u' ', Qt::SkipEmptyParts)) {
        const QString name = option.section(u'=', 0, 0).toLower();
        if (!known.contains(name) || option.contains(u'\'') || option.contains(u'\\')) {
            Refuse(u"pqopt"_s, option);
        }
    }
}
} // namespace

namespace Odbc_Text
{
Parts Parts_Of(const QString &text)
{
    Parts parts;
    qsizetype at = 0;
    while (at < text.size()) {
        const qsizetype equals = text.indexOf(u'=', at);
        if (equals < 0) {
            break;
        }
        const QString name = text.mid(at, equals - at).section(u';', -1).trimmed();
        qsizetype from = equals + 1;
        while (from < text.size() && text[from] == u' ') {
            ++from;
        }
        qsizetype end = text.indexOf(u';', from);
        QString value;
        if (from < text.size() && (text[from] == u'"' || text[from] == u'\'' || text[from] == u'{')) {
            const qsizetype close = text.indexOf(text[from] == u'{' ? u'}' : text[from], from + 1);
            value = text.mid(from + 1, close < 0 ? -1 : close - from - 1);
            end = close < 0 ? -1 : text.indexOf(u';', close);
        } else {
            value = text.mid(from, end < 0 ? -1 : end - from).trimmed();
        }
        parts.emplace_back(name, value);
        at = end < 0 ? text.size() : end + 1;
    }
    return parts;
}

QString Text_Of_File(const QString &name)
{
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) {
        throw Engine_Error::Failed(u"The data link file '%1' was not found."_s.arg(name), Failure::File_Not_Found);
    }
    const QByteArray bytes = file.readAll();
    const auto encoding = QStringConverter::encodingForData(bytes);
    return QStringDecoder(encoding.value_or(QStringConverter::Utf8)).decode(bytes);
}
QString Connection_String(const QString &udlText)
{
    QString initialisation;
    for (const QString &line : udlText.split(u'\n')) {
        const QString trimmed = line.trimmed();
        if (!trimmed.isEmpty() && !trimmed.startsWith(u'[') && !trimmed.startsWith(u';')) {
            initialisation = trimmed;
        }
    }
    QString odbc;
    const auto add = [&odbc](const QString &name, const QString &value) {
        const bool braces = value.contains(u';') && !value.startsWith(u'{');
        odbc += name + u'=' + (braces ? u'{' + value + u'}' : value) + u';';
    };
    for (const auto &[name, value] : Parts_Of(initialisation)) {
        const QString key = name.toLower();
        if (key == u"extended properties"_s) {
            odbc += value + (value.endsWith(u';') ? QString() : u";"_s);
        } else if (key == u"data source"_s) {
            add(u"DSN"_s, value);
        } else if (key == u"user id"_s) {
            add(u"UID"_s, value);
        } else if (key == u"password"_s) {
            add(u"PWD"_s, value);
        } else if (key == u"initial catalog"_s) {
            add(u"DATABASE"_s, value);
        }
    }
    return odbc;
}

Parts Checked(const QString &connectionString, const QStringList &installedDrivers)
{
    static const QStringList files{u"filedsn"_s, u"savefile"_s, u"loadext"_s, u"tracefile"_s, u"trace"_s};
    Parts checked;
    for (const auto &[name, value] : Parts_Of(connectionString)) {
        const QString key = name.toLower();
        const bool known = key == u"driver"_s ? installedDrivers.contains(value, Qt::CaseInsensitive)
                           : key == u"dsn"_s  ? !value.contains(u'/')
                                              : !files.contains(key);
        if (!known || value.contains(u'}')) {
            Refuse(name, value);
        }
        if (key == u"pqopt"_s) {
            Check_Library_Options(value);
        } else if (value.contains(u';')) {
            static_cast<void>(Checked(value, installedDrivers)); // not every driver knows braces
        }
        checked.emplace_back(name, value);
    }
    return checked;
}

QString Joined(const Parts &parts)
{
    QString text;
    for (const auto &[name, value] : parts) {
        const bool braces = value.contains(u';') || name.compare("pqopt"_L1, Qt::CaseInsensitive) == 0;
        text += name + u'=' + (braces ? u'{' + value + u'}' : value) + u';';
    }
    return text;
}
} // namespace Odbc_Text
