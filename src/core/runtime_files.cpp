// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/runtime_files.h"

#include "core/error_log.h"
#include "core/process_state.h"
#include "core/yield.h"
#include "platform/files/door.h"
#include "platform/files/paths.h"

#include <QFile>
#include <QFileInfo>

// The resource macro declares a function of the global namespace, where it has to stand.
static void Init_Runtime_Resources()
{
    Q_INIT_RESOURCE(runtime);
}

namespace
{
constexpr qint64 Old_Skin_Length = 18244;

constexpr Runtime_File Table[] = {
    {"Lang\\CHINESE.INI", "CHINESE_INI", Removal::Other_Length, nullptr, "Load_Runtime_File 1"},
    {"tools\\zelqorzip.dll", "ZELQORZIP_DLL", Removal::Other_Length, nullptr, "Load_Runtime_File 2"},
    {"tools\\SkinH_VB6.dll", "SKINH_VB6_DLL", Removal::Never, "tools\\zelqorskin.dll", "Load_Runtime_File 3"},
    {"skins\\1.skin", "1_SKIN", Removal::Old_Skin, "skinh.she", "Load_Runtime_File 4"},
    {"skins\\2.skin", "2_SKIN", Removal::Never, nullptr, "Load_Runtime_File 5"},
    {"skins\\3.skin", "3_SKIN", Removal::Never, nullptr, "Load_Runtime_File 6"},
    {"skins\\4.skin", "4_SKIN", Removal::Never, nullptr, "Load_Runtime_File 7"},
    {"skins\\5.skin", "5_SKIN", Removal::Never, nullptr, "Load_Runtime_File 8"},
    {"Update.exe", "UPDATE_EXE", Removal::Never, nullptr, "Load_Runtime_File 9", true},
    {"UPDATE.RIS", "UPDATE_RIS", Removal::Never, nullptr, nullptr},
    {"data\\ico\\Home.ico", "HOME_ICO", Removal::Never, nullptr, "Load_Runtime_File 10"},
    {"data\\ico\\book.ico", "BOOK_ICO", Removal::Never, nullptr, "Load_Runtime_File 11"},
    {"data\\ico\\note.ico", "NOTE_ICO", Removal::Never, nullptr, "Load_Runtime_File 12"},
    {"data\\ico\\RECYCLEBIN.ico", "RECYCLEBIN_ICO", Removal::Never, nullptr, nullptr},
};

QString Program_Path(const char *name)
{
    return Files::Native_Path(App().App_Path + QLatin1String(name));
}

QString Made_Directory(const char *name)
{
    const QString path = Program_Path(name);
    Files::Make_Directory(path);
    return Files::With_Final_Separator(path);
}

bool Gives_Way(const QString &path, const Runtime_File &row)
{
    if (row.removal == Removal::Never || !QFile::exists(path))
        return false;
    const qint64 length = QFileInfo(path).size();
    if (row.removal == Removal::Old_Skin)
        return length == Old_Skin_Length;
    return length != QFileInfo(Resource_Path(QLatin1String(row.resource))).size();
}

void Write_Out(const QString &path, const Runtime_File &row)
{
    Files::Make_Directory(QFileInfo(path).path());
    Files::Write_Bytes(path, Runtime_File_Bytes(QLatin1String(row.resource)));
    if (row.is_program)
        Files::Make_Runnable(path);
}

void Deploy(const Runtime_File &row)
{
    const QString path = Program_Path(row.target);
    if (Gives_Way(path, row))
        Files::Delete_If_Present(path);
    if (row.leftover)
        Files::Delete_If_Present(Program_Path(row.leftover));
    if (!QFile::exists(path))
        Write_Out(path, row);
}
} // namespace

std::span<const Runtime_File> Runtime_File_Table()
{
    return Table;
}

QString Resource_Path(const QString &resource)
{
    Init_Runtime_Resources();
    return QStringLiteral(":/custom/") + resource;
}

QByteArray Runtime_File_Bytes(const QString &resource)
{
    return Files::Read_Bytes(Resource_Path(resource));
}

void Load_Runtime_File()
{
    for (const Runtime_File &row : Table) {
        Deploy(row);
        Yield();
        if (row.mark)
            Log_Mark(QLatin1String(row.mark));
    }
}

QString Tools_Directory()
{
    return Made_Directory("tools");
}

QString Skins_Directory()
{
    return Made_Directory("skins");
}

QString Editor_Directory()
{
    return Made_Directory("editor");
}

QString Temp_Directory()
{
    return Made_Directory("data\\temp");
}

QString Icon_Directory()
{
    return Made_Directory("data\\ico");
}

QString Keywords_Directory()
{
    return Made_Directory("keywords");
}

void Clear_Temp_Directory()
{
    const QString folder = App().App_Path + QStringLiteral("data/temp");
    Files::Delete_Files(folder, QStringLiteral("*"));
    for (const Files::Entry &entry : Files::Entries(folder)) {
        if (entry.is_folder)
            Files::Delete_Folder(folder + QLatin1Char('/') + entry.name);
    }
}
