// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/transfer.h"
#include "exchange/transfer_candidates.h"
#include "platform/models/tree_model.h"
#include "ui/exchange/selection_lists.h"
#include "ui/kit/ctrl_language.h"

#include <QDialog>
#include <memory>

class Import_Source;
namespace Ui
{
class Frm_Transfer;
}

/// Copies chosen documents between the database in force and another file: a tree of the one that is browsed, the
/// documents of its chosen folder, and below them those that are to be copied.
class Frm_Transfer : public QDialog
{
    Q_OBJECT

public:
    ~Frm_Transfer() override;

signals:
    /// Documents and folders came into the database in force.
    void Imported();

protected:
    Frm_Transfer(Mod_DataBaseExport::Direction direction, const QString &section, QWidget *parent);

    /// Chooses the other file.
    virtual void Cmd_Browse_Click() = 0;
    /// Connection string of the other file, made fit to be used; "" after a message.
    virtual QString Other_File() = 0;
    /// What is said at the end.
    virtual void Tell(const Mod_DataBaseExport::Transfer_Result &result) = 0;

    void Browse(const QString &connection);
    /// A text of the form's own section.
    [[nodiscard]] QString Own_Text(const char *key) const;
    void Say(const char *key, const QString &before = {});

    std::unique_ptr<Ui::Frm_Transfer> m_ui;
    ctrlLanguage Lang;

private:
    void List_Folder();
    void Look_For_Known();
    void Show_Known();
    void Cmd_Export_Click();
    [[nodiscard]] bool Agrees(const QString &target, const QString &source, const QStringList &ids);
    [[nodiscard]] QList<Mod_DataBaseExport::Transfer_Row> Chosen() const;

    Mod_DataBaseExport::Direction m_direction;
    QString m_browsed; ///< connection string of the database whose tree is shown
    Tree_Model m_tree;
    std::unique_ptr<Selection_Lists> m_lists;
};

/// From the database in force into a file, which is made where it is missing.
class Frm_DataExport_Ex : public Frm_Transfer
{
    Q_OBJECT

public:
    explicit Frm_DataExport_Ex(QWidget *parent = nullptr);

protected:
    void Cmd_Browse_Click() override;
    QString Other_File() override;
    void Tell(const Mod_DataBaseExport::Transfer_Result &result) override;
};

/// From a file into the database in force.
class Frm_DataInport_Ex : public Frm_Transfer
{
    Q_OBJECT

public:
    explicit Frm_DataInport_Ex(QWidget *parent = nullptr);
    ~Frm_DataInport_Ex() override;

protected:
    void Cmd_Browse_Click() override;
    QString Other_File() override;
    void Tell(const Mod_DataBaseExport::Transfer_Result &result) override;

private:
    std::unique_ptr<Import_Source> m_source;
};
