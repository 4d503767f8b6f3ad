// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "documents/attachments.h"

#include <QDateTime>
#include <memory>
#include <vector>

/// The file of an internal attachment while another program has it: a copy among the drafts, in a folder of its own. It
/// goes with the object, unless an office program still has it open or it was changed and neither taken back nor given
/// up: then the next start finds it, as after a kill.
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
    [[nodiscard]] QString Path() const;
    [[nodiscard]] const Attachment &Of() const { return m_attachment; }
    /// Whether the file holds other bytes than were written, taken back or given up last. A file that runs or is run
    /// is never looked at.
    [[nodiscard]] bool Is_Changed();
    /// Puts the file in the attachment's place.
    Saved_Attachment Take_Back(Work &work);
    /// What the file holds now is not wanted.
    void Give_Up();
    /// The document of an attachment that had none was stored.
    void Adopt(const QString &code_id);

    /// The changed copies that earlier processes left; the others go.
    static std::vector<std::unique_ptr<Attachment_Copy>> Left();

private:
    struct State {
        qint64 size = -1;
        QDateTime written;
        bool operator==(const State &) const = default;
    };
    Attachment_Copy(QString directory, const QByteArray &record);
    [[nodiscard]] State Now() const;
    [[nodiscard]] QByteArray Digest() const;
    void Note();

    QString m_directory;
    Attachment m_attachment;
    QByteArray m_digest;
    State m_seen; ///< of the file when it had that digest
};
