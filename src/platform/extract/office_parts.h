// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QDeadlineTimer>
#include <QHash>
#include <QString>
#include <functional>
#include <memory>

class QXmlStreamReader;

namespace ExtractText
{
/// The parts of an Office Open XML package (ECMA-376 part 2), read one after the other. All reading of one package
/// shares one budget of unpacked bytes and of time: a small file that unpacks to a huge one ends early.
class Office_Parts
{
public:
    static constexpr qsizetype Most_Parts = 1 << 16;

    explicit Office_Parts(const QString &path);
    ~Office_Parts();
    Office_Parts(const Office_Parts &) = delete;
    Office_Parts &operator=(const Office_Parts &) = delete;

    [[nodiscard]] bool Has(const QString &part) const;
    /// Gives each token of a part to `token` until it answers false, the part ends, or the budget does. What no office
    /// file has ends the reading too: a document type declaration, before any entity is expanded, elements within
    /// elements, attributes and namespaces without end, millions of tokens without a word.
    void Read(const QString &part, const std::function<bool(QXmlStreamReader &xml)> &token);
    /// Targets of a part's first Most_Parts relationships by their ids, as part names.
    QHash<QString, QString> Relationships(const QString &part);
    /// The part to which one is related by a type that ends in a word, `usual` where there is none. The package itself
    /// is the part "".
    QString Related(const QString &part, QLatin1StringView type, QLatin1StringView usual);

private:
    class Stream;
    bool Pays(const QXmlStreamReader &xml);
    struct Relationship;
    void Read_Relationships(const QString &part, const std::function<void(const Relationship &)> &use);
    struct Archive;
    std::unique_ptr<Archive> m_archive;
    qint64 m_bytesLeft = Q_INT64_C(160) << 20;
    qint64 m_unpaid = 0; ///< tokens without text
    QDeadlineTimer m_deadline{20'000};
};
} // namespace ExtractText
