// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/desktop/skin_engine.h"

#include "platform/errors/run_time_error.h"
#include "platform/files/door.h"
#include "platform/files/paths.h"
#include "platform/profile/profile.h"

#include <QApplication>
#include <QColor>
#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QPalette>
#include <QRegularExpression>
#include <QResource>
#include <QStyle>
#include <QToolTip>
#include <optional>

namespace
{
constexpr qint64 Largest_File = 256 * 1024;

struct Skin {
    Profile::Snapshot header;
    QString sheet; ///< its own style sheet, behind the frame's
};

struct Engine {
    QString libraryFile;
    QString loadedLibrary; ///< registered with the resource system
    QString plainStyle;    ///< the platform's own, while a skin is on
};

Engine &State()
{
    static Engine engine;
    return engine;
}

struct Palette_Role {
    const char *colour;
    QPalette::ColorRole role;
};

constexpr Palette_Role Roles[] = {
    {"Window", QPalette::Window},
    {"WindowText", QPalette::WindowText},
    {"Base", QPalette::Base},
    {"AlternateBase", QPalette::AlternateBase},
    {"Text", QPalette::Text},
    {"Button", QPalette::Button},
    {"ButtonText", QPalette::ButtonText},
    {"AccentText", QPalette::BrightText},
    {"Highlight", QPalette::Highlight},
    {"HighlightedText", QPalette::HighlightedText},
    {"ToolTipBase", QPalette::ToolTipBase},
    {"ToolTipText", QPalette::ToolTipText},
    {"PlaceholderText", QPalette::PlaceholderText},
    {"Link", QPalette::Link},
    {"LinkVisited", QPalette::LinkVisited},
    {"Header", QPalette::Midlight},
    {"Line", QPalette::Mid},
    {"Border", QPalette::Dark},
};

constexpr QPalette::ColorRole Text_Roles[] = {QPalette::WindowText, QPalette::Text, QPalette::ButtonText};

QString Colours()
{
    return QStringLiteral("Colours");
}

QColor Colour(const Skin &skin, const char *name)
{
    return QColor(skin.header.Value(Colours(), QLatin1String(name)));
}

bool Opens(const Skin &skin, const QString &password)
{
    const QByteArray digest = QCryptographicHash::hash(password.toLocal8Bit(), QCryptographicHash::Sha256).toHex();
    return skin.header.Value(QStringLiteral("Skin"), QStringLiteral("Lock")) == QLatin1String(digest);
}

bool Has_All_Colours(const Skin &skin)
{
    const QStringList names = skin.header.Keys(Colours());
    const bool allAreColours = std::all_of(names.begin(), names.end(), [&](const QString &name) {
        return QColor::isValidColor(skin.header.Value(Colours(), name));
    });
    return allAreColours && std::all_of(std::begin(Roles), std::end(Roles),
                                        [&](const Palette_Role &row) { return Colour(skin, row.colour).isValid(); });
}

/// A sheet may name pictures of the skin library only, set no property but looks, and spell no word in escapes.
bool Is_Harmless(const QString &sheet)
{
    static const QRegularExpression foreign(
        QStringLiteral("\\\\|@import|qproperty|\\burl\\s*\\((?!:/skin/[\\w@./-]+\\))|image\\s*\\("),
        QRegularExpression::CaseInsensitiveOption);
    return !sheet.contains(foreign);
}

/// What a sheet calls by name is a word or a colour.
bool Has_Plain_Values(const Skin &skin)
{
    static const QRegularExpression word(QStringLiteral("^[\\w #.-]{0,64}$"));
    const QString section = QStringLiteral("Skin");
    const QStringList names = skin.header.Keys(section);
    return std::all_of(names.begin(), names.end(),
                       [&](const QString &name) { return skin.header.Value(section, name).contains(word); });
}

std::optional<Skin> Read_Skin(const QString &file, const QString &password)
{
    try {
        if (QFileInfo(file).size() > Largest_File)
            return {};
        Skin skin{Profile::Snapshot(file), {}};
        const QString text = Files::Decode_Text(Files::Read_Bytes(file));
        const QString mark = QStringLiteral("[Style]");
        const qsizetype sheet = text.indexOf(mark);
        if (sheet < 0 || !Opens(skin, password) || !Has_All_Colours(skin))
            return {};
        skin.sheet = text.mid(sheet + mark.size());
        return Is_Harmless(skin.sheet) && Has_Plain_Values(skin) ? std::optional(skin) : std::nullopt;
    } catch (const Run_Time_Error &) {
        return {}; // a skin that cannot be read is no skin
    }
}

void Load_Library()
{
    Engine &engine = State();
    const QString file = Files::Native_Path(engine.libraryFile);
    if (!Files::Is_File(file))
        throw Run_Time_Error(Error_Number::File_Not_Found, QStringLiteral("File not found: %1").arg(file),
                             Failure::File_Not_Found);
    if (engine.loadedLibrary == file)
        return;
    if (!engine.loadedLibrary.isEmpty())
        QResource::unregisterResource(engine.loadedLibrary);
    engine.loadedLibrary.clear();
    if (!QResource::registerResource(file))
        throw Run_Time_Error(Error_Number::File_Not_Found, QStringLiteral("No skin library: %1").arg(file),
                             Failure::File_Not_Found);
    engine.loadedLibrary = file;
}

QPalette Palette_Of(const Skin &skin)
{
    QPalette palette(Colour(skin, "Button"), Colour(skin, "Window"));
    for (const Palette_Role &row : Roles)
        palette.setColor(row.role, Colour(skin, row.colour));
    for (const QPalette::ColorRole role : Text_Roles)
        palette.setColor(QPalette::Disabled, role, Colour(skin, "Disabled"));
    palette.setColor(QPalette::Disabled, QPalette::Highlight, Colour(skin, "Line"));
    palette.setColor(QPalette::Disabled, QPalette::HighlightedText, Colour(skin, "Disabled"));
    return palette;
}

/// The frame's sheet and the skin's own with each "@Name@" replaced once: a value that holds names itself stays.
QString Sheet_Of(const Skin &skin)
{
    static const QRegularExpression name(QStringLiteral("@(\\w+)@"));
    const QString sheet = QString::fromUtf8(Files::Read_Bytes(QStringLiteral(":/skin/frame.qss"))) + skin.sheet;
    QString whole;
    qsizetype done = 0;
    for (auto found = name.globalMatch(sheet); found.hasNext();) {
        const QRegularExpressionMatch one = found.next();
        QString value = skin.header.Value(QStringLiteral("Skin"), one.captured(1));
        if (value.isEmpty())
            value = skin.header.Value(Colours(), one.captured(1));
        whole += QStringView(sheet).mid(done, one.capturedStart() - done);
        whole += value.isEmpty() ? one.captured() : value;
        done = one.capturedEnd();
    }
    return whole.append(QStringView(sheet).mid(done));
}

void Remember_Plain_Look()
{
    if (State().plainStyle.isEmpty())
        State().plainStyle = QApplication::style()->name();
}
} // namespace

void SkinH_Set_Library(const QString &libraryFile)
{
    State().libraryFile = libraryFile;
}

int SkinH_Attach_Ex(const QString &skinFile, const QString &password)
{
    Load_Library();
    const std::optional<Skin> skin = Read_Skin(Files::Native_Path(skinFile), password);
    if (!skin)
        return 1;
    const QPalette palette = Palette_Of(*skin);
    const QString sheet = Sheet_Of(*skin);
    Remember_Plain_Look();
    // The sheet goes first: it wraps the style, and the name of a wrapped style is not the style's own.
    qApp->setStyleSheet({});
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication::setPalette(palette);
    QToolTip::setPalette(palette);
    qApp->setStyleSheet(sheet);
    return 0;
}

void SkinH_Detach()
{
    if (State().plainStyle.isEmpty())
        return;
    qApp->setStyleSheet({});
    QApplication::setStyle(State().plainStyle);
    QApplication::setPalette(QPalette());
    QToolTip::setPalette(QApplication::palette("QToolTip"));
    State().plainStyle.clear();
}
