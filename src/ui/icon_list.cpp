// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/icon_list.h"

#include "core/error_log.h"
#include "core/error_text.h"
#include "core/language_pack.h"
#include "platform/files/paths.h"
#include "platform/prompts/prompts.h"
#include "tree/stored_icons.h"
#include "ui/icons.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImageReader>

namespace
{
constexpr int Icon_Side = 64;

/// The picture as an icon is kept: as it is when it is an icon or small, else as a small PNG. Null when it is none.
QByteArray As_Icon(const QString &path, QString &name)
{
    QByteArray bytes = Files::Read_Bytes(path);
    QBuffer source(&bytes);
    QImageReader reader(&source);
    reader.setDecideFormatFromContent(true);
    const QSize size = reader.size();
    const bool fits = size.isValid() && size.boundedTo(QSize(Icon_Side, Icon_Side)) == size;
    if (reader.canRead() && (fits || reader.format() == "ico"))
        return bytes;
    if (size.isValid())
        reader.setScaledSize(size.scaled(Icon_Side, Icon_Side, Qt::KeepAspectRatio));
    const QImage image = reader.read();
    QByteArray png;
    QBuffer target(&png);
    if (image.isNull() || !target.open(QIODevice::WriteOnly) || !image.save(&target, "PNG"))
        return {};
    name = QFileInfo(name).completeBaseName() + QStringLiteral(".png");
    return png;
}
} // namespace

Icon_List::Icon_List(QWidget *parent) : QListWidget(parent)
{
    setViewMode(IconMode);
    setResizeMode(Adjust);
    setMovement(Static);
    setUniformItemSizes(true);
    setIconSize(QSize(32, 32));
    setGridSize(QSize(fontMetrics().averageCharWidth() * 17, 32 + fontMetrics().height() * 2));
    setTextElideMode(Qt::ElideMiddle);
}

void Icon_List::Fill()
{
    clear();
    for (const QString &name : Icon_Names()) {
        auto *item = new QListWidgetItem(Node_Icon(name), name, this);
        item->setToolTip(name);
    }
}

void Icon_List::Select(const QString &name)
{
    const QList<QListWidgetItem *> found = findItems(name, Qt::MatchFixedString);
    setCurrentItem(found.isEmpty() ? nullptr : found.first());
    if (!found.isEmpty())
        scrollToItem(found.first());
}

QString Icon_List::Selected() const
{
    return currentItem() == nullptr ? QString() : currentItem()->text();
}

QString Icon_List::Add_Picture(const QString &title, const QString &filter)
{
    const QString path = Prompts::Open_File(title, {}, filter);
    if (path.isEmpty())
        return {};
    QString trouble;
    const QString added = Trap(
        QStringLiteral("Frm_Icon\\Cmd_Add_Click"),
        [&] {
            QString name = QFileInfo(path).fileName();
            const QByteArray picture = As_Icon(path, name);
            if (picture.isEmpty())
                throw Run_Time_Error(Error_Number::Path_Access, Pack_Text("Frm_icon", "_NoPicture"));
            return Add_Stored_Icon(name, picture);
        },
        [&] { trouble = Error_Text(Err()); });
    if (added.isEmpty())
        return trouble;
    Fill();
    Select(added);
    return {};
}
