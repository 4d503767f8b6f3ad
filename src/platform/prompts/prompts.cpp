// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/prompts/prompts.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>

namespace
{
Prompt_Script *script = nullptr;
Prompts::Button_Texts words;

const QString Safe_Refusal = QStringLiteral("cancel");

QMessageBox::Icon Box_Icon(Prompts::Icon icon)
{
    switch (icon) {
    case Prompts::Icon::Information:
        return QMessageBox::Information;
    case Prompts::Icon::Exclamation:
        return QMessageBox::Warning;
    case Prompts::Icon::Critical:
        return QMessageBox::Critical;
    case Prompts::Icon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

void Name_Button(QMessageBox &box, QMessageBox::StandardButton button, const QString &text)
{
    if (!text.isEmpty() && box.button(button) != nullptr)
        box.button(button)->setText(text);
}

/// As much of a text as a box has room for: a name may be as long as its column, or a file's.
QString Shown(const QString &text)
{
    constexpr qsizetype Longest = 4000;
    return text.size() > Longest ? text.left(Longest) + QChar(u'…') : text;
}

/// Shows a box with the pack's words on its buttons; the busy pointer of a running procedure is put aside meanwhile.
int Show_Box(QMessageBox &box, const Prompts::Button_Texts &own = {})
{
    box.setText(Shown(box.text()));
    Name_Button(box, QMessageBox::Ok, words.ok);
    Name_Button(box, QMessageBox::Yes, words.yes);
    Name_Button(box, QMessageBox::No, words.no);
    Name_Button(box, QMessageBox::Cancel, words.cancel);
    Name_Button(box, QMessageBox::Yes, own.yes);
    Name_Button(box, QMessageBox::No, own.no);
    Name_Button(box, QMessageBox::Cancel, own.cancel);
    QApplication::setOverrideCursor(Qt::ArrowCursor);
    const int answer = box.exec();
    QApplication::restoreOverrideCursor();
    return answer;
}

/// The window that a box belongs to. While one dialog gives way to a box none is active: then it is the main window.
QWidget *Owner()
{
    if (QApplication::activeWindow() != nullptr)
        return QApplication::activeWindow();
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && qobject_cast<QMainWindow *>(window) != nullptr)
            return window;
    }
    return nullptr;
}

/// "Name (*.db)|*.db|All (*.*)|*.*" in the toolkit's notation.
QString Native_Filter(const QString &filter)
{
    const QStringList parts = filter.split(QLatin1Char('|'));
    QStringList entries;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString pattern = QString(parts[i + 1]).replace(QLatin1String("*.*"), QLatin1String("*"));
        entries << parts[i].section(QLatin1Char('('), 0, 0).trimmed() + QStringLiteral(" (%1)").arg(pattern);
    }
    return entries.join(QStringLiteral(";;"));
}

/// The suffixes of one kind of a filter: "*.htm *.html" gives "htm" and "html".
QStringList Suffixes(const QString &pattern)
{
    QStringList suffixes;
    for (const QString &one : pattern.split(QLatin1Char(' '), Qt::SkipEmptyParts))
        suffixes << one.section(QLatin1Char('.'), -1);
    return suffixes;
}

/// A name that ends in a suffix of the filter says its kind itself, unless that is the one it was proposed with; any
/// other takes the suffix of the chosen kind.
QString With_Suffix(const QString &path, const QString &proposed, const QString &filter, qsizetype chosen)
{
    const QStringList parts = filter.split(QLatin1Char('|'));
    const QStringList wanted = Suffixes(parts.value(2 * chosen + 1));
    const QString suffix = QFileInfo(path).suffix();
    if (path.isEmpty() || wanted.isEmpty() || wanted.contains(suffix, Qt::CaseInsensitive))
        return path;
    if (!suffix.isEmpty() && suffix == QFileInfo(proposed).suffix())
        return path.chopped(suffix.size()) + wanted.first();
    QStringList known;
    for (qsizetype i = 1; i < parts.size(); i += 2)
        known += Suffixes(parts[i]);
    return known.contains(suffix, Qt::CaseInsensitive) ? path : path + QLatin1Char('.') + wanted.first();
}

/// Asks for a file to write. The box itself asks before one is replaced, so it comes again where the name that it was
/// left with lacks its suffix and the whole name is one that exists.
QString Ask_Save_File(const QString &title, const QString &path, const QString &filter)
{
    QFileDialog box(Owner(), title, path, Native_Filter(filter));
    box.setAcceptMode(QFileDialog::AcceptSave);
    box.selectFile(path);
    const auto chosen = [&] {
        return box.nameFilters().indexOf(box.selectedNameFilter());
    };
    while (box.exec() == QDialog::Accepted) {
        const QString typed = box.selectedFiles().value(0);
        QString whole = With_Suffix(typed, path, filter, chosen());
        if (whole == typed || !QFileInfo::exists(whole))
            return whole;
        box.selectFile(whole);
    }
    return {};
}
} // namespace

namespace Prompts
{
void Set_Button_Texts(const Button_Texts &texts)
{
    words = texts;
}

void Message(const QString &text, const QString &title, Icon icon)
{
    if (script != nullptr) {
        script->Take(text, QStringLiteral("ok"));
        return;
    }
    QMessageBox box(Box_Icon(icon), title, text, QMessageBox::Ok, Owner());
    Show_Box(box);
}

Answer Ask(const QString &text, const QString &title, Choice choice, Answer preset, const Button_Texts &own)
{
    const bool cancellable = choice == Choice::Yes_No_Cancel;
    if (script != nullptr) {
        const QString answer = script->Take(text, Safe_Refusal);
        if (answer == QLatin1String("yes"))
            return Answer::Yes;
        return answer == QLatin1String("no") || !cancellable ? Answer::No : Answer::Cancel;
    }
    QMessageBox box(QMessageBox::Question, title, text, QMessageBox::Yes | QMessageBox::No, Owner());
    if (cancellable)
        box.addButton(QMessageBox::Cancel);
    box.setDefaultButton(preset == Answer::Yes ? QMessageBox::Yes : QMessageBox::No);
    box.setEscapeButton(cancellable ? QMessageBox::Cancel : QMessageBox::No);
    switch (Show_Box(box, own)) {
    case QMessageBox::Yes:
        return Answer::Yes;
    case QMessageBox::No:
        return Answer::No;
    default:
        return Answer::Cancel;
    }
}

int Choose(const QString &text, const QString &title, const QStringList &answers)
{
    if (script != nullptr) {
        bool isNumber = false;
        const int chosen = script->Take(text, Safe_Refusal).toInt(&isNumber);
        return isNumber ? chosen : -1;
    }
    QMessageBox box(QMessageBox::Question, title, text, QMessageBox::Cancel, Owner());
    QList<QAbstractButton *> buttons;
    for (const QString &answer : answers)
        buttons << box.addButton(answer, QMessageBox::ActionRole);
    box.setDefaultButton(QMessageBox::Cancel);
    box.setEscapeButton(QMessageBox::Cancel);
    Show_Box(box);
    return static_cast<int>(buttons.indexOf(box.clickedButton()));
}

QString Input(const QString &text, const QString &title, const QString &preset, bool masked)
{
    if (script != nullptr)
        return script->Take(text, {});
    QInputDialog box(Owner());
    box.setWindowTitle(title);
    box.setLabelText(Shown(text));
    box.setTextValue(preset);
    box.setTextEchoMode(masked ? QLineEdit::Password : QLineEdit::Normal);
    if (!words.ok.isEmpty()) {
        box.setOkButtonText(words.ok);
        box.setCancelButtonText(words.cancel);
    }
    QApplication::setOverrideCursor(Qt::ArrowCursor);
    const bool accepted = box.exec() == QDialog::Accepted;
    QApplication::restoreOverrideCursor();
    return accepted ? box.textValue() : QString();
}

QString Open_File(const QString &title, const QString &directory, const QString &filter)
{
    if (script != nullptr)
        return script->Take(title, {});
    return QFileDialog::getOpenFileName(Owner(), title, directory, Native_Filter(filter));
}

QStringList Open_Files(const QString &title, const QString &directory)
{
    if (script != nullptr)
        return script->Take(title, {}).split(QLatin1Char('|'), Qt::SkipEmptyParts);
    return QFileDialog::getOpenFileNames(Owner(), title, directory);
}

QString Save_File(const QString &title, const QString &path, const QString &filter)
{
    if (script == nullptr)
        return Ask_Save_File(title, path, filter);
    const QStringList answer = script->Take(title, {}).split(QLatin1Char('|'));
    return With_Suffix(answer.first(), path, filter, answer.value(1).toInt());
}

QString Folder(const QString &title, const QString &directory)
{
    if (script != nullptr)
        return script->Take(title, {});
    return QFileDialog::getExistingDirectory(Owner(), title, directory);
}
} // namespace Prompts

Prompt_Script::Prompt_Script()
{
    script = this;
}

Prompt_Script::~Prompt_Script()
{
    script = nullptr;
}

void Prompt_Script::Expect(const QString &text, const QString &answer)
{
    m_expectations.append({text, answer});
}

QStringList Prompt_Script::Problems() const
{
    QStringList problems = m_unexpected;
    for (const Expectation &unused : m_expectations)
        problems << QStringLiteral("never asked: ") + unused.text;
    return problems;
}

QString Prompt_Script::Take(const QString &prompt, const QString &safeAnswer)
{
    if (m_expectations.isEmpty() || !prompt.contains(m_expectations.first().text)) {
        m_unexpected << QStringLiteral("unexpected: ") + prompt;
        return safeAnswer;
    }
    return m_expectations.takeFirst().answer;
}
