// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "documents/attachments.h"

#include <QAbstractTableModel>
#include <QIcon>
#include <QUrl>
#include <functional>
#include <vector>

class QAbstractItemView;

/// Attachments as rows, whose texts and icons are made when they come on screen. Rows can be dragged away as files.
class Attachment_Model : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum class Column { Name, Document, Size, Date, Kind, Place, Remark };
    static constexpr int Id_Role = Qt::UserRole;

    explicit Attachment_Model(std::vector<Column> columns, QObject *parent = nullptr);

    void Show(QList<Attachment> files);
    /// The captions, in the language pack in force.
    void Load_Lang();
    [[nodiscard]] const QList<Attachment> &Files() const { return m_files; }
    /// The row of an attachment, -1 for none.
    [[nodiscard]] int Find(qint64 id) const;
    /// Puts another state of an attachment in its row.
    void Set_File(const Attachment &file);

    /// Gives the files of rows that are dragged or copied; null where rows stay.
    std::function<QList<QUrl>(const QList<Attachment> &files)> Files_For;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override;
    [[nodiscard]] Qt::DropActions supportedDragActions() const override { return Qt::CopyAction; }
    [[nodiscard]] QStringList mimeTypes() const override;
    [[nodiscard]] QMimeData *mimeData(const QModelIndexList &indexes) const override;
    /// Sizes by their bytes, dates by their time, all else as a Chinese dictionary does.
    void sort(int column, Qt::SortOrder order) override;

private:
    [[nodiscard]] QString Text(const Attachment &file, Column column) const;
    [[nodiscard]] QIcon Icon(const Attachment &file) const;

    std::vector<Column> m_columns;
    QStringList m_captions;
    QString m_inside;
    QString m_outside;
    QString m_noDocument;
    QList<Attachment> m_files;
};

/// The rows of a view that are selected, in their order.
QList<Attachment> Selected_Attachments(const QAbstractItemView &view, const Attachment_Model &model);
