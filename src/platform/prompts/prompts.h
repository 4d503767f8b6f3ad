// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

/// Every question to the user goes through here: boxes, input boxes, file and folder pickers. A test scripts the
/// answers with Prompt_Script; nothing is shown then.
namespace Prompts
{
enum class Icon { None, Information, Exclamation, Critical };
enum class Answer { Ok, Yes, No, Cancel };
enum class Choice { Yes_No, Yes_No_Cancel };

/// The words on the buttons: those of the language pack in force, or a question's own where it has some.
struct Button_Texts {
    QString ok = {};
    QString yes = {};
    QString no = {};
    QString cancel = {};
};

void Message(const QString &text, const QString &title, Icon icon = Icon::Information);
/// @param preset  the answer that Enter gives; closing the box answers Cancel, or No where there is no Cancel.
Answer Ask(const QString &text, const QString &title, Choice choice, Answer preset = Answer::Yes,
           const Button_Texts &own = {});
/// A question with answers of its own, and Cancel. @returns the answer's number from 0, -1 for Cancel
int Choose(const QString &text, const QString &title, const QStringList &answers);
/// One line of text; a null string when the user cancels. `masked` hides what is typed.
QString Input(const QString &text, const QString &title, const QString &preset = {}, bool masked = false);
/// A file to open, or "" when the user cancels. `filter` as in "Name (*.db)|*.db".
QString Open_File(const QString &title, const QString &directory, const QString &filter = {});
/// Files to open, none when the user cancels. A script gives them with "|" between them.
QStringList Open_Files(const QString &title, const QString &directory);
/// A file to write, or "" when the user cancels; one that exists was agreed to be replaced. It ends in a suffix of
/// `filter`, that of the chosen kind where none of them was typed.
QString Save_File(const QString &title, const QString &path, const QString &filter);
QString Folder(const QString &title, const QString &directory);

void Set_Button_Texts(const Button_Texts &texts);
} // namespace Prompts

/// The answers of one test. While one exists no box is shown; an unexpected prompt takes the safe answer (Cancel,
/// No, "") and is a problem, an expectation that stays unused is one too.
class Prompt_Script
{
public:
    Prompt_Script();
    ~Prompt_Script();
    Prompt_Script(const Prompt_Script &) = delete;
    Prompt_Script &operator=(const Prompt_Script &) = delete;

    /// The next prompt must contain `text`; it is answered with `answer`: "ok", "yes", "no", "cancel", or for the
    /// input boxes and pickers the text itself. Behind a file to write may stand "|" and the number of the kind that
    /// was chosen, counted from 0. An answer of a question's own is its number.
    void Expect(const QString &text, const QString &answer);
    /// What went wrong so far, unused expectations included; empty when all is well.
    [[nodiscard]] QStringList Problems() const;

    /// Takes the expectation for a prompt that is about to be shown.
    QString Take(const QString &prompt, const QString &safeAnswer);

private:
    struct Expectation {
        QString text;
        QString answer;
    };
    QList<Expectation> m_expectations;
    QStringList m_unexpected;
};
