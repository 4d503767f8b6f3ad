// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "documents/attachments.h"
#include "documents/outside_copy.h"

#include <memory>
#include <vector>

/// The file of an internal attachment while another program has it. It goes with the object, unless a program still
/// has it or it was changed and neither taken back nor given up: then the next start finds it, as after a
/// kill.
class Attachment_Copy
{
public:
    /// Makes the folder; the file comes with Write. @throws Run_Time_Error when the name is no plain file name
    explicit Attachment_Copy(Attachment attachment);
    ~Attachment_Copy();
    Attachment_Copy(const Attachment_Copy &) = delete;
    Attachment_Copy &operator=(const Attachment_Copy &) = delete;

    /// @returns false when it was called off. @throws Run_Time_Error
    bool Write(Work &work);
    [[nodiscard]] QString Path() const { return m_copy.Path(); }
    [[nodiscard]] QString Directory() const { return m_copy.Directory(); }
    [[nodiscard]] const Attachment &Of() const { return m_attachment; }
    /// Whether another program has the file, as far as can be known.
    [[nodiscard]] bool Is_In_Use() { return m_copy.Is_In_Use(); }
    /// Whether it came from the database in force.
    [[nodiscard]] bool Is_Of_This_Database() const { return m_database == App().Conn_Str; }
    /// Bytes to be read to tell whether the file holds others than were written, taken back or given up last; 0 when
    /// that is known. A file that runs or is run is never looked at.
    [[nodiscard]] qint64 Bytes_To_Look_At() const;
    [[nodiscard]] bool Is_Changed();
    /// Whether what it holds was given up: opened again, it is written anew.
    [[nodiscard]] bool Is_Given_Up() const { return m_givenUp; }
    /// Puts the file in the attachment's place.
    Saved_Attachment Take_Back(Work &work);
    /// What the file holds now is not wanted.
    void Give_Up();
    /// The document of an attachment that had none was stored.
    void Adopt(const QString &code_id);

    /// The changed copies that earlier processes left; the others go.
    static std::vector<std::unique_ptr<Attachment_Copy>> Left();

private:
    explicit Attachment_Copy(Outside_Copy copy);
    [[nodiscard]] QCborMap Facts() const;

    Attachment m_attachment;
    Outside_Copy m_copy;
    const QString m_database = App().Conn_Str;
    bool m_givenUp = false;
};
