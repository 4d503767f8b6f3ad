// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/language_pack.h"

#include "core/error_log.h"
#include "core/process_state.h"
#include "core/runtime_files.h"
#include "core/settings.h"
#include "platform/files/paths.h"
#include "platform/prompts/prompts.h"

#include <QFileInfo>

namespace
{
constexpr qsizetype Longest_Text = 254;
constexpr qint64 Largest_Pack = 4 * 1024 * 1024;

void Name_Buttons()
{
    Prompts::Set_Button_Texts({Pack_Text("Buttons", "_Ok"), Pack_Text("Buttons", "_Yes"), Pack_Text("Buttons", "_No"),
                               Pack_Text("Buttons", "_Cancel")});
}
} // namespace

void Language_Pack::Load(const QString &folder, const QString &language)
{
    const QString path = Files::Native_Path(folder + QLatin1Char('/') + language + QStringLiteral(".ini"));
    *this = {};
    try {
        if (QFileInfo(path).size() > Largest_Pack)
            throw Run_Time_Error(Error_Number::Path_Access, QStringLiteral("Too large for a language pack: ") + path,
                                 Failure::Too_Large);
        m_texts = Profile::Snapshot(path);
    } catch (const Run_Time_Error &error) {
        m_error = error;
        throw;
    }
    m_loaded = QFileInfo(path).size() > 0;
}

void Language_Pack::Stand_In(const QString &path)
{
    m_texts = Profile::Snapshot(path);
    m_loaded = true;
}

QString Language_Pack::GetString(const QString &section, const QString &key) const
{
    return m_texts.Value(section, key).left(Longest_Text).remove(QChar(QChar::Null));
}

Language_Pack &Language()
{
    static Language_Pack pack;
    return pack;
}

void Load_Built_In_Language()
{
    Resume_Next([] { Language().Stand_In(Resource_Path(QStringLiteral("CHINESE_INI"))); });
    Name_Buttons();
}

void Load_Language(const QString &source)
{
    if (!Resume_Next([] { Language().Load(App().App_Path + QStringLiteral("Lang"), Config().LANGUAGE); }))
        Error_Log(source);
    if (!Language().Is_Loaded())
        Load_Built_In_Language();
    Name_Buttons();
}

QString Pack_Text(const char *section, const char *key)
{
    return Language().GetString(QLatin1String(section), QLatin1String(key));
}

QString Filled(const QString &sentence, const QStringList &values)
{
    QString text;
    for (qsizetype i = 0; i < sentence.size(); ++i) {
        const int place = sentence[i] == u'%' && i + 1 < sentence.size() ? sentence[i + 1].digitValue() : 0;
        if (place >= 1 && place <= values.size()) {
            text += values[place - 1];
            ++i;
        } else {
            text += sentence[i];
        }
    }
    return text;
}

QString Pack_List(const QStringList &words)
{
    const QString sign = Pack_Text("Main", "_List_Sign");
    return words.join(sign.isEmpty() ? QStringLiteral(", ") : sign);
}
