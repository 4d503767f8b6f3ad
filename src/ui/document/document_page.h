// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <memory>
#include <span>

class QLineEdit;
class Shell;

/// A page of the document form that stores what it shows by itself, beside the fields of the form. It has a form's
/// section in the language packs, where the text of its tab stands too.
class Document_Page : public QWidget
{
    Q_OBJECT

public:
    using QWidget::QWidget;

    /// Shows a document. @param code_id  "" for a new one
    virtual void Show_Document(const QString &code_id, const QString &title) = 0;
    /// The document that is shown was stored; a new one has its id now.
    virtual void Document_Saved(const QString &code_id, const QString &title) = 0;
    /// Whether what belongs to the document may be changed.
    virtual void Set_Changeable(bool /*changeable*/) {}
    /// The form is about to leave the document.
    virtual void Leave() {}
    /// What other programs were given to show or to edit.
    [[nodiscard]] virtual QStringList Left_Outside() const { return {}; }
    [[nodiscard]] virtual QString Caption() const = 0;
    /// Texts of the language pack in force.
    virtual void Load_Lang() = 0;

signals:
    void Caption_Changed();
    /// The user scored how well the document is remembered; that is stored.
    void Scored();
    /// The text that is selected in the body is wanted in a field.
    void Selection_Wanted(QLineEdit *field);
};

/// The pages and their places among the tabs of the form.
struct Document_Page_Row {
    int place;
    /// @param form  what hears the page's keys while the page is behind another one
    std::unique_ptr<Document_Page> (*make)(Shell &shell, QWidget &form);
};
std::span<const Document_Page_Row> Document_Pages();
