// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/extract/office_parts.h"

#include <QDir>
#include <QIODevice>
#include <QXmlStreamReader>

#include <algorithm>
#include <zip.h>

namespace ExtractText
{
struct Office_Parts::Archive {
    explicit Archive(const QString &path) : zip(zip_open(path.toUtf8().constData(), ZIP_RDONLY, nullptr)) {}
    ~Archive()
    {
        if (zip != nullptr)
            zip_discard(zip);
    }
    Archive(const Archive &) = delete;
    Archive &operator=(const Archive &) = delete;

    /// Index of a part, -1 when there is none. Part names are compared without regard to case (ECMA-376-2, 6.2.2).
    [[nodiscard]] zip_int64_t Find(const QString &part) const
    {
        return zip == nullptr ? -1 : zip_name_locate(zip, part.toUtf8().constData(), ZIP_FL_NOCASE);
    }

    zip_t *zip;
};

/// One part as a device that ends when the package's budget does, or when one token has so many attributes that the
/// reader, which compares each with each, would not come back.
class Office_Parts::Stream : public QIODevice
{
public:
    Stream(zip_file_t *file, Office_Parts &owner) : m_file(file), m_owner(owner) { open(QIODevice::ReadOnly); }
    ~Stream() override { zip_fclose(m_file); }

    [[nodiscard]] bool isSequential() const override { return true; }
    void Begin_Token() { m_equalSigns = 0; }

protected:
    qint64 readData(char *data, qint64 size) override
    {
        const qint64 wanted = std::min(size, m_owner.m_bytesLeft);
        if (wanted <= 0 || m_owner.m_deadline.hasExpired() || m_equalSigns > Most_Equal_Signs)
            return -1;
        const zip_int64_t got = zip_fread(m_file, data, static_cast<zip_uint64_t>(wanted));
        m_owner.m_bytesLeft -= std::max<qint64>(got, 0);
        m_equalSigns += std::count(data, data + std::max<qint64>(got, 0), '=');
        return got > 0 ? got : -1;
    }
    qint64 writeData(const char * /*data*/, qint64 /*size*/) override { return -1; }

private:
    static constexpr qint64 Most_Equal_Signs = 1 << 15;

    zip_file_t *m_file;
    Office_Parts &m_owner;
    qint64 m_equalSigns = 0; ///< that were read since the token before was complete
};

Office_Parts::Office_Parts(const QString &path) : m_archive(std::make_unique<Archive>(path)) {}

Office_Parts::~Office_Parts() = default;

bool Office_Parts::Has(const QString &part) const
{
    return m_archive->Find(part) >= 0;
}

/// Whether the tokens so far are those of a file that says something: each costs, and text pays for those around it.
bool Office_Parts::Pays(const QXmlStreamReader &xml)
{
    constexpr qint64 Tokens_For_A_Character = 32;
    constexpr qint64 Most_Unpaid = 4'000'000; // two seconds of a slow machine
    m_unpaid += 1;
    if (xml.isCharacters() && !xml.isWhitespace())
        m_unpaid -= std::min(m_unpaid, xml.text().size() * Tokens_For_A_Character);
    return m_unpaid < Most_Unpaid;
}

void Office_Parts::Read(const QString &part, const std::function<bool(QXmlStreamReader &)> &token)
{
    const zip_int64_t index = m_deadline.hasExpired() ? -1 : m_archive->Find(part);
    zip_file_t *file = index < 0 ? nullptr : zip_fopen_index(m_archive->zip, static_cast<zip_uint64_t>(index), 0);
    if (file == nullptr)
        return;
    constexpr int Deepest = 500;
    constexpr qsizetype Most_Namespaces = 128; // of one element; names are looked up in those of all open ones
    int depth = 0;
    Stream stream(file, *this);
    QXmlStreamReader xml(&stream);
    while (!xml.atEnd() && depth < Deepest && !m_deadline.hasExpired()) {
        const auto type = xml.readNext();
        stream.Begin_Token();
        depth += xml.isStartElement() ? 1 : xml.isEndElement() ? -1 : 0;
        if (type == QXmlStreamReader::DTD || type == QXmlStreamReader::Invalid ||
            xml.namespaceDeclarations().size() > Most_Namespaces || !Pays(xml) || !token(xml))
            return;
    }
}

struct Office_Parts::Relationship {
    QString id;
    QString type;
    QString target;
};

void Office_Parts::Read_Relationships(const QString &part, const std::function<void(const Relationship &)> &use)
{
    const qsizetype slash = part.lastIndexOf(QLatin1Char('/'));
    const QString folder = part.left(slash + 1);
    qsizetype count = 0;
    Read(folder + QStringLiteral("_rels/") + part.mid(slash + 1) + QStringLiteral(".rels"), [&](QXmlStreamReader &xml) {
        if (!xml.isStartElement() || xml.name() != QLatin1String("Relationship"))
            return true;
        const QXmlStreamAttributes facts = xml.attributes();
        const QString target = facts.value(QLatin1String("Target")).toString();
        const bool fromRoot = target.startsWith(QLatin1Char('/'));
        use({facts.value(QLatin1String("Id")).toString(), facts.value(QLatin1String("Type")).toString(),
             QDir::cleanPath(fromRoot ? target.mid(1) : folder + target)});
        return ++count < Most_Parts;
    });
}

QHash<QString, QString> Office_Parts::Relationships(const QString &part)
{
    QHash<QString, QString> targets;
    Read_Relationships(part, [&](const Relationship &one) { targets.insert(one.id, one.target); });
    return targets;
}

QString Office_Parts::Related(const QString &part, QLatin1StringView type, QLatin1StringView usual)
{
    QString found;
    Read_Relationships(part, [&](const Relationship &one) {
        if (one.type.section(QLatin1Char('/'), -1) == type && found.isEmpty() && Has(one.target))
            found = one.target;
    });
    return found.isEmpty() ? QString(usual) : found;
}
} // namespace ExtractText
