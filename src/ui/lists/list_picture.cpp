// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/error_log.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "platform/files/door.h"
#include "platform/files/paths.h"
#include "platform/pictures/raster.h"
#include "ui/kit/shell.h"
#include "ui/lists/frm_list_view.h"
#include "ui_frm_list_view.h"

namespace
{
constexpr qint64 Most_Shown_Pixels = 8 * 1024 * 1024; // more than a screen has

/// Where a picture of that name lies; "" when there is none, or when the name leads elsewhere.
QString Picture_File(const QString &name)
{
    if (name.isEmpty() || name.contains(QLatin1Char('/')) || name.contains(QLatin1Char('\\')))
        return {};
    const QString path = Files::Native_Path(App().App_Path + QStringLiteral("data/img/") + name);
    return Files::Is_File(path) ? path : QString();
}
} // namespace

void Frm_ListView::setListPic(const QString &name)
{
    Trap(QStringLiteral("Frm_ListView\\setListPic"), [&] {
        const QString wanted = name.trimmed();
        const QString path = Picture_File(wanted);
        m_ui->Img_List->setVisible(!path.isEmpty());
        m_ui->Img_List->setProperty("Picture", path);
        m_pictureFile.clear();
        if (!wanted.isEmpty() && path.isEmpty()) {
            // No box: the list's first picture is set before there is a window. The setting stays for the day on which
            // the picture is back.
            m_shell.Set_Status(wanted + Pack_Text("Frm_ListView", "_No_Exist"));
            return;
        }
        Show_Picture();
    });
}

void Frm_ListView::Show_Picture()
{
    if (!m_ui->Img_List->isVisibleTo(this))
        return;
    // A row that is a picture file itself is shown in place of the list's own picture.
    const int column = m_list.Column(QStringLiteral("Lsv_Code_Info_File"));
    const QModelIndex current = m_ui->Lsv_Code_Info->currentIndex();
    const QString file = current.isValid() ? current.siblingAtColumn(column).data().toString() : QString();
    const QString ofRow = Picture_File(file.section(QLatin1Char('\\'), -1).section(QLatin1Char('/'), -1));
    const QString shown = ofRow.isEmpty() ? m_ui->Img_List->property("Picture").toString() : ofRow;
    if (m_pictureFile != shown) {
        m_picture = QPixmap::fromImage(Raster::Decode(Raster::Read_File(shown), Most_Shown_Pixels, true));
        m_pictureFile = shown;
    }
    const QSize room = m_ui->Img_List->contentsRect().size();
    m_ui->Img_List->setPixmap(m_picture.isNull() || room.isEmpty()
                                  ? QPixmap()
                                  : m_picture.scaled(room, Qt::KeepAspectRatio, Qt::SmoothTransformation));
}

void Frm_ListView::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    Show_Picture();
}
