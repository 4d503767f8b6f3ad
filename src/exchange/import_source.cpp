// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/import_source.h"

#include "core/error_log.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "platform/database/database.h"
#include "platform/files/paths.h"
#include "platform/machine/machine.h"
#include "storage/database_lifecycle.h"
#include "users/user_start.h"

#include <QFileInfo>

namespace
{
/// The ladder writes into the file, and the engine beside it.
bool Can_Be_Raised(const QString &path)
{
    const QFileInfo file(path);
    return file.isWritable() && QFileInfo(file.absolutePath()).isWritable();
}

QString Copy_Of(const QString &path)
{
    constexpr int Numbers_Below = 100'000'000;
    QString copy = App().App_Path + QStringLiteral("data/temp/import_%1.db").arg(Machine::Random_Below(Numbers_Below));
    Files::Make_Directory(QFileInfo(copy).path());
    Files::Copy_File(path, copy, Files::Durability::Staging);
    return copy;
}
} // namespace

bool Is_Same_File(const QString &one, const QString &other)
{
    const QString path = QFileInfo(Files::Native_Path(one)).canonicalFilePath();
    return !path.isEmpty() && path == QFileInfo(Files::Native_Path(other)).canonicalFilePath();
}

Import_Source::Import_Source(const QString &path, const Ladder_Callbacks &callbacks)
{
    const QString native = Files::Native_Path(path);
    const QString present =
        Config().Op_DB_Type == QLatin1String("0") ? Database_Engine::File_Of(App().Conn_Str) : QString();
    if (Is_Same_File(native, present))
        throw Run_Time_Error(Error_Number::Db_Failed, Pack_Text("Frm_DataInport_Ex", "_SameDb"));
    m_file.is_copy = !Can_Be_Raised(native);
    m_file.path = m_file.is_copy ? Copy_Of(native) : native;
    m_connStr = File_Conn_Str(m_file.path);
    Run_Ladder(m_connStr, QStringLiteral("0"), callbacks);
    Make_First_User();
    if (!Opening_Test(m_connStr))
        throw Run_Time_Error(App().Conn_Trouble.number, App().Conn_Trouble.description, App().Conn_Trouble.failure);
}

Import_Source::File::~File()
{
    if (path.isEmpty())
        return;
    Resume_Next([&] { Database_Engine::Let_Go(File_Conn_Str(path)); });
    if (is_copy)
        Resume_Next([&] { Files::Delete_If_Present(path); });
}
