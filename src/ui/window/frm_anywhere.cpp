// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/window/frm_anywhere.h"

#include "platform/database/database.h"
#include "ui/kit/icons.h"
#include "ui_frm_anywhere.h"
#include "views/place_loading.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QTreeWidget>
#include <algorithm>

namespace
{
constexpr int Most_Rows = 50;

struct Kind_Row {
    Place_Kind kind;
    const char *text;
    const char *icon;
};
constexpr Kind_Row Kinds[] = {
    {Place_Kind::Command, "_Command", "options"}, {Place_Kind::Document, "_Document", "type_text"},
    {Place_Kind::Folder, "_Folder", "folder"},    {Place_Kind::Tag, "_Tag", "tag"},
    {Place_Kind::Bookmark, "_Bookmark", "note"},
};

const Kind_Row &Row_Of(Place_Kind kind)
{
    return *std::find_if(std::begin(Kinds), std::end(Kinds), [kind](const Kind_Row &row) { return row.kind == kind; });
}
} // namespace

Frm_Anywhere::Frm_Anywhere(const std::vector<Place> &commands, QWidget *parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::Frm_Anywhere>()), m_lang(*this, QStringLiteral("Frm_Anywhere")),
      m_index(std::make_shared<Place_Index>())
{
    m_ui->setupUi(this);
    m_lang.LoadControlsCaption();
    m_ui->Txt_Place->setPlaceholderText(m_lang.GetString("_Hint"));
    m_ui->LV_Places->setAccessibleName(windowTitle());
    m_ui->LV_Places->header()->setStretchLastSection(false);
    m_ui->LV_Places->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_ui->LV_Places->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    m_ui->Txt_Place->installEventFilter(this);
    connect(m_ui->Txt_Place, &QLineEdit::textChanged, this, &Frm_Anywhere::Show_Places);
    connect(m_ui->LV_Places, &QTreeWidget::itemActivated, this, &Frm_Anywhere::Choose);
    for (const Place &command : commands)
        m_index->Add(command);
    Show_Places();
    Load(commands);
}

Frm_Anywhere::~Frm_Anywhere()
{
    m_loader->wait();
}

void Frm_Anywhere::Load(const std::vector<Place> &commands)
{
    const auto loaded = std::make_shared<Place_Index>();
    m_loader.reset(QThread::create([loaded, commands] {
        Load_Places(*loaded);
        for (const Place &command : commands)
            loaded->Add(command);
        Database_Engine::Let_Go();
    }));
    connect(m_loader.get(), &QThread::finished, this, [this, loaded] {
        m_index = loaded;
        Show_Places();
    });
    m_loader->start();
}

QString Frm_Anywhere::Kind_Text(Place_Kind kind) const
{
    return m_lang.GetString(Row_Of(kind).text);
}

void Frm_Anywhere::Show_Places()
{
    m_found = m_index->Find(m_ui->Txt_Place->text(), Most_Rows);
    m_ui->LV_Places->clear();
    const QColor pale = palette().color(QPalette::Disabled, QPalette::Text);
    for (const Place *place : m_found) {
        const QString beside = place->why_not.isEmpty() ? place->detail : place->why_not;
        auto *row = new QTreeWidgetItem({place->text, beside.isEmpty() ? Kind_Text(place->kind) : beside});
        row->setIcon(0, Line_Icon(QLatin1String(Row_Of(place->kind).icon)));
        row->setForeground(1, pale);
        if (!place->why_not.isEmpty())
            row->setForeground(0, pale);
        m_ui->LV_Places->addTopLevelItem(row);
    }
    m_ui->LV_Places->setCurrentItem(m_ui->LV_Places->topLevelItem(0));
}

/// What does not apply now stays where it is, with its reason.
void Frm_Anywhere::Choose(QTreeWidgetItem *row)
{
    const int index = m_ui->LV_Places->indexOfTopLevelItem(row);
    if (index < 0 || !m_found[static_cast<size_t>(index)]->why_not.isEmpty())
        return;
    m_chosen = *m_found[static_cast<size_t>(index)];
    accept();
}

/// The list is gone through from the field.
bool Frm_Anywhere::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_ui->Txt_Place || event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent *>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        Choose(m_ui->LV_Places->currentItem());
        return true;
    }
    if (key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown) {
        QCoreApplication::sendEvent(m_ui->LV_Places, event);
        return true;
    }
    return QDialog::eventFilter(watched, event);
}
