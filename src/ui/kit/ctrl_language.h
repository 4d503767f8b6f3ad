// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class QAction;
class QObject;
class QWidget;

/// Gives a menu entry its text, and its button in a tool bar the same without access key and dots.
void Set_Caption(QAction &action, const QString &text);

/// The language control of one form: fills in the texts of the form's controls from the pack in force and fetches
/// message texts by key.
///
/// A control's key is its name, "|Index" and its index in a control array (the dynamic properties `Name` and `Index`
/// where it is a member of one, else its object name and nothing), then "|Caption", "|Text" or "|ToolTipText"; a list
/// whose property `lang_ok` is true takes "|Count" and "|Item" + n, a list view's columns do so always. A key that
/// the pack lacks blanks the control's text.
class ctrlLanguage
{
public:
    /// @param form  the form; it is marked as one, so that the walk of a form around it leaves it alone
    ctrlLanguage(QWidget &form, QString formName);

    void LoadControlsCaption();
    /// Text of a message key; `section` is the form's name when it is left out.
    [[nodiscard]] QString GetString(const char *key) const;
    [[nodiscard]] static QString GetString(const char *key, const char *section);
    /// The reverse walk: writes the form's present texts into a pack file, for the authors of a new pack.
    void WriteIniFileFormIDEform(const QString &path) const;
    /// Writes one key with an empty value into the form's section of a pack file.
    void AddSimpleStringToFile(const QString &key, const QString &path) const;

private:
    QWidget *m_form;
    QString m_name;
};
