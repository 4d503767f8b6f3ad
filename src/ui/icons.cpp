// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/icons.h"

#include "core/process_state.h"
#include "platform/files/paths.h"

#include <QFile>
#include <QGuiApplication>
#include <QHash>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>

static void Init_Resources()
{
    static const bool done = [] {
        Q_INIT_RESOURCE(icons);
        return true;
    }();
    Q_UNUSED(done)
}

namespace
{
const QByteArray Drawn_Color = QByteArrayLiteral("#808080");
constexpr int Sizes[] = {16, 20, 24, 32, 40, 48, 64};

QHash<QString, QIcon> &Cache()
{
    static QHash<QString, QIcon> icons;
    return icons;
}

QPixmap Draw(const QByteArray &source, int size)
{
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QSvgRenderer drawing(source);
    QPainter painter(&pixmap);
    drawing.render(&painter);
    return pixmap;
}

QIcon Draw_Icon(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray source = file.readAll();
    const QPalette palette = QGuiApplication::palette();
    const auto colored = [&](QPalette::ColorGroup group) {
        return QByteArray(source).replace(Drawn_Color, palette.color(group, QPalette::WindowText).name().toLatin1());
    };
    QIcon icon;
    for (const int size : Sizes) {
        icon.addPixmap(Draw(colored(QPalette::Active), size), QIcon::Normal);
        icon.addPixmap(Draw(colored(QPalette::Disabled), size), QIcon::Disabled);
    }
    return icon;
}

QString Icon_File(const QString &imageName)
{
    return Files::Native_Path(App().App_Path + QStringLiteral("data/ico/") + imageName);
}

bool Has_Icon_File(const QString &imageName)
{
    return QFile::exists(Icon_File(imageName));
}
} // namespace

QIcon Line_Icon(const QString &name)
{
    Init_Resources();
    QIcon &icon = Cache()[name];
    if (icon.isNull())
        icon = Draw_Icon(QStringLiteral(":/icons/") + name + QStringLiteral(".svg"));
    return icon;
}

QIcon Node_Icon(const QString &imageName)
{
    // The home node's icon is the program's own name until the user chooses another one.
    if (imageName.compare(QLatin1String("ZELQOR.ICO"), Qt::CaseInsensitive) == 0 && !Has_Icon_File(imageName))
        return Node_Icon(QStringLiteral("Home.ico"));
    const QString key = QStringLiteral("node:") + imageName;
    QIcon &icon = Cache()[key];
    if (!icon.isNull())
        return icon;
    if (Has_Icon_File(imageName))
        icon = QIcon(Icon_File(imageName));
    if (icon.isNull() || icon.availableSizes().isEmpty()) {
        const QString drawing = imageName.section(QLatin1Char('.'), 0, 0).toLower();
        icon = Line_Icon(drawing);
    }
    return icon.isNull() ? icon = Line_Icon(QStringLiteral("book")) : icon;
}

void Forget_Icons()
{
    Cache().clear();
}
