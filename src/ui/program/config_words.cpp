// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/program/config_words.h"

#include "core/language_pack.h"
#include "core/process_state.h"
#include "platform/files/door.h"
#include "platform/profile/profile.h"

namespace
{
const QString Section = QStringLiteral("Frm_Config");
constexpr qint64 Largest_Pack = 4 << 20; // bytes

/// Each word with its access key's mark taken away.
void Add(QHash<QString, QString> &words, const Profile::Snapshot &pack)
{
    for (const QString &key : pack.Keys(Section)) {
        if (!key.endsWith(QLatin1String("|Count")))
            words[key.section(u'|', 0, 0)] += pack.Value(Section, key).remove(u'&') + u'\n';
    }
}
} // namespace

Config_Words::Config_Words()
{
    const QString folder = App().App_Path + QStringLiteral("Lang");
    for (const Files::Entry &entry : Files::Entries(folder)) {
        if (entry.is_folder || entry.size > Largest_Pack ||
            !entry.name.endsWith(QLatin1String(".ini"), Qt::CaseInsensitive))
            continue;
        try {
            Add(m_words, Profile::Snapshot(folder + u'/' + entry.name));
        } catch (const Run_Time_Error &) {
            continue;
        }
    }
    Add(m_words, Language().Texts());
}

bool Config_Words::Answer(const QStringList &controls, const QString &text, const QStringList &more) const
{
    QString all = more.join(u'\n');
    for (const QString &control : controls)
        all += u'\n' + m_words.value(control);
    const QStringList wanted = text.split(u' ', Qt::SkipEmptyParts);
    return !wanted.isEmpty() &&
           std::ranges::all_of(wanted, [&](const QString &word) { return all.contains(word, Qt::CaseInsensitive); });
}
