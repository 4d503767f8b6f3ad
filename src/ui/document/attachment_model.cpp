// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/document/attachment_model.h"

#include "core/language_pack.h"
#include "documents/attachment_place.h"
#include "platform/models/plain_tip.h"
#include "ui/kit/icons.h"
#include "ui/kit/type_icons.h"

#include <QAbstractItemView>
#include <QCollator>
#include <QFileInfo>
#include <QHash>
#include <QLocale>
#include <QMimeData>
#include <QMimeDatabase>
#include <algorithm>
#include <numeric>
#include <set>

namespace
{
constexpr const char *Caption_Keys[] = {"_Col_Name", "_Col_Document", "_Col_Size",  "_Col_Date",
                                        "_Col_Kind", "_Col_Place",    "_Col_Remark"};

/// The desktop's icon for a kind of file, where it has one.
QIcon File_Icon(const QString &name)
{
    static QHash<QString, QIcon> icons;
    const QString suffix = QFileInfo(name).suffix().toLower();
    const auto known = icons.constFind(suffix);
    if (known != icons.constEnd())
        return *known;
    const QMimeType type = QMimeDatabase().mimeTypeForFile(QLatin1String("x.") + suffix, QMimeDatabase::MatchExtension);
    const QIcon icon = QIcon::fromTheme(type.iconName(), QIcon::fromTheme(type.genericIconName()));
    return icons[suffix] = icon.isNull() ? Type_Icon(suffix) : icon;
}
} // namespace

Attachment_Model::Attachment_Model(std::vector<Column> columns, QObject *parent)
    : QAbstractTableModel(parent), m_columns(std::move(columns))
{
}

void Attachment_Model::Show(QList<Attachment> files)
{
    beginResetModel();
    m_files = std::move(files);
    endResetModel();
}

void Attachment_Model::Load_Lang()
{
    beginResetModel();
    m_captions.clear();
    for (const Column column : m_columns)
        m_captions << Pack_Text("Page_Attachments", Caption_Keys[static_cast<size_t>(column)]);
    m_inside = Pack_Text("Frm_Doc_Standard", "_Inside");
    m_outside = Pack_Text("Frm_Doc_Standard", "_Outside");
    m_noDocument = Pack_Text("Page_Attachments", "_No_Document");
    endResetModel();
}

int Attachment_Model::Find(qint64 id) const
{
    const auto found =
        std::find_if(m_files.begin(), m_files.end(), [id](const Attachment &one) { return one.id == id; });
    return found == m_files.end() ? -1 : static_cast<int>(found - m_files.begin());
}

void Attachment_Model::Set_File(const Attachment &file)
{
    const int row = Find(file.id);
    if (row < 0)
        return;
    m_files[row] = file;
    emit dataChanged(index(row, 0), index(row, columnCount() - 1));
}

int Attachment_Model::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_files.size());
}

int Attachment_Model::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
}

QString Attachment_Model::Text(const Attachment &file, Column column) const
{
    switch (column) {
    case Column::Name:
        return file.name.simplified();
    case Column::Document:
        return file.has_document ? file.title.simplified() : m_noDocument;
    case Column::Size:
        return file.size;
    case Column::Date:
        return file.date;
    case Column::Kind:
        return file.type == Attachment_Type::Internal ? m_inside : m_outside;
    case Column::Place:
        return file.path.simplified();
    case Column::Remark:
        return file.remark.simplified();
    }
    return {};
}

QIcon Attachment_Model::Icon(const Attachment &file) const
{
    if (file.type == Attachment_Type::External) {
        const Attachment_Place::Kind kind = Attachment_Place::Expanded(file.path).kind;
        if (kind != Attachment_Place::Kind::File)
            return Line_Icon(kind == Attachment_Place::Kind::Page ? QStringLiteral("link") : QStringLiteral("folder"));
    }
    return File_Icon(file.name);
}

QVariant Attachment_Model::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_files.size())
        return {};
    const Attachment &file = m_files[index.row()];
    const Column column = m_columns[static_cast<size_t>(index.column())];
    switch (role) {
    case Qt::DisplayRole:
        return Text(file, column);
    case Qt::DecorationRole:
        return column == Column::Name ? QVariant(Icon(file)) : QVariant();
    case Qt::TextAlignmentRole:
        return column == Column::Size ? QVariant(Qt::AlignRight | Qt::AlignVCenter) : QVariant();
    case Qt::ToolTipRole: {
        const QString shown = Text(file, column);
        return Plain_Tip(file.path.isEmpty() || column != Column::Name ? shown : shown + QLatin1Char('\n') + file.path);
    }
    case Id_Role:
        return file.id;
    default:
        return {};
    }
}

QVariant Attachment_Model::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::TextAlignmentRole)
        return m_columns[static_cast<size_t>(section)] == Column::Size ? QVariant(Qt::AlignRight | Qt::AlignVCenter)
                                                                       : QVariant(Qt::AlignLeft | Qt::AlignVCenter);
    return role == Qt::DisplayRole ? m_captions.value(section) : QVariant();
}

Qt::ItemFlags Attachment_Model::flags(const QModelIndex &index) const
{
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    return Files_For ? flags | Qt::ItemIsDragEnabled : flags;
}

QStringList Attachment_Model::mimeTypes() const
{
    return {QStringLiteral("text/uri-list")};
}

QMimeData *Attachment_Model::mimeData(const QModelIndexList &indexes) const
{
    std::set<int> rows;
    for (const QModelIndex &index : indexes)
        rows.insert(index.row());
    QList<Attachment> files;
    for (const int row : rows)
        files << m_files[row];
    const QList<QUrl> urls = Files_For && !files.isEmpty() ? Files_For(files) : QList<QUrl>();
    if (urls.isEmpty())
        return nullptr;
    auto *data = new QMimeData;
    data->setUrls(urls);
    return data;
}

void Attachment_Model::sort(int column, Qt::SortOrder order)
{
    if (column < 0 || column >= columnCount())
        return;
    const Column by = m_columns[static_cast<size_t>(column)];
    const QCollator collator(QLocale(QLocale::Chinese, QLocale::China));
    std::vector<QCollatorSortKey> keys;
    std::vector<qint64> bytes;
    for (const Attachment &file : m_files) {
        by == Column::Size ? bytes.push_back(Attachment_Bytes(file)) : keys.push_back(collator.sortKey(Text(file, by)));
    }
    const auto less = [&](size_t one, size_t other) {
        return by == Column::Size ? bytes[one] < bytes[other] : keys[one] < keys[other];
    };
    std::vector<size_t> places(static_cast<size_t>(m_files.size()));
    std::iota(places.begin(), places.end(), size_t(0));
    std::stable_sort(places.begin(), places.end(), [&](size_t one, size_t other) {
        return order == Qt::AscendingOrder ? less(one, other) : less(other, one);
    });
    emit layoutAboutToBeChanged();
    QList<Attachment> sorted;
    QHash<int, int> moved;
    for (const size_t place : places) {
        moved[static_cast<int>(place)] = static_cast<int>(sorted.size());
        sorted << m_files[static_cast<qsizetype>(place)];
    }
    m_files = std::move(sorted);
    for (const QModelIndex &old : persistentIndexList())
        changePersistentIndex(old, index(moved[old.row()], old.column()));
    emit layoutChanged();
}

QList<Attachment> Selected_Attachments(const QAbstractItemView &view, const Attachment_Model &model)
{
    QModelIndexList rows = view.selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end(), [](const QModelIndex &a, const QModelIndex &b) { return a.row() < b.row(); });
    QList<Attachment> files;
    for (const QModelIndex &row : rows)
        files << model.Files()[row.row()];
    return files;
}
