// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/document/file_card.h"

#include "core/language_pack.h"
#include "platform/files/paths.h"
#include "platform/models/plain_tip.h"
#include "platform/pictures/raster.h"
#include "ui/kit/icons.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QToolButton>
#include <algorithm>

namespace
{
struct Kind {
    const char *types; ///< blank behind each
    const char *icon;
    const char *words;
};
constexpr Kind Kinds[] = {
    {"XLS XLSX ET ", "table", "_Kind_Table"},
    {"DOC DOCX WPS PDF ", "note", "_Kind_Text"},
    {"PPT PPTX DPS ", "preview", "_Kind_Slides"},
    {"PNG JPG JPEG GIF BMP WEBP TIF TIFF ICO SVG ", "picture", "_Kind_Picture"},
};
constexpr int Preview_Width = 160, Preview_Height = 90;
constexpr qint64 Most_Read = 16 << 20; // bytes of a picture for so small a view
constexpr Kind Any_Kind{"", "link", "_Kind_File"};

const Kind &Kind_Of(const QString &type)
{
    const auto *found = std::find_if(std::begin(Kinds), std::end(Kinds), [&](const Kind &kind) {
        return QLatin1String(kind.types).contains(type + QLatin1Char(' '));
    });
    return type.isEmpty() || found == std::end(Kinds) ? Any_Kind : *found;
}
/// A small view of a picture file; none of anything else.
QPixmap Preview(const QString &place, qreal ratio)
{
    const QString path = place.isEmpty() ? QString() : Files::Native_Path(place);
    if (path.isEmpty() || QFileInfo(path).size() > Most_Read || !Raster::Is_Picture_File(path))
        return {};
    const QSize room = QSize(Preview_Width, Preview_Height) * ratio;
    const QImage picture = Raster::Decode(Raster::Read_File(path), 4 * room.width() * room.height(), true);
    if (picture.isNull())
        return {};
    const bool fits = picture.width() <= room.width() && picture.height() <= room.height();
    QPixmap view =
        QPixmap::fromImage(fits ? picture : picture.scaled(room, Qt::KeepAspectRatio, Qt::SmoothTransformation));
    view.setDevicePixelRatio(ratio);
    return view;
}
} // namespace

File_Card::File_Card(QWidget *parent)
    : QFrame(parent), m_icon(new QLabel(this)), m_name(new QLabel(this)), m_facts(new QLabel(this)),
      m_open(new QToolButton(this))
{
    constexpr int Wide = 16, Usual = 12, Small = 8;
    m_name->setObjectName(QStringLiteral("Lab_File_Name"));
    m_facts->setObjectName(QStringLiteral("Lab_File_Facts"));
    m_open->setObjectName(QStringLiteral("Cmd_Outside"));
    m_open->setText(QStringLiteral("用其他程序打开(&X)"));
    m_open->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_open->setIcon(Line_Icon(QStringLiteral("open")));
    for (QLabel *label : {m_name, m_facts}) {
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
        label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    }
    auto *words = new QVBoxLayout;
    words->setSpacing(0);
    words->addStretch();
    words->addWidget(m_name);
    words->addWidget(m_facts);
    words->addStretch();
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(Wide, Small, Usual, Small);
    row->setSpacing(Usual);
    row->addWidget(m_icon);
    row->addLayout(words, 1);
    row->addWidget(m_open);
}

void File_Card::Show_File(const Facts &file)
{
    constexpr int Icon_Side = 32;
    const Kind &kind = Kind_Of(file.type);
    const QPixmap preview = Preview(file.path, devicePixelRatioF());
    m_icon->setPixmap(preview.isNull() ? Line_Icon(QLatin1String(kind.icon)).pixmap(Icon_Side) : preview);
    m_name->setText(file.name);
    QStringList facts{Pack_Text("Frm_Doc_Standard", kind.words).arg(file.type)};
    if (file.size > 0)
        facts << QLocale(Pack_Text("Main", "_Locale")).formattedDataSize(file.size);
    if (file.path.isEmpty())
        facts << Pack_Text("Frm_Doc_Standard", "_Kept_Here");
    else if (QFileInfo::exists(Files::Native_Path(file.path)))
        facts << file.path;
    else
        facts << file.path + Pack_Text("Frm_Doc_Standard", "_NoExist");
    m_facts->setText(facts.join(QStringLiteral("  ·  ")));
    m_facts->setToolTip(Plain_Tip(file.path));
}
