// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QListWidget>

/// The pictures in data\ico\ as large icons with their names.
class Icon_List : public QListWidget
{
    Q_OBJECT

public:
    explicit Icon_List(QWidget *parent = nullptr);

    void Fill();
    /// Selects a picture by its name, without regard to case.
    void Select(const QString &name);
    /// Name of the selected picture, "" for none.
    [[nodiscard]] QString Selected() const;

    /// Asks for a picture file and keeps it as an icon of the database.
    /// @param title   of the file picker
    /// @param filter  its kinds of files
    /// @returns why it could not be kept; "" when it was, or when the user chose none
    QString Add_Picture(const QString &title, const QString &filter);
};
