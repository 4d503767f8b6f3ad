// SPDX-License-Identifier: GPL-3.0-or-later
//
// Hands its input to the program that runs, as a note, or calls one of its windows.

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QFile>
#include <QTextStream>
#include <cstdio>

namespace
{
const QString Service = QStringLiteral("org.zelqor.Zelqor");
constexpr qint64 Most_Bytes = 16 * 1024 * 1024;
constexpr int Patience = 120'000; // milliseconds: a large note on a slow disk

enum Exit_Code { Done = 0, Failed = 1, Usage = 2, Not_Running = 3 };

int Complain(const QString &text, Exit_Code code)
{
    QTextStream(stderr) << "zelqor-send: " << text << '\n';
    return code;
}

int Call(const QString &method, const QVariantList &arguments)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return Complain(QStringLiteral("no session bus"), Not_Running);
    if (!bus.interface()->isServiceRegistered(Service))
        return Complain(QStringLiteral("Zelqor is not running"), Not_Running);
    QDBusMessage call = QDBusMessage::createMethodCall(Service, QStringLiteral("/k9/Frm_Main"),
                                                       QStringLiteral("org.zelqor.Zelqor.Link"), method);
    call.setArguments(arguments);
    const QDBusMessage reply = bus.call(call, QDBus::Block, Patience);
    if (reply.type() != QDBusMessage::ReplyMessage)
        return Complain(reply.errorMessage(), Failed);
    const QString mark = QStringLiteral("SaveDone");
    if (const QString said = reply.arguments().value(0).toString(); said.startsWith(mark))
        QTextStream(stdout) << said.mid(mark.size()) << '\n';
    return Done;
}

int Send_Input(const QString &title)
{
    QFile input;
    if (!input.open(stdin, QIODevice::ReadOnly))
        return Complain(QStringLiteral("no input"), Failed);
    QByteArray bytes;
    for (QByteArray part = input.read(Most_Bytes); !part.isEmpty(); part = input.read(Most_Bytes)) {
        bytes += part;
        if (bytes.size() > Most_Bytes)
            return Complain(QStringLiteral("more than 16 MB"), Failed);
    }
    QString text = QString::fromUtf8(bytes);
    while (text.endsWith(QLatin1Char('\n')))
        text.chop(1);
    return Call(QStringLiteral("Add"), {title, text});
}
} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("zelqor-send"));
    const QCommandLineOption title(QStringLiteral("title"), QStringLiteral("Title of the note; else its first line."),
                                   QStringLiteral("text"));
    const QCommandLineOption show(QStringLiteral("show"), QStringLiteral("Bring the window forward."));
    const QCommandLineOption toggle(QStringLiteral("toggle"), QStringLiteral("Show the window, or put it away."));
    const QCommandLineOption note(QStringLiteral("note"), QStringLiteral("Open the window of the quick note."));
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Stores what stands on its input as a note of the Zelqor that runs, and prints the note's id."));
    parser.addHelpOption();
    parser.addOptions({title, show, toggle, note});
    if (!parser.parse(QCoreApplication::arguments()) || !parser.positionalArguments().isEmpty())
        return Complain(parser.errorText().isEmpty() ? QStringLiteral("texts come on the input") : parser.errorText(),
                        Usage);
    if (parser.isSet(QStringLiteral("help"))) {
        QTextStream(stdout) << parser.helpText();
        return Done;
    }
    struct Command {
        const QCommandLineOption &option;
        const char *method;
    };
    for (const Command &row : {Command{show, "Show"}, Command{toggle, "Toggle"}, Command{note, "Note"}}) {
        if (parser.isSet(row.option))
            return Call(QLatin1String(row.method), {});
    }
    return Send_Input(parser.value(title));
}
