// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/desktop/screen_picture.h"

#include "platform/desktop/desktop_kind.h"
#include "platform/desktop/portal_request.h"
#include "platform/errors/run_time_error.h"
#include "platform/files/paths.h"
#include "platform/pictures/raster.h"

#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>
#include <QUrl>

namespace
{
const QString Portal = QStringLiteral("org.freedesktop.portal.Screenshot");

/// The portal leaves the picture as a file, which is nobody's any more.
QImage Picture_At(const QUrl &file)
{
    if (!file.isLocalFile())
        return {};
    QImage picture = Raster::Decode(Raster::Read_File(file.toLocalFile()));
    try {
        Files::Delete_If_Present(file.toLocalFile());
    } catch (const Run_Time_Error &) { // the desktop's own folder: it stays there
        return picture;
    }
    return picture;
}

void Ask_Portal(QObject &context, const Screen_Picture::Taken &taken)
{
    using Screen_Picture::Failure;
    if (!Portal_Request::Has(Portal))
        return taken({}, Failure::Not_Allowed);
    auto *request = new Portal_Request(Portal, QStringLiteral("Screenshot"), {QString()},
                                       {{QStringLiteral("interactive"), true}}, &context);
    QObject::connect(request, &Portal_Request::Answered, &context, [taken](uint result, const QVariantMap &answer) {
        if (result != Portal_Request::Done)
            return taken({}, result == Portal_Request::Refused ? Failure::Called_Off : Failure::Not_Allowed);
        const QImage picture = Picture_At(QUrl(answer.value(QStringLiteral("uri")).toString()));
        taken(picture, picture.isNull() ? Failure::Not_Allowed : Failure::None);
    });
}
} // namespace

void Screen_Picture::Take(const QPoint &point, QObject &context, const Taken &taken)
{
    if (Desktop_Kind::Is_Wayland())
        return Ask_Portal(context, taken);
    QScreen *screen = QGuiApplication::screenAt(point);
    if (screen == nullptr)
        screen = QGuiApplication::primaryScreen();
    const QImage picture = screen->grabWindow(0).toImage();
    taken(picture, picture.isNull() ? Failure::Not_Allowed : Failure::None);
}
