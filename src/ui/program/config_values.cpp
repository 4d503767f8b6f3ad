// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/program/config_values.h"

#include "core/language_pack.h"
#include "platform/files/paths.h"
#include "storage/database_lifecycle.h"
#include "ui/kit/color_button.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFileInfo>
#include <QFontComboBox>
#include <QLineEdit>
#include <QRadioButton>

namespace
{
QString Text(const char *key)
{
    return Pack_Text("Frm_Config", key);
}

/// The folder that is there, at a path or above it.
QFileInfo Nearest(const QString &path)
{
    QFileInfo info(path);
    while (!info.exists() && info.path() != info.filePath())
        info.setFile(info.path());
    return info;
}

QString Reason_Against_Place(const QString &folder)
{
    const QString path = Files::Native_Path(folder);
    if (folder.isEmpty() || !Files::Is_Absolute(path))
        return Text("_Why_Folder");
    const QFileInfo nearest = Nearest(path);
    if (!nearest.isDir())
        return Text("_Why_No_Folder");
    return nearest.isWritable() ? QString() : Text("_Why_Read_Only");
}

/// A path without a place of its own lies in the program directory.
QString Reason_Against_File(const QString &file)
{
    const QString path = Files::Native_Path(Full_Database_Path(file));
    if (file.isEmpty() || QFileInfo(path).isDir())
        return Text("_Why_File");
    return Reason_Against_Place(QFileInfo(path).path());
}
} // namespace

void Config_Values::Show(QWidget &control, const Setting &setting, const QString &text)
{
    if (auto *box = qobject_cast<QCheckBox *>(&control))
        box->setChecked(Is_On(setting, text));
    else if (auto *option = qobject_cast<QRadioButton *>(&control))
        option->setChecked(option->property("Index").toString() == text);
    else if (auto *font = qobject_cast<QFontComboBox *>(&control))
        font->setEditText(text);
    else if (auto *list = qobject_cast<QComboBox *>(&control))
        list->setCurrentIndex(list->findData(text, Qt::UserRole, Qt::MatchFixedString));
    else if (auto *number = qobject_cast<QSpinBox *>(&control))
        number->setValue(qRound(text.toDouble()));
    else if (auto *size = qobject_cast<QDoubleSpinBox *>(&control))
        size->setValue(text.toDouble());
    else if (auto *color = qobject_cast<Color_Button *>(&control))
        color->Set_Number(text);
    else if (auto *line = qobject_cast<QLineEdit *>(&control))
        line->setText(Files::Is_Absolute(text) ? Files::Native_Path(text) : text);
}

QString Config_Values::Of(const QWidget &control, const Setting &setting)
{
    if (const auto *box = qobject_cast<const QCheckBox *>(&control))
        return Switch_Text(setting, box->isChecked());
    if (const auto *option = qobject_cast<const QRadioButton *>(&control))
        return option->isChecked() ? option->property("Index").toString() : QString();
    if (const auto *font = qobject_cast<const QFontComboBox *>(&control))
        return font->currentText().trimmed();
    if (const auto *list = qobject_cast<const QComboBox *>(&control))
        return list->currentIndex() < 0 ? QString() : list->currentData().toString();
    if (const auto *number = qobject_cast<const QSpinBox *>(&control))
        return QString::number(number->value());
    if (const auto *size = qobject_cast<const QDoubleSpinBox *>(&control))
        return QString::number(size->value());
    if (const auto *color = qobject_cast<const Color_Button *>(&control))
        return color->Number();
    const auto *line = qobject_cast<const QLineEdit *>(&control);
    return line == nullptr ? QString() : line->text().trimmed();
}

QString Config_Values::Reason_Against(const Config_Row &row, const QWidget &control, const Setting &setting)
{
    if (const auto *box = qobject_cast<const QAbstractSpinBox *>(&control)) {
        const QString number = QString::number(setting.numbers.most);
        return box->hasAcceptableInput()
                   ? QString()
                   : Filled(Text("_Why_Number"), {QString::number(setting.numbers.least), number});
    }
    const QString text = Of(control, setting);
    switch (row.as) {
    case Shown_As::Folder:
        return Reason_Against_Place(text);
    case Shown_As::File:
        return Reason_Against_File(text);
    case Shown_As::Font:
        return text.isEmpty() ? Text("_Why_Font") : QString();
    default:
        return {};
    }
}

void Config_Values::Watch(QWidget &control, QObject &who, const std::function<void()> &changed)
{
    if (auto *button = qobject_cast<QAbstractButton *>(&control); button != nullptr && button->isCheckable())
        QObject::connect(button, &QAbstractButton::toggled, &who, changed);
    else if (auto *list = qobject_cast<QComboBox *>(&control)) {
        QObject::connect(list, &QComboBox::currentIndexChanged, &who, changed);
        QObject::connect(list, &QComboBox::editTextChanged, &who, changed);
    } else if (qobject_cast<QAbstractSpinBox *>(&control) != nullptr) // it is silent on what is no number yet
        QObject::connect(control.findChild<QLineEdit *>(), &QLineEdit::textChanged, &who, changed);
    else if (auto *color = qobject_cast<Color_Button *>(&control))
        QObject::connect(color, &Color_Button::Number_Changed, &who, changed);
    else if (auto *line = qobject_cast<QLineEdit *>(&control))
        QObject::connect(line, &QLineEdit::textChanged, &who, changed);
}
