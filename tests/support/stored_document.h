// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/process_state.h"
#include "documents/coder.h"
#include "documents/stored_stream.h"
#include "platform/database/recordset.h"
#include "support/test_program.h"

/// A document whose stream holds these bytes. @param text  by which it is listed
inline void Store_Document(const Test_Program &program, const QString &id, const QString &folder, const QString &title,
                           const QString &type, const QByteArray &bytes, const QString &text,
                           const QString &password = {})
{
    Add_Document(id, folder, QStringLiteral("title"));
    program.Write(QStringLiteral("plain"), bytes);
    program.Write(QStringLiteral("coded"), {});
    if (!Run_Coder("e", program.Path(QStringLiteral("plain")), program.Path(QStringLiteral("coded"))))
        qFatal("the coder failed");
    if (!password.isEmpty()) // it takes the last byte's place
        Write_Pass_Tail(program.Path(QStringLiteral("coded")), password);
    Recordset row;
    row.CursorType = Cursor_Type::Keyset;
    row.LockType = Lock_Type::Batch_Optimistic;
    row.Open(QStringLiteral("Select * From Code_Info Where Code_ID='%1'").arg(id), App().Conn_Str);
    row[QStringLiteral("Code_Title")].Set(title);
    row[QStringLiteral("Code_Type")].Set(type);
    row[QStringLiteral("Code_Content")].Set(text);
    Copy_File_To_Blob(program.Path(QStringLiteral("coded")), row[QStringLiteral("Code_Content_IO")]);
    row.UpdateBatch();
}
