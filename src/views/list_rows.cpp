// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/list_rows.h"

#include "core/process_state.h"
#include "core/settings.h"
#include "core/sql_text.h"
#include "platform/database/database.h"
#include "platform/database/server.h"
#include "platform/database/text_fold.h"
#include "tree/tree_loading.h"
#include "views/list_columns.h"
#include "views/list_engine_sql.h"
#include "views/list_style.h"

#include <QHash>
#include <algorithm>
#include <array>

namespace
{
const QString No_Stars = QStringLiteral("☆☆☆☆☆");
const QString Unknown_Folder = QStringLiteral("--");
constexpr qsizetype Place_Characters = 40;
/// Lines of places in one list; a key of one common letter would fill the memory else.
constexpr size_t Most_Lines = 100000;

/// What a column shows that is not simply a field.
enum class Content { Field, Stars, Folder_Name, Attachments };

struct Cell_Plan {
    Content content;
    int field; ///< its place in the recordset, -1 where none is read
};

QString Stars(const QString &stored)
{
    return stored.contains(QChar(u'★')) ? stored : No_Stars;
}

/// Where each column finds its content, found once for a whole page.
std::vector<Cell_Plan> Plan_Cells(Recordset &rows)
{
    std::vector<Cell_Plan> plan;
    for (const Document_Column &column : Document_Columns()) {
        const QLatin1String key(column.key);
        Cell_Plan cell{Content::Field, -1};
        if (key == QLatin1String("Lsv_Code_Info_Star") || key == QLatin1String("Lsv_Code_Info_Done"))
            cell.content = Content::Stars;
        else if (key == QLatin1String("Lsv_Code_Info_CateName"))
            cell.content = Content::Folder_Name;
        else if (key == QLatin1String("Lsv_Code_Info_AddinNum"))
            cell.content = Content::Attachments;
        for (int i = 0; *column.field != '\0' && i < rows.Field_Count(); ++i) {
            if (rows[i].Name().compare(QLatin1String(column.field), Qt::CaseInsensitive) == 0)
                cell.field = i;
        }
        plan.push_back(cell);
    }
    return plan;
}

int Column_Of(const char *key)
{
    const auto columns = Document_Columns();
    const auto found = std::find_if(columns.begin(), columns.end(),
                                    [&](const Document_Column &column) { return qstrcmp(column.key, key) == 0; });
    return static_cast<int>(found - columns.begin());
}

/// Answers of a lookup for many ids at once: the statement's first column is the id, its second the answer.
class Lookup
{
public:
    Lookup(const char16_t *statement, const QString &connection) : m_statement(statement), m_connection(connection) {}

    void Add(const QString &id)
    {
        if (!m_answers.contains(id.toLower())) {
            m_answers.insert(id.toLower(), {});
            m_ids << id;
        }
    }
    [[nodiscard]] QStringList Statements() const
    {
        QStringList statements;
        for (const Sql_Part &group : Id_Groups(m_ids))
            statements << Sql_Text(m_statement, group);
        return statements;
    }
    void Ask()
    {
        for (const Sql_Part &group : Id_Groups(m_ids)) {
            Recordset rows;
            rows.Open(Sql_Text(m_statement, group), m_connection);
            for (; !rows.Eof(); rows.MoveNext()) {
                QString &answer = m_answers[rows[0].Text().toLower()];
                if (answer.isNull())
                    answer = rows[1].Text().isNull() ? QString(QLatin1String("")) : rows[1].Text();
            }
        }
    }
    /// A null string where the statement gave no row.
    [[nodiscard]] QString Answer(const QString &id) const { return m_answers.value(id.toLower()); }

private:
    const char16_t *m_statement;
    QString m_connection;
    QStringList m_ids;
    QHash<QString, QString> m_answers;
};

List_Row Row_Of(Recordset &rows, int number, const std::vector<Cell_Plan> &plan, const List_Setting &setting)
{
    static const int title = Column_Of("Lsv_Code_Info_Title");
    List_Row row;
    row.tag = rows[QStringLiteral("Code_ID")].Text();
    row.tag2 = rows[QStringLiteral("Cate_ID")].Text();
    row.tag3 = rows[QStringLiteral("Code_LineColor")].Text();
    row.texts.reserve(static_cast<qsizetype>(plan.size()));
    row.texts.append(QString::number(number));
    for (size_t i = 1; i < plan.size(); ++i) {
        const QString text = plan[i].field < 0 ? QString() : rows[plan[i].field].Text();
        row.texts.append(plan[i].content == Content::Stars ? Stars(text) : text);
    }
    if (setting.tool_tips) {
        row.tool_tip = rows[QStringLiteral("Code_Explain")].Text();
        row.tip_column = title;
    }
    Apply_Line_Color(row, row.tag3);
    return row;
}

/// Adds a line for each place of the key, at most `most`.
void Add_Places(std::vector<List_Row> &filled, const QString &content, const QString &foldedKey, size_t most)
{
    static const int title = Column_Of("Lsv_Code_Info_Title");
    const List_Row document = filled.back();
    const QString folded = Text_Fold::Folded(content);
    for (qsizetype at = folded.indexOf(foldedKey); at >= 0 && filled.size() < most;
         at = folded.indexOf(foldedKey, at + 1)) {
        List_Row line;
        line.tag = document.tag;
        line.tag2 = document.tag2;
        line.place = at;
        line.texts = document.texts.mid(0, title);
        line.texts[0].clear();
        line.texts.append(QStringLiteral("    ") + content.mid(at, Place_Characters));
        filled.push_back(std::move(line));
    }
}

/// Fills in what stands in other tables, for all rows at once.
void Fill_Lookups(std::vector<List_Row> &filled, const std::vector<Cell_Plan> &plan, const List_Setting &setting)
{
    Lookup names(Sql::Folder_Names, setting.connection);
    Lookup attachments(Sql::Attachment_Counts, setting.connection);
    for (const List_Row &row : filled) {
        if (row.place < 0) {
            names.Add(row.tag2);
            attachments.Add(row.tag);
        }
    }
    if (Database_Engine::File_Of(setting.connection).isEmpty())
        Database_Server::Ask_Ahead(setting.connection, names.Statements() + attachments.Statements());
    names.Ask();
    attachments.Ask();
    for (List_Row &row : filled) {
        for (size_t i = 0; row.place < 0 && i < plan.size(); ++i) {
            QString &text = row.texts[static_cast<qsizetype>(i)];
            if (plan[i].content == Content::Attachments)
                text = attachments.Answer(row.tag);
            else if (plan[i].content == Content::Folder_Name)
                text = names.Answer(row.tag2).isNull() ? Unknown_Folder
                                                       : Shown_Folder_Name(row.tag2, names.Answer(row.tag2));
        }
    }
}
} // namespace

std::vector<Sql_Part> Id_Groups(const QStringList &ids)
{
    std::vector<Sql_Part> groups;
    for (qsizetype from = 0; from < ids.size();) {
        const qsizetype left = ids.size() - from;
        const qsizetype size = left <= 8 ? 8 : left <= 50 ? 50 : 500;
        QStringList group = ids.mid(from, size);
        while (group.size() < size)
            group << group.last();
        groups.push_back(Sql_List(std::move(group)));
        from += size;
    }
    return groups;
}

List_Setting List_Setting::Now()
{
    return {App().Conn_Str, Is_On(&Settings_Record::CH_Lsv_ToolTips), Is_On(&Settings_Record::CH_Lsv_Detail)};
}

std::vector<List_Row> Read_List_Rows(Recordset &rows, int maxRows, const QString &searchKey,
                                     const List_Setting &setting)
{
    const std::vector<Cell_Plan> plan = Plan_Cells(rows);
    const QString foldedKey = setting.detail ? Text_Fold::Folded(searchKey) : QString();
    std::vector<List_Row> filled;
    for (int number = 1; number <= maxRows && !rows.Eof(); ++number, rows.MoveNext()) {
        filled.push_back(Row_Of(rows, number, plan, setting));
        if (!foldedKey.isEmpty())
            Add_Places(filled, rows[QStringLiteral("Code_Content")].Text(), foldedKey, Most_Lines);
    }
    if (!filled.empty())
        Fill_Lookups(filled, plan, setting);
    return filled;
}

int Document_Count(const std::vector<List_Row> &rows)
{
    return static_cast<int>(std::count_if(rows.begin(), rows.end(), [](const List_Row &row) { return row.place < 0; }));
}
