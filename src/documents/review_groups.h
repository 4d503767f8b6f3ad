// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <vector>

/// Why the editor of review groups did not do what it was asked.
enum class Group_Refusal { None, No_Name, In_Use, Failed };

/// One row of Lsv_Gene: display name, factor and period.
struct Review_Group {
    int id = 0;   ///< 0 for one that is not stored yet
    QString name; ///< 50 characters at most: the form sees to it
    float factor = 0;
    QString period; ///< one letter of H, D, W, M, Y
};

/// The groups as the settings dialog edits them. What is added or changed is stored by Apply; a deletion at once.
/// Errors go to Error.log under "Frm_Config\" and the procedure's name; Last_Trouble (core/trouble.h) tells them.
class Group_Editor
{
public:
    /// Reads the stored groups by name. @returns false after an error; the list is empty then.
    bool Load();
    [[nodiscard]] const std::vector<Review_Group> &Groups() const { return m_groups; }
    /// The default group, -1 for none.
    [[nodiscard]] int Checked() const { return m_checked; }
    void Check(int row) { m_checked = row; }

    /// Adds a group at the end (`row` -1) or changes one.
    /// @param factor  as typed; what is empty, no number or outside of 1.5 to 2.0 becomes 1.7
    /// @param period  an item of Cob_Gene_Num, whose first letter counts; "" for its first item
    Group_Refusal Put(int row, const QString &name, const QString &factor, const QString &period);
    /// Deletes a group that no document uses; the first one that is left becomes the default. Whether the user wants
    /// it was asked before.
    Group_Refusal Delete(int row);
    /// Stores all groups, found by their names, in one commit. @returns whether they were stored
    bool Apply();

private:
    std::vector<Review_Group> m_groups;
    int m_checked = -1;
};

/// What to tell the user, behind the name of the group for In_Use; "" for None.
QString Refusal_Text(Group_Refusal refusal);
/// A factor as it is stored.
float Factor_Of_Text(const QString &text);
