// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCborMap>
#include <QDateTime>
#include <QString>
#include <vector>

/// Whether an office program holds a file open, as its lock file tells.
bool Is_Open_In_Office(const QString &path);

/// A file that another program edits: in a folder of its own among the drafts, with a record beside it that tells a
/// later process what it is a copy of and which bytes were taken over last. Whoever has the copy writes the file and
/// decides when it goes.
class Outside_Copy
{
public:
    /// How the file was at a moment.
    struct Moment {
        qint64 size = -1; ///< -1 where there is none
        QDateTime written;
        bool operator==(const Moment &) const = default;
    };

    /// Makes the folder.
    /// @param suffix  of its name; @param name  the copy's; @param folder  one in the folder, for names of all kinds
    /// @throws Run_Time_Error when the name is no plain file name
    Outside_Copy(const QString &suffix, const QString &name, const QString &folder = {});
    /// Those that earlier processes left, with their records; what was never given away goes, and damage is logged.
    static std::vector<Outside_Copy> Left(const QString &suffix);

    [[nodiscard]] QString Path() const;
    [[nodiscard]] QString Directory() const;
    /// Whether another program has the file, as far as can be known: an office program says so by its lock file, and
    /// once it did, by that alone; another one has the file on its command line.
    [[nodiscard]] bool Is_In_Use();
    /// Whether the file is another one, by time or size, than when it was looked at last. Costs nothing.
    [[nodiscard]] bool Is_Touched() const { return Now() != m_seen; }
    /// Whether it holds other bytes than were noted last. A file that was touched is read.
    [[nodiscard]] bool Is_Changed();
    /// The same, once the file has been left alone from one call to the next: a program may still be writing it.
    [[nodiscard]] bool Is_Settled_Change();

    /// What the file holds now counts as taken over, and the record beside it says so.
    void Note(const QCborMap &facts);
    /// The same, when it was taken over as it was at a moment; one that was written since is changed again.
    void Note(const QCborMap &facts, const Moment &taken);
    [[nodiscard]] Moment Now() const;
    /// The facts that were noted last.
    [[nodiscard]] const QCborMap &Facts() const { return m_facts; }

    void Remove() const;

private:
    Outside_Copy() = default;
    [[nodiscard]] QByteArray Digest() const;
    void Read_Record();
    void Write_Record() const;

    QString m_folder;
    QString m_file;
    QCborMap m_facts;
    QByteArray m_digest; ///< of the bytes that were noted
    Moment m_seen;       ///< the file when it had that digest
    Moment m_looked;     ///< when it was asked whether it has settled
    bool m_wasLocked = false;
};
