// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/icon_list.h"

#include "core/error_log.h"
#include "core/error_text.h"
#include "core/language_pack.h"
#include "platform/models/plain_tip.h"
#include "platform/pictures/raster.h"
#include "platform/prompts/prompts.h"
#include "tree/stored_icons.h"
#include "ui/kit/icons.h"

#include <QBuffer>
#include <QFileInfo>

namespace
{
constexpr int Icon_Side = 64;

/// The picture as an icon is kept: as it is when it is an icon or small, else as a small PNG. Null when it is none.
QByteArray As_Icon(const QString &path, QString &name)
{
    QByteArray bytes = Raster::Read_File(path);
    const QSize size = Raster::Size(bytes);
    const bool small = size.boundedTo(QSize(Icon_Side, Icon_Side)) == size;
    if (bytes.isEmpty() || small)
        return bytes;
    const QImage image =
        Raster::Decode(bytes).scaled(Icon_Side, Icon_Side, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    QByteArray png;
    QBuffer target(&png);
    if (image.isNull() || !target.open(QIODevice::WriteOnly) || !image.save(&target, "PNG"))
        return {};
    name = QFileInfo(name).completeBaseName() + QStringLiteral(".png");
    return png;
}

/// A picture is read when its place comes into sight.
class Icon_Item : public QListWidgetItem
{
public:
    static constexpr int Name_Role = Qt::UserRole;

    Icon_Item(const QString &name, QListWidget *list) : QListWidgetItem(Icon_Title(name), list)
    {
        setData(Name_Role, name);
    }
    [[nodiscard]] QString Name() const { return data(Name_Role).toString(); }

    [[nodiscard]] QVariant data(int role) const override
    {
        return role == Qt::DecorationRole ? Node_Icon(Name()) : QListWidgetItem::data(role);
    }
};
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
        auto *item = new Icon_Item(name, this);
        item->setToolTip(Plain_Tip(name));
    }
}

void Icon_List::Select(const QString &name)
{
    const QModelIndexList found =
        model()->match(model()->index(0, 0), Icon_Item::Name_Role, name, 1, Qt::MatchFixedString);
    setCurrentIndex(found.value(0));
    scrollTo(found.value(0));
}

QString Icon_List::Selected() const
{
    return currentIndex().data(Icon_Item::Name_Role).toString();
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
