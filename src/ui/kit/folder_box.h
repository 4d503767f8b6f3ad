// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QComboBox>

/// The chooser of a document's folder. Its list is the tree; what it shows is the way to the folder, and where there is
/// no room for that the end of it.
class Folder_Box : public QComboBox
{
    Q_OBJECT

public:
    explicit Folder_Box(QWidget *parent = nullptr);

    /// Fills the list with the folders as they are now; the chosen one stays chosen.
    void Fill();
    [[nodiscard]] QString Chosen() const { return currentData().toString(); }
    /// Chooses a folder by its id; one that is not there leaves none chosen.
    void Choose(const QString &id);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    /// The names from the top to the chosen folder.
    [[nodiscard]] QString Path() const;
};
