// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/icons.h"

#include "core/language_pack.h"
#include "core/process_state.h"
#include "platform/files/door.h"
#include "platform/files/paths.h"
#include "platform/pictures/raster.h"

#include <QFile>
#include <QGuiApplication>
#include <QHash>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
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

/// Draws a vector source in the colour that text has in the palette of the moment of painting, so that an icon on a
/// widget follows a change of the skin by itself.
class Line_Icon_Engine : public QIconEngine
{
public:
    Line_Icon_Engine(QString name, QByteArray source) : m_name(std::move(name)), m_source(std::move(source)) {}

    void paint(QPainter *painter, const QRect &place, QIcon::Mode mode, QIcon::State) override
    {
        QSvgRenderer(QByteArray(m_source).replace(Drawn_Color, Color(mode).name().toLatin1())).render(painter, place);
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        const QString key =
            QStringLiteral("line:%1:%2x%3:%4")
                .arg(m_name, QString::number(size.width()), QString::number(size.height()), Color(mode).name());
        QPixmap pixmap;
        if (QPixmapCache::find(key, &pixmap))
            return pixmap;
        pixmap = QPixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, pixmap.rect(), mode, state);
        painter.end();
        QPixmapCache::insert(key, pixmap);
        return pixmap;
    }

    [[nodiscard]] QIconEngine *clone() const override { return new Line_Icon_Engine(m_name, m_source); }
    bool isNull() override { return m_source.isEmpty(); }
    QString iconName() override { return m_name; }

private:
    static QColor Color(QIcon::Mode mode)
    {
        const QPalette palette = QGuiApplication::palette();
        switch (mode) {
        case QIcon::Disabled:
            return palette.color(QPalette::Disabled, QPalette::WindowText);
        case QIcon::Selected:
            return palette.color(QPalette::Active, QPalette::HighlightedText);
        default:
            return palette.color(QPalette::Active, QPalette::WindowText);
        }
    }

    QString m_name;
    QByteArray m_source;
};

QHash<QString, QIcon> &Node_Icons()
{
    static QHash<QString, QIcon> icons;
    return icons;
}

QIcon Load_Drawing(const QString &name)
{
    QFile file(QStringLiteral(":/icons/") + name + QStringLiteral(".svg"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QIcon(new Line_Icon_Engine(name, file.readAll()));
}

QString Icon_File(const QString &imageName)
{
    return Files::Native_Path(App().App_Path + QStringLiteral("data/ico/") + imageName);
}

bool Has_Icon_File(const QString &imageName)
{
    return Files::Is_File(Icon_File(imageName));
}
QIcon Node_Icon_Of(const QString &imageName)
{
    if (Has_Icon_File(imageName)) {
        QIcon icon = Raster::Icon(Raster::Read_File(Icon_File(imageName)));
        if (!icon.isNull())
            return icon;
    }
    const QIcon drawing = Line_Icon(imageName.section(QLatin1Char('.'), 0, 0).toLower());
    return drawing.isNull() ? Line_Icon(QStringLiteral("book")) : drawing;
}
} // namespace

QIcon Line_Icon(const QString &name)
{
    Init_Resources();
    static QHash<QString, QIcon> drawings;
    QIcon &icon = drawings[name];
    if (icon.isNull())
        icon = Load_Drawing(name);
    return icon;
}

QIcon Node_Icon(const QString &imageName)
{
    // The home node's icon is the program's own name until the user chooses another one.
    if (imageName.compare(QLatin1String("ZELQOR.ICO"), Qt::CaseInsensitive) == 0 && !Has_Icon_File(imageName))
        return Node_Icon(QStringLiteral("Home.ico"));
    QIcon &icon = Node_Icons()[imageName];
    if (icon.isNull())
        icon = Node_Icon_Of(imageName);
    return icon;
}

QString Icon_Title(const QString &imageName)
{
    struct Word {
        const char *image;
        const char *key;
    };
    static constexpr Word words[] = {{"BOOK", "_Icon_Book"},
                                     {"NOTE", "_Icon_Note"},
                                     {"HOME", "_Icon_Home"},
                                     {"ZELQOR", "_Icon_Home"},
                                     {"RECYCLEBIN", "_Icon_Bin"}};
    const QString plain = imageName.section(QLatin1Char('.'), 0, -2);
    for (const Word &row : words) {
        if (plain.compare(QLatin1String(row.image), Qt::CaseInsensitive) == 0)
            return Pack_Text("Frm_icon", row.key);
    }
    return plain.isEmpty() ? imageName : plain;
}

void Forget_Icons()
{
    Node_Icons().clear();
}
