// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

/// A place where a key stands in a document, with the words around it.
struct Search_Hit {
    QString field; ///< caption of the field that it stands in
    QString before;
    QString key; ///< as the document spells it
    QString after;
};

/// The first place among the fields that were searched, or, with `place`, the one there in Code_Content. No value when
/// the key is not there any more.
/// @param fields  columns; none stands for the first one, as in a search  @throws Run_Time_Error
std::optional<Search_Hit> Hit_Of(const QString &codeId, const QString &key, const QStringList &fields,
                                 qint64 place = -1);

/// A hit as rich text for a tool tip: the field, and the words with the key marked. Nothing in it is taken for markup.
QString Hit_Tip(const Search_Hit &hit);
