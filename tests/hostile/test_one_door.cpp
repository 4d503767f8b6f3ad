// SPDX-License-Identifier: GPL-3.0-or-later
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace
{
/// Where files are written without the door: the door itself, and the engine, whose files the database library writes.
const QStringList Own_Ways{u"platform/files/"_s, u"platform/database/"_s};

struct Way {
    const char *name;
    const char *pattern;
};

constexpr Way Ways[] = {
    {"another writer",
     R"(\b(QSaveFile|QTemporaryFile|QTemporaryDir|QSettings)\b|\b(ofstream|fopen|std::filesystem)\b)"},
    {"a file of its own",
     R"(\bQFile\w*\s+\w+\s*[({][^;]*;\s*(//[^\n]*)?\s*[^;]*\bopen\(QIODevice::(WriteOnly|ReadWrite|Append))"},
    {"a name that is changed", R"(\bQFile::(remove|rename|copy|link|setPermissions|moveToTrash|resize)\b)"},
    {"a folder that is changed or listed",
     R"(\b(removeRecursively|mkpath|mkdir|rmdir|rmpath|entryList|entryInfoList)\b|\bQDirIterator\b)"},
    {"the system's own",
     R"(::(open|openat|creat|unlink|unlinkat|rename|link|symlink|truncate|write|pwrite|mkdir|rmdir|chmod)\()"},
    {"a shell", R"((?<![:\w])system\(|\bstd::system\b|\b(popen|startCommand|exec[lv]p?e?|posix_spawnp?)\s*\()"},
    {"a network",
     R"(\bQ(Tcp|Udp|Local|Ssl|Abstract|Web)(Socket|Server)\b|\bQ(Network(AccessManager|Reply)|HostInfo|DnsLookup)\b|(?<!\w)::(socket|connect|listen)\()"},
};

/// A way that is passed by for a reason.
struct Exception {
    const char *file;
    const char *text;
    const char *reason;
};

constexpr Exception Exceptions[] = {
    {"platform/desktop/single_instance.cpp", "O_RDONLY | O_DIRECTORY", "the lock on the program's directory"},
    {"core/config_store.cpp", "entryList", "asks whether names match, as it is prescribed"},
    {"platform/network/fetch.cpp", "", "the one room that asks a network, at the user's word"},
};
} // namespace

/// Nothing in the program writes, deletes, makes or lists files but by the door of platform/files; it runs no shell,
/// and opens no network but in the one room for it.
class Test_One_Door : public QObject
{
    Q_OBJECT

private slots:
    void No_Other_Way_data()
    {
        QTest::addColumn<QString>("pattern");
        for (const Way &way : Ways)
            QTest::newRow(way.name) << QString::fromLatin1(way.pattern);
    }
    void No_Other_Way()
    {
        QFETCH(QString, pattern);
        const QRegularExpression way(pattern);
        const QString root = QStringLiteral(ZELQOR_SOURCES) + u'/';
        QStringList found;
        int files = 0;
        QDirIterator sources(root, {u"*.cpp"_s, u"*.h"_s}, QDir::Files, QDirIterator::Subdirectories);
        while (sources.hasNext()) {
            QFile source(sources.next());
            QVERIFY(source.open(QIODevice::ReadOnly));
            ++files;
            const QString name = source.fileName().mid(root.size());
            const QString code = QString::fromUtf8(source.readAll()).remove(QRegularExpression(u"#include[^\n]*"_s));
            if (std::any_of(Own_Ways.begin(), Own_Ways.end(), [&](const QString &own) { return name.startsWith(own); }))
                continue;
            for (auto match = way.globalMatch(code); match.hasNext();) {
                const QRegularExpressionMatch hit = match.next();
                const QString line = code.mid(code.lastIndexOf(u'\n', hit.capturedStart()) + 1).section(u'\n', 0, 0);
                const bool passed =
                    std::any_of(std::begin(Exceptions), std::end(Exceptions), [&](const Exception &row) {
                        return name == QLatin1String(row.file) && line.contains(QLatin1String(row.text));
                    });
                if (!passed)
                    found << name + u": "_s + line.trimmed();
            }
        }
        QVERIFY(files > 200);
        QCOMPARE(found.join(u'\n'), QString());
    }
};

QTEST_GUILESS_MAIN(Test_One_Door)
#include "test_one_door.moc"
