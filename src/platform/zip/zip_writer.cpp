// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/zip/zip_writer.h"

#include "platform/errors/run_time_error.h"

#include <QFile>
#include <cerrno>
#include <zip.h>

Zip_Writer::Zip_Writer(const QString &path) : m_path(path)
{
    m_zip = zip_open(QFile::encodeName(path).constData(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
    if (m_zip == nullptr)
        throw Run_Time_Error(Error_Number::Path_Access, path, Failure::Path_Access);
}

Zip_Writer::~Zip_Writer()
{
    if (m_zip != nullptr)
        zip_discard(m_zip);
}

void Zip_Writer::Fail()
{
    const bool isFull = zip_error_code_system(zip_get_error(m_zip)) == ENOSPC;
    throw Run_Time_Error(isFull ? Error_Number::Disk_Full : Error_Number::Path_Access, m_path,
                         isFull ? Failure::Disk_Full : Failure::Path_Access);
}

void Zip_Writer::Add_Source(const QString &name, void *source, bool isPacked)
{
    auto *bytes = static_cast<zip_source_t *>(source);
    const zip_int64_t entry =
        bytes == nullptr ? -1 : zip_file_add(m_zip, name.toUtf8().constData(), bytes, ZIP_FL_ENC_UTF_8);
    if (entry < 0) {
        zip_source_free(bytes);
        Fail();
    }
    if (!isPacked)
        zip_set_file_compression(m_zip, static_cast<zip_uint64_t>(entry), ZIP_CM_STORE, 0);
}

void Zip_Writer::Add(const QString &name, const QByteArray &bytes, bool isPacked)
{
    const QByteArray &kept = m_added.emplace_back(bytes);
    Add_Source(name, zip_source_buffer(m_zip, kept.constData(), static_cast<zip_uint64_t>(kept.size()), 0), isPacked);
}

void Zip_Writer::Add_Part(const QString &name, const QString &file, qint64 begin, qint64 size, bool isPacked)
{
    Add_Source(name,
               zip_source_file(m_zip, QFile::encodeName(file).constData(), static_cast<zip_uint64_t>(begin), size),
               isPacked);
}

bool Zip_Writer::Finish(const std::function<bool()> &stop)
{
    const auto ask = [](zip_t * /*archive*/, void *data) {
        return (*static_cast<const std::function<bool()> *>(data))() ? 1 : 0;
    };
    if (stop)
        zip_register_cancel_callback_with_state(m_zip, ask, nullptr,
                                                const_cast<std::function<bool()> *>(&stop)); // only called
    if (zip_close(m_zip) == 0) {
        m_zip = nullptr;
        return true;
    }
    if (zip_error_code_zip(zip_get_error(m_zip)) == ZIP_ER_CANCELLED)
        return false;
    Fail();
}
