// SPDX-License-Identifier: GPL-3.0-or-later
#include "library.h"

#include "core/process_state.h"
#include "documents/stored_stream.h"
#include "library_words.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "platform/files/paths.h"
#include "platform/lzma/zelqorfun.h"
#include "platform/richtext/rich_text.h"
#include "storage/database_lifecycle.h"
#include "tree/folder_ids.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QTemporaryDir>
#include <QTextCursor>
#include <QTextDocument>
#include <vector>

using namespace Qt::StringLiterals;

namespace
{
constexpr int Bodies = 300;
constexpr int Tags = 40;
constexpr int Group = 10000; ///< documents in one commit
constexpr qsizetype Deepest_Id = 4 * 3;
const QDateTime First_Day(QDate(2011, 1, 1), QTime(8, 0));
constexpr int Days = 15 * 365;

/// One distinct content: its plain text, and the file of its compressed rich text.
struct Body {
    QString text;
    QString stream;
};

class Library
{
public:
    explicit Library(const Library_Plan &plan)
        : m_plan(plan), m_random(plan.seed), m_conn(Database_Engine::File_Connection_String(plan.file))
    {
    }

    void Make()
    {
        if (!CreateDataBase(m_plan.file))
            throw Run_Time_Error(Error_Number::Path_Access, App().Conn_Trouble.description, Failure::Path_Access);
        for (int i = 0; i < Bodies; ++i)
            m_bodies.push_back(New_Body(i));
        m_empty = Stage(u"empty"_s, Rich_Text::Write_Rtf(QTextDocument()));
        Database_Engine::One_Action(m_conn, [&] {
            Add_Facts();
            Add_Folders();
            Add_Tags();
        });
        for (int first = 0; first < m_plan.documents; first += Group)
            Database_Engine::One_Action(m_conn, [&] { Add_Documents(first, qMin(first + Group, m_plan.documents)); });
    }

private:
    QString Stage(const QString &name, const QByteArray &rtf) const
    {
        QString path = m_staging.filePath(name);
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(Lzma_Encode(rtf)) < 0)
            throw Run_Time_Error(Error_Number::Path_Access, file.errorString(), Failure::Path_Access);
        return path;
    }

    Body New_Body(int number)
    {
        QTextDocument document;
        QTextCursor cursor(&document);
        QTextCharFormat heading;
        heading.setFontWeight(QFont::Bold);
        heading.setFontPointSize(14);
        cursor.insertText(Library_Words::Title(m_random), heading);
        QTextCharFormat plain;
        for (int i = 1 + m_random.bounded(m_plan.paragraphs); i > 0; --i) {
            cursor.insertBlock();
            plain.setForeground(m_random.bounded(5) == 0 ? Qt::darkBlue : Qt::black);
            cursor.insertText(Library_Words::Paragraph(m_random), plain);
        }
        return {document.toPlainText(), Stage(QString::number(number), Rich_Text::Write_Rtf(document))};
    }

    Recordset Open_Table(const QString &table) const
    {
        Recordset rows;
        rows.LockType = Lock_Type::Optimistic;
        rows.Open(u"Select top 1 * From %1"_s.arg(table), m_conn);
        return rows;
    }

    void Add_Facts() const
    {
        const auto fact = [this](const QString &name, const QString &value) {
            Run_Statement(u"insert into Mess_Conf(Mess_ID,Mess_Name1) values ('%1','%2')"_s.arg(name, value), m_conn);
        };
        fact(u"COM_NAME"_s, u"Zelqor"_s);
        fact(u"COM_ICON"_s, u"ZELQOR.ICO"_s);
    }

    static void Add_Folder(Recordset &rows, const QString &id, const QString &name, int order, const QString &icon)
    {
        rows.AddNew();
        rows[u"Cate_ID"_s].Set(id);
        rows[u"Cate_Name"_s].Set(name);
        rows[u"Cate_Memo"_s].Set(u" "_s);
        rows[u"Cate_pass"_s].Set(QString());
        rows[u"Order_Id"_s].Set(order);
        rows[u"Cate_Exp"_s].Set(id.size() <= 3 ? u"1"_s : u"0"_s);
        rows[u"Icon_Name"_s].Set(icon);
        rows.Update();
    }

    void Add_Folders()
    {
        Recordset rows = Open_Table(u"Cate_Info"_s);
        Add_Folder(rows, Recycle_Bin_Id, u"回收站"_s, 999, u"RECYCLEBIN.ico"_s);
        QHash<QString, int> children;
        const int top = qMax(1, qMin(30, m_plan.folders / 20));
        for (int i = 1; i < m_plan.folders; ++i) {
            QString parent = i <= top ? QString() : m_folders.at(m_random.bounded(static_cast<int>(m_folders.size())));
            while (parent.size() >= Deepest_Id || children.value(parent) >= 999)
                parent = m_folders.at(m_random.bounded(static_cast<int>(m_folders.size())));
            const int number = ++children[parent];
            const QString id = parent + PadLeft(QString::number(number), 3, u'0');
            Add_Folder(rows, id, Library_Words::Name(m_random), number, u"home.ico"_s);
            m_folders << id;
        }
    }

    void Add_Tags()
    {
        Recordset rows = Open_Table(u"tab_tags"_s);
        for (int i = 1; i <= Tags; ++i) {
            rows.AddNew();
            rows[u"tags_Id"_s].Set(i);
            rows[u"tags_Name"_s].Set(Library_Words::Name(m_random));
            rows[u"tags_Count"_s].Set(0);
            rows.Update();
        }
    }

    QString Stars()
    {
        const int full = m_random.bounded(6);
        return QString(full, u'★') + QString(5 - full, u'☆');
    }

    QString Tag_Tokens()
    {
        QString tokens;
        for (int tag = 1 + m_random.bounded(Tags); m_random.bounded(3) == 0 && tag <= Tags;
             tag += 1 + m_random.bounded(9))
            tokens += u"{%1}"_s.arg(tag);
        return tokens;
    }

    [[nodiscard]] QString New_Id()
    {
        QString id = u"{"_s;
        for (const int digits : {8, 4, 4, 4})
            id += u"%1-"_s.arg(m_random.generate64() >> (64 - 4 * digits), digits, 16, QLatin1Char('0')).toUpper();
        // The end is the document's own number, so that no two ids are alike.
        id += u"%1"_s.arg(++m_lastId, 12, 16, QLatin1Char('0')).toUpper();
        return id + u'}';
    }

    void Add_Documents(int first, int end)
    {
        Recordset rows = Open_Table(u"Code_Info"_s);
        Recordset files = Open_Table(u"tab_file"_s);
        Recordset members = Open_Table(u"tab_VirCate"_s);
        for (int i = first; i < end; ++i) {
            const QString id = New_Id();
            Add_Document(rows, id);
            for (int file = m_random.bounded(12) == 0 ? 1 + m_random.bounded(3) : 0; file > 0; --file)
                Add_Attachment(files, id);
            if (m_random.bounded(20) == 0)
                Add_Membership(members, id);
        }
    }

    void Add_Document(Recordset &rows, const QString &id)
    {
        const Body &body = m_bodies[m_random.bounded(static_cast<quint32>(m_bodies.size()))];
        const QDateTime created = First_Day.addDays(m_random.bounded(Days)).addSecs(m_random.bounded(36000));
        const QDateTime updated = created.addDays(m_random.bounded(200));
        const bool isRead = m_random.bounded(3) != 0;
        const bool thrownAway = m_random.bounded(50) == 0;
        rows.AddNew();
        const auto set = [&rows](const char *column, const QVariant &value) {
            rows[QLatin1String(column)].Set(value);
        };
        set("Code_ID", id);
        set("Cate_ID", thrownAway ? Recycle_Bin_Id : Any_Folder());
        set("Code_Title", Library_Words::Title(m_random));
        set("Code_Explain", m_random.bounded(4) == 0 ? Library_Words::Paragraph(m_random).left(200) : QString());
        set("Code_Content", body.text);
        Copy_File_To_Blob(body.stream, rows[u"Code_Content_IO"_s]);
        for (const char *pane : {"Code_Memo", "Code_Sum"}) {
            set(pane, QString());
            Copy_File_To_Blob(m_empty, rows[QLatin1String(pane) + u"_IO"_s]);
        }
        set("Code_Date", created.date().startOfDay());
        set("Code_Create", created);
        set("Code_Update", updated);
        set("Code_ReadDate", updated.addDays(m_random.bounded(100)));
        set("Code_ReadNum", isRead ? 1 + m_random.bounded(30) : 0);
        set("Code_UpdateNum", m_random.bounded(10));
        set("Code_ReadDate_Sta", isRead ? QString() : u"X"_s);
        set("Code_Creater", u"Zelqor"_s);
        set("Code_Updater", u"Zelqor"_s);
        set("Code_Author", Library_Words::Author(m_random));
        set("Code_Provenance", m_random.bounded(3) == 0 ? Library_Words::Name(m_random) : QString());
        set("Code_Promulgator", QString());
        set("Code_Color", Stars());
        set("Code_Done", Stars());
        set("Code_Type", u"RTF"_s);
        set("Code_File", QString());
        set("Code_LineColor", m_random.bounded(40) == 0 ? u"255|16711680|True"_s : QString());
        set("Code_Keys", Library_Words::Keys(m_random));
        set("Code_Tags", Tag_Tokens());
        rows.Update();
    }

    void Add_Attachment(Recordset &rows, const QString &document)
    {
        const QString text = Library_Words::Paragraph(m_random);
        rows.AddNew();
        rows[u"code_id"_s].Set(document);
        rows[u"file_name"_s].Set(Library_Words::Name(m_random) + u".txt"_s);
        rows[u"file_cont"_s].AppendChunk(text.toUtf8());
        rows[u"file_txt"_s].Set(text);
        rows[u"file_size"_s].Set(u"%1 KB"_s.arg(1 + m_random.bounded(900)));
        rows[u"file_date"_s].Set(First_Day.addDays(m_random.bounded(Days)));
        rows[u"file_type"_s].Set(m_random.bounded(2));
        rows.Update();
    }

    void Add_Membership(Recordset &rows, const QString &document)
    {
        rows.AddNew();
        rows[u"Cate_ID"_s].Set(Any_Folder());
        rows[u"Code_id"_s].Set(document);
        rows.Update();
    }

    QString Any_Folder()
    {
        return m_folders.isEmpty() ? Recycle_Bin_Id
                                   : m_folders.at(m_random.bounded(static_cast<int>(m_folders.size())));
    }

    Library_Plan m_plan;
    QRandomGenerator m_random;
    QString m_conn;
    QTemporaryDir m_staging;
    std::vector<Body> m_bodies;
    QString m_empty;
    QStringList m_folders;
    int m_lastId = 0;
};
} // namespace

void Make_Library(const Library_Plan &plan)
{
    Library(plan).Make();
    Database_Engine::Let_Go();
}

QString Shared_Library(int documents, int folders, int paragraphs)
{
    QString file = QDir::tempPath() + u"/zelqor-library-%1-%2"_s.arg(documents).arg(folders) +
                   (paragraphs == Library_Plan().paragraphs ? QString() : u"-%1"_s.arg(paragraphs)) + u".db"_s;
    if (QFile::exists(file))
        return file;
    const QString unfinished = file + u".new"_s;
    QFile::remove(unfinished);
    Make_Library({documents, folders, 1, unfinished, paragraphs});
    QFile::rename(unfinished, file);
    return file;
}
