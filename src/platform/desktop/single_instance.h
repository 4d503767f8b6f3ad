// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLockFile>
#include <QString>
#include <memory>

/// Tells whether this process is the only one that runs from a program directory. A copy of the program in another
/// directory counts for itself. The place is held as long as the object lives; the system gives it back when the
/// process dies, however it dies.
class Single_Instance
{
public:
    explicit Single_Instance(const QString &programDirectory);
    ~Single_Instance();
    Single_Instance(const Single_Instance &) = delete;
    Single_Instance &operator=(const Single_Instance &) = delete;

    [[nodiscard]] bool Is_Only_One() const { return m_onlyOne; }
    /// Another user's process holds the place, so that no window of this user's will be found.
    [[nodiscard]] bool Is_Held_By_Other_User() const { return m_otherUser; }
    /// Gives the place up, so that a process started now finds it free: for a program that starts itself again.
    void Release();

private:
    enum class Lock { Taken, Held_By_Other, Impossible };
    Lock Lock_Directory(const QString &directory);
    Lock Lock_File(const QString &directory);

    bool m_onlyOne = true;
    bool m_otherUser = false;
    int m_directory = -1; ///< descriptor of the locked directory
    std::unique_ptr<QLockFile> m_file;
};
