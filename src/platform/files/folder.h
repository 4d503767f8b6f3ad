// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/errors/run_time_error.h"

#include <QByteArray>
#include <QString>
#include <optional>
#include <sys/stat.h>

namespace Files
{
/// A system's descriptor that is closed with its owner.
class Descriptor
{
public:
    explicit Descriptor(int number = -1) : m_number(number) {}
    ~Descriptor();
    Descriptor(Descriptor &&other) noexcept : m_number(other.Give_Up()) {}
    Descriptor &operator=(Descriptor &&other) noexcept;
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    [[nodiscard]] bool Is_Open() const { return m_number >= 0; }
    [[nodiscard]] int Number() const { return m_number; }
    int Give_Up();

private:
    int m_number;
};

/// The folder that holds the last name of a path, held open, so that what is done with the name is done there and
/// nowhere else. A member that answers -1, or none, leaves the reason in errno.
class Folder
{
public:
    enum class If_Missing { Fail, Make };

    /// Walks to the folder: by links only where none of its part is guarded.
    explicit Folder(const QString &path, If_Missing ifMissing = If_Missing::Fail);

    [[nodiscard]] bool Is_Open() const { return m_folder.Is_Open(); }
    /// Why it could not be reached, as an errno.
    [[nodiscard]] int Trouble() const { return m_trouble; }
    [[nodiscard]] int Number() const { return m_folder.Number(); }
    [[nodiscard]] const char *Name() const { return m_name.constData(); }
    [[nodiscard]] bool Is_Guarded() const { return m_guarded; }

    /// What the name stands for: a link is a link.
    [[nodiscard]] std::optional<struct stat> Look() const;
    /// Opens the name as a regular file. Never waits, as a pipe would make it.
    [[nodiscard]] Descriptor Open(int flags, mode_t mode = 0) const;
    /// The folder of that name, to be listed.
    [[nodiscard]] Descriptor Open_Folder() const;

private:
    void Walk(const QString &from, const QString &way, If_Missing ifMissing);
    void Step(const QByteArray &name, If_Missing ifMissing);

    Descriptor m_folder;
    QByteArray m_name;
    int m_trouble = 0;
    bool m_guarded = false;
};

/// A text for an errno, with the number and kind that the system's procedures look at.
[[noreturn]] void Throw_Read_Error(const QString &path, int trouble);
[[noreturn]] void Throw_Write_Error(const QString &path, int trouble);
} // namespace Files
