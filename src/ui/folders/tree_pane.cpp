// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/folders/tree_pane.h"

#include "core/process_state.h"
#include "core/settings.h"
#include "documents/busy_pointer.h"
#include "platform/models/plain_tip.h"
#include "platform/prompts/prompts.h"
#include "tree/folder_editing.h"
#include "tree/folder_ids.h"
#include "tree/folder_passwords.h"
#include "tree/folder_trouble.h"
#include "tree/tree_loading.h"
#include "ui/folders/folder_delegate.h"
#include "ui/folders/tree_commands.h"
#include "ui/kit/drag_label.h"
#include "ui/kit/file_drops.h"
#include "ui/kit/shell.h"
#include "ui/kit/view_look.h"

#include <QContextMenuEvent>
#include <QDrag>
#include <QDropEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QScopedValueRollback>
#include <QToolTip>

Tree_Pane::Tree_Pane(Shell &shell, QWidget *parent)
    : Folder_Tree_View(parent), m_shell(shell), m_lang(*this, QStringLiteral("Frm_Main")),
      m_delegate(new Folder_Delegate(this)), m_commands(new Tree_Commands(*this, shell))
{
    setObjectName(QStringLiteral("Trv_Code_Class"));
    m_lang.LoadControlsCaption();
    setAccessibleName(m_lang.GetString("Left_Tree|Index|Caption"));
    Apply_Look();
    setEditTriggers(NoEditTriggers);
    m_delegate->Is_Locked = [this](const QModelIndex &index) {
        return m_locked.contains(Id_At(index));
    };
    setItemDelegate(m_delegate);
    setModel(&m_tree);
    setDragEnabled(true);
    setAcceptDrops(true);
    setDropIndicatorShown(false);
    setMouseTracking(true);
    m_hover.setSingleShot(true);
    m_hover.setInterval(700);
    connect(&m_hover, &QTimer::timeout, this, [this] { expand(m_delegate->Drop_Target); });
    connect(selectionModel(), &QItemSelectionModel::currentChanged, this, &Tree_Pane::Current_Changed);
    connect(this, &QTreeView::expanded, this, [this](const QModelIndex &index) { Save_Status(index, true); });
    connect(this, &QTreeView::collapsed, this, [this](const QModelIndex &index) { Save_Status(index, false); });
    connect(&m_tree, &Tree_Model::modelReset, this, &Tree_Pane::Show_Expansion);
    connect(&m_tree, &Folder_Model::Label_Edited, this, &Tree_Pane::Label_Edited);
}

Tree_Pane::~Tree_Pane() = default;

void Tree_Pane::Apply_Look()
{
    Use_Setting_Font(*this, Config().FontName_Tree, Config().FontSize_Tree);
    Use_Setting_Background(*this, Config().Col_Frm);
}

void Tree_Pane::Update_Tree()
{
    const Busy_Pointer busy;
    const QString selected = Selected_Id();
    const bool hadSelection = Has_Selection();
    if (!GetClassInfo_Ex(m_tree, App().Conn_Str, QStringLiteral("Zelqor")))
        m_shell.Set_Status(m_lang.GetString("_Tree_Incomplete"));
    Show_Locks();
    if (hadSelection)
        Mark_Folder(selected);
}

bool Tree_Pane::Select_Folder(const QString &id)
{
    const int node = m_tree.Find(id.isEmpty() ? Root_Key : Folder_Key(id));
    if (node < 0)
        return false;
    setCurrentIndex(m_tree.Index_Of(node));
    return true;
}

bool Tree_Pane::Mark_Folder(const QString &id)
{
    const QScopedValueRollback loading(m_loading, true);
    return Select_Folder(id);
}

void Tree_Pane::Settle_On(const QString &id)
{
    if (Mark_Folder(id))
        Save_Status(currentIndex(), isExpanded(currentIndex()));
}

QString Tree_Pane::Selected_Id() const
{
    return Id_At(currentIndex());
}

bool Tree_Pane::Has_Selection() const
{
    return currentIndex().isValid();
}

void Tree_Pane::Recount(const QString &id)
{
    Update_Tree_Num_Ex(m_tree, id, App().Conn_Str, Is_On(&Settings_Record::ShowLow));
}

void Tree_Pane::Show_Locks()
{
    m_locked = Locked_Folders(App().Conn_Str);
    viewport()->update();
}

bool Tree_Pane::Is_Locked(const QString &id) const
{
    return m_locked.contains(id);
}

QString Tree_Pane::Accepted_Password(const QString &id) const
{
    const int node = m_tree.Find(Folder_Key(id));
    return node < 0 ? QString() : m_tree.Node(node).tag;
}

void Tree_Pane::Set_Accepted_Password(const QString &id, const QString &password)
{
    const int node = m_tree.Find(Folder_Key(id));
    if (node >= 0)
        m_tree.Set_Tag(node, password);
}

void Tree_Pane::Edit_Label()
{
    if (!Has_Selection())
        return;
    if (Selected_Id() == Recycle_Bin_Id) {
        Prompts::Message(m_lang.GetString("_RecycleMod"), App().App_Title);
        return;
    }
    edit(currentIndex());
    m_tree.Set_Edit_Text({});
}

void Tree_Pane::Label_Edited(int node, const QString &text)
{
    const QString &caption = m_tree.Node(node).caption;
    const QString name = Folder_Model::Editable_Name(m_tree.Node(node));
    if (text == name || text.isEmpty())
        return;
    const auto done = ReName_In_Place(m_tree, node, text + caption.mid(name.size()));
    if (done) {
        const QString key = m_tree.Node(node).key;
        m_commands->Say_Undoable(*done, [this, key, name] {
            if (const int again = m_tree.Find(key); again >= 0)
                Label_Edited(again, name);
        });
        emit Folders_Changed();
        return;
    }
    if (!m_commands->Say_Trouble())
        return;
    // What was typed comes back for another try; Escape leaves the old name.
    QTimer::singleShot(0, this, [this, text] {
        m_tree.Set_Edit_Text(text);
        Edit_Label();
    });
}

void Tree_Pane::contextMenuEvent(QContextMenuEvent *event)
{
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    const QPoint at = byKey ? viewport()->mapToGlobal(visualRect(currentIndex()).bottomLeft()) : event->globalPos();
    Show_Menu(currentIndex(), byKey ? currentIndex() : QModelIndex(m_beforePress), at);
}

void Tree_Pane::Show_Menu(const QModelIndex &node, const QModelIndex &before, const QPoint &at)
{
    const QPersistentModelIndex wanted = node;
    const QPersistentModelIndex shown = before;
    if (node.isValid())
        Mark_Folder(Id_At(node));
    m_choiceWaits = false;
    const bool done = m_commands->Popup(at);
    if (currentIndex() != wanted || !shown.isValid() || shown == wanted)
        return;
    // The list shows what is chosen: the folder of a command, unless it is locked, else the one before.
    if (done && !Is_Locked(Id_At(wanted)))
        Choose(wanted);
    else if (state() != EditingState)
        Mark_Folder(Id_At(shown));
}

void Tree_Pane::keyPressEvent(QKeyEvent *event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!enter || state() == EditingState || !Has_Selection()) {
        QTreeView::keyPressEvent(event);
        return;
    }
    Choose(currentIndex());
    m_shell.Focus_List();
}

bool Tree_Pane::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::HoverMove || event->type() == QEvent::HoverEnter)
        Hover(indexAt(static_cast<QHoverEvent *>(event)->position().toPoint()));
    else if (event->type() == QEvent::HoverLeave || event->type() == QEvent::Leave)
        Hover({});
    if (event->type() == QEvent::ToolTip && Show_Whole_Name(static_cast<const QHelpEvent &>(*event)))
        return true;
    return Folder_Tree_View::viewportEvent(event);
}

/// The tip of a name that has no room.
bool Tree_Pane::Show_Whole_Name(const QHelpEvent &event)
{
    const QModelIndex node = indexAt(event.pos());
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    if (!node.isValid() || visualRect(node).left() + m_delegate->Whole_Width(option, node) <= viewport()->width())
        return false;
    QToolTip::showText(event.globalPos(), Plain_Tip(m_tree.Node(m_tree.Node_Of(node)).caption), viewport());
    return true;
}

void Tree_Pane::Hover(const QModelIndex &index)
{
    if (m_delegate->Hovered == index)
        return;
    m_delegate->Hovered = index;
    viewport()->update();
}

bool Tree_Pane::Press_Button(const QMouseEvent &event)
{
    const QPoint at = event.position().toPoint();
    const QPersistentModelIndex node = indexAt(at);
    if (event.button() != Qt::LeftButton || !node.isValid() || m_delegate->Hovered != node || state() == EditingState)
        return false;
    const auto button = m_delegate->Button_At(at, visualRect(node), viewport()->width());
    if (button == Folder_Delegate::Button::None)
        return false;
    const QPersistentModelIndex before = currentIndex();
    if (button == Folder_Delegate::Button::More) {
        Show_Menu(node, before, event.globalPosition().toPoint());
        return true;
    }
    Mark_Folder(Id_At(node));
    m_commands->Cmd_Tree_Add_Next_Call();
    if (currentIndex() == node && before.isValid())
        Mark_Folder(Id_At(before));
    return true;
}

void Tree_Pane::mousePressEvent(QMouseEvent *event)
{
    m_choiceWaits = false;
    if (Press_Button(*event))
        return;
    m_beforePress = currentIndex();
    {
        const QScopedValueRollback pressing(m_pressing, true);
        QTreeView::mousePressEvent(event);
    }
    // A click on what is chosen already lists it again; the arrow beside a node opens it and chooses nothing.
    const QPoint at = event->position().toPoint();
    m_choiceWaits = indexAt(at).isValid() && indexAt(at) == currentIndex() && visualRect(indexAt(at)).contains(at);
    if (event->button() != Qt::LeftButton && (m_beforePress == currentIndex() || Is_Locked(Selected_Id())))
        m_choiceWaits = false; // for the menu a password need not be given
}

void Tree_Pane::mouseReleaseEvent(QMouseEvent *event)
{
    QTreeView::mouseReleaseEvent(event);
    if (!m_choiceWaits)
        return;
    m_choiceWaits = false;
    Choose(currentIndex());
}

void Tree_Pane::startDrag(Qt::DropActions actions)
{
    if (!Has_Selection())
        return;
    if (QMimeData *carried = m_tree.mimeData({currentIndex()})) {
        QDrag drag(this);
        drag.setMimeData(carried);
        Label_Drag(drag, Folder_Model::Editable_Name(m_tree.Node(Selected_Node())));
        drag.exec(actions, Qt::MoveAction);
    }
    // The press only took the node up: the list still shows what was chosen before.
    const QScopedValueRollback loading(m_loading, true);
    if (m_choiceWaits)
        setCurrentIndex(m_beforePress);
    m_choiceWaits = false;
    Show_Drop_Target({});
}

void Tree_Pane::dragEnterEvent(QDragEnterEvent *event)
{
    QTreeView::dragEnterEvent(event);
    event->setAccepted(Takes(*event->mimeData()));
}

void Tree_Pane::dragMoveEvent(QDragMoveEvent *event)
{
    QTreeView::dragMoveEvent(event);
    Show_Drop_Target(indexAt(event->position().toPoint()));
    event->setAccepted(Takes(*event->mimeData()));
}

void Tree_Pane::dragLeaveEvent(QDragLeaveEvent *event)
{
    QTreeView::dragLeaveEvent(event);
    Show_Drop_Target({});
}

void Tree_Pane::dropEvent(QDropEvent *event)
{
    setState(NoState);
    stopAutoScroll();
    Show_Drop_Target({});
    const QMimeData &carried = *event->mimeData();
    event->setAccepted(Takes(carried));
    if (!event->isAccepted())
        return;
    Drop drop;
    drop.target = m_tree.Node(std::max(0, m_tree.Node_Of(indexAt(event->position().toPoint())))).key;
    drop.onNode = indexAt(event->position().toPoint()).isValid();
    drop.files = Dropped_Files(carried);
    drop.text = carried.text();
    if (carried.hasFormat(Folder_Model::Documents_Format()))
        drop.documents =
            QString::fromUtf8(carried.data(Folder_Model::Documents_Format())).split(u'\n', Qt::SkipEmptyParts);
    // The drag's source waits for this event; questions and imports come after it.
    QTimer::singleShot(0, m_commands, [this, drop] { m_commands->Take_Drop(drop); });
}

void Tree_Pane::Current_Changed(const QModelIndex &current, const QModelIndex & /*previous*/)
{
    if (!m_loading && !m_pressing && current.isValid())
        Choose(current);
}

void Tree_Pane::Choose(const QModelIndex &index)
{
    if (!index.isValid())
        return;
    Save_Status(index, isExpanded(index));
    emit Folder_Chosen(Id_At(index));
}

void Tree_Pane::Show_Expansion()
{
    const QScopedValueRollback loading(m_loading, true);
    for (int i = 0; i < m_tree.Node_Count(); ++i)
        setExpanded(m_tree.Index_Of(i), m_tree.Node(i).expanded);
}

void Tree_Pane::Save_Status(const QModelIndex &index, bool expanded)
{
    const int node = m_tree.Node_Of(index);
    if (m_loading || node < 0)
        return;
    m_tree.Set_Expanded(node, expanded);
    if (Is_Folder_Key(m_tree.Node(node).key))
        Save_Tree_Status(Id_At(index), expanded);
}

void Tree_Pane::Show_Drop_Target(const QModelIndex &index)
{
    if (m_delegate->Drop_Target == index)
        return;
    m_delegate->Drop_Target = index;
    // A drag that rests on a closed folder opens it. The view's own delay would also close an open one.
    if (index.isValid())
        m_hover.start();
    else
        m_hover.stop();
    viewport()->update();
}

bool Tree_Pane::Takes(const QMimeData &carried) const
{
    const QString text = carried.text();
    return !Dropped_Files(carried).isEmpty() || carried.hasFormat(Folder_Model::Documents_Format()) ||
           m_tree.Find(text) >= 0 || text.startsWith(QLatin1String("LIST{"));
}

QString Tree_Pane::Id_At(const QModelIndex &index) const
{
    const int node = m_tree.Node_Of(index);
    return node < 0 ? QString() : GetKeyPart(m_tree.Node(node).key, Key_Part::After_Underscore);
}
