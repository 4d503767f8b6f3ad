// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/text_editor.h"

#include "core/error_log.h"
#include "core/settings.h"
#include "editor/character_commands.h"
#include "editor/composition.h"
#include "editor/legible_colors.h"
#include "editor/line_distance.h"
#include "editor/paragraph_commands.h"
#include "editor/picture_handler.h"
#include "editor/pictures.h"
#include "editor/size_grips.h"
#include "editor/table_commands.h"
#include "platform/html/bounded_page.h"
#include "platform/html/closed_door.h"
#include "platform/models/plain_tip.h"
#include "platform/pictures/raster.h"
#include "platform/richtext/decorations.h"
#include "platform/richtext/rich_text.h"

#include <QAbstractTextDocumentLayout>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextDocumentFragment>
#include <QTextTable>
#include <QToolTip>

namespace
{
/// Marks what was copied from a pane of this program.
const QString Own_Type = QStringLiteral("application/x-zelqor-text");
const char *const Rtf_Types[] = {"text/rtf", "application/rtf", "text/richtext"};

QByteArray Rtf_In(const QMimeData &data)
{
    for (const char *type : Rtf_Types) {
        if (data.hasFormat(QLatin1String(type)))
            return data.data(QLatin1String(type));
    }
    return {};
}

/// @returns false when it is no rich text, or cannot be read
bool Read_Clipboard(const QByteArray &rtf, QTextDocument &document)
{
    return !rtf.isEmpty() &&
           Trap(QStringLiteral("Text_Editor\\Insert_Data"), [&] { return Rich_Text::Read_Rtf(rtf, document); });
}
} // namespace

Text_Editor::Text_Editor(QWidget *parent)
    : QTextEdit(parent), m_colors(new Legible_Colors(*document(), this)),
      m_pictures(new Picture_Handler(*document(), this)), m_grips(new Size_Grips(*this)), m_scale(*this)
{
    document()->documentLayout()->setPaintDevice(&m_scale);
    constexpr int Pause = 400; // milliseconds without a change before the pages are counted
    m_pagesLater.setSingleShot(true);
    m_pagesLater.setInterval(Pause);
    connect(&m_pagesLater, &QTimer::timeout, this, &Text_Editor::Count_Pages);
    connect(document(), &QTextDocument::contentsChanged, this, [this] {
        if (m_look == Page_Look::Paper)
            m_pagesLater.start();
    });
    Rich_Text::Set_Measures(*document());
    setAcceptRichText(true);
    setTabChangesFocus(false);
    viewport()->setMouseTracking(true);
    Composition::Watch();
    Use_Surroundings();
    connect(qApp, &QApplication::focusChanged, this,
            [this](const QWidget * /*old*/, const QWidget *now) { Follow_Focus(now); });
}

/// The document outlives the measures by which it was laid out.
Text_Editor::~Text_Editor()
{
    document()->documentLayout()->setPaintDevice(nullptr);
}

void Text_Editor::Start_In(const QString &family, qreal pointSize, int lineSpacing)
{
    QTextCharFormat format;
    format.setFontFamilies({family});
    m_startSize = std::max(1.0, pointSize);
    format.setFontPointSize(m_startSize);
    QTextCursor(document()).setBlockCharFormat(format);
    if (lineSpacing != Paragraph_Commands::Line_Spacing(*this))
        Paragraph_Commands::Set_Line_Spacing(*this, lineSpacing);
    setCurrentCharFormat(format);
    Wear_Distance();
    document()->clearUndoRedoStacks();
}

void Text_Editor::Wear_Distance()
{
    Line_Distance::Give(*document());
}

qreal Text_Editor::Start_Size() const
{
    return m_startSize > 0 ? m_startSize : document()->defaultFont().pointSizeF();
}

void Text_Editor::Paste_Plain()
{
    const QMimeData *clip = QGuiApplication::clipboard()->mimeData();
    if (clip == nullptr || isReadOnly())
        return;
    QString text = clip->text();
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    textCursor().insertText(text);
    ensureCursorVisible();
}

bool Text_Editor::Has_Picture() const
{
    return Size_Grips::Is_Picture(textCursor());
}

int Text_Editor::Line_Number() const
{
    return textCursor().blockNumber() + 1;
}

int Text_Editor::Line_Count() const
{
    return document()->blockCount();
}

bool Text_Editor::Go_To_Line(int line)
{
    const QTextBlock block = document()->findBlockByNumber(line - 1);
    if (!block.isValid())
        return false;
    setTextCursor(QTextCursor(block));
    ensureCursorVisible();
    setFocus();
    Mark_Line_Briefly();
    return true;
}

/// The marks of a search, which may be there too, stay.
void Text_Editor::Mark_Line_Briefly()
{
    constexpr int Property = QTextFormat::UserProperty;
    constexpr int Milliseconds = 1200;
    const auto forget = [this] {
        QList<QTextEdit::ExtraSelection> marks = extraSelections();
        marks.removeIf([](const QTextEdit::ExtraSelection &mark) { return mark.format.hasProperty(Property); });
        setExtraSelections(marks);
    };
    forget();
    QTextEdit::ExtraSelection mark{textCursor(), {}};
    mark.format.setProperty(Property, true);
    mark.format.setProperty(QTextFormat::FullWidthSelection, true);
    mark.format.setBackground(palette().highlight());
    mark.format.setForeground(palette().highlightedText());
    setExtraSelections(extraSelections() << mark);
    QTimer::singleShot(Milliseconds, this, forget);
}

bool Text_Editor::event(QEvent *event)
{
    // The editor's keys are its own while it has the keyboard, whatever the window uses them for.
    if (event->type() == QEvent::ShortcutOverride && Action_For(*static_cast<QKeyEvent *>(event)) != nullptr) {
        event->accept();
        return true;
    }
    if (event->type() == QEvent::ToolTip) {
        const QPoint place = static_cast<QHelpEvent *>(event)->globalPos();
        const QTextCursor there = cursorForPosition(viewport()->mapFromGlobal(place));
        QToolTip::showText(place, Plain_Tip(there.charFormat().toolTip()), viewport()); // none for ""
        return true;
    }
    return Pass_To_Text(*event) || QTextEdit::event(event);
}

void Text_Editor::keyPressEvent(QKeyEvent *event)
{
    if (QAction *action = Action_For(*event)) {
        action->trigger();
        return;
    }
    const bool tab = event->key() == Qt::Key_Tab && event->modifiers() == Qt::NoModifier;
    const bool back = event->key() == Qt::Key_Backtab;
    if (!isReadOnly() && (tab || back) && Handle_Tab(back))
        return;
    if (!isReadOnly() && event->key() == Qt::Key_Return && event->modifiers() == Qt::NoModifier && Handle_Return())
        return;
    if (!isReadOnly() && event->key() == Qt::Key_Backspace && event->modifiers() == Qt::NoModifier && Leave_List())
        return;
    QTextEdit::keyPressEvent(event);
}

void Text_Editor::paintEvent(QPaintEvent *event)
{
    QTextEdit::paintEvent(event);
    QPainter painter(viewport());
    Paint_Decorations(painter, event->rect());
    Paint_Page_Breaks(painter);
    m_grips->Paint(painter);
}

void Text_Editor::Paint_Decorations(QPainter &painter, const QRect &area) const
{
    const QPoint scrolled(horizontalScrollBar()->value(), verticalScrollBar()->value());
    painter.save();
    painter.translate(-scrolled);
    Rich_Text::Paint_Decorations(painter, *document(), QRectF(area.translated(scrolled)),
                                 palette().color(QPalette::Text));
    painter.restore();
}

void Text_Editor::mousePressEvent(QMouseEvent *event)
{
    if (!m_grips->Press(*event))
        QTextEdit::mousePressEvent(event);
}

void Text_Editor::mouseMoveEvent(QMouseEvent *event)
{
    if (m_grips->Move(*event))
        return;
    QTextEdit::mouseMoveEvent(event);
    const bool opens = isReadOnly() || (event->modifiers() & Qt::ControlModifier) != 0;
    const bool link = opens && !anchorAt(event->position().toPoint()).isEmpty();
    viewport()->setCursor(link ? Qt::PointingHandCursor : Qt::IBeamCursor);
}

void Text_Editor::mouseReleaseEvent(QMouseEvent *event)
{
    if (m_grips->Release(*event))
        return;
    QTextEdit::mouseReleaseEvent(event);
    const bool opens = isReadOnly() || (event->modifiers() & Qt::ControlModifier) != 0;
    if (event->button() != Qt::LeftButton || !opens || textCursor().hasSelection())
        return;
    if (const QString target = anchorAt(event->position().toPoint()); !target.isEmpty())
        emit Link_Chosen(target);
}

void Text_Editor::contextMenuEvent(QContextMenuEvent *event)
{
    if (event->reason() == QContextMenuEvent::Mouse && !textCursor().hasSelection())
        setTextCursor(m_grips->Picture_At(event->pos()));
    const QPoint place = event->reason() == QContextMenuEvent::Mouse
                             ? event->globalPos()
                             : viewport()->mapToGlobal(cursorRect().bottomLeft());
    emit Menu_Wanted(place);
}

void Text_Editor::inputMethodEvent(QInputMethodEvent *event)
{
    QTextEdit::inputMethodEvent(event);
    // The composition's own formats have just replaced the ones that keep the paragraph readable.
    m_colors->Refresh(textCursor().block());
}

void Text_Editor::resizeEvent(QResizeEvent *event)
{
    Fit();
    QTextEdit::resizeEvent(event);
}

void Text_Editor::changeEvent(QEvent *event)
{
    QTextEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange)
        Use_Surroundings();
}

QVariant Text_Editor::loadResource(int /*type*/, const QUrl & /*name*/)
{
    return Html::Closed_Door::Nothing();
}

bool Text_Editor::canInsertFromMimeData(const QMimeData *source) const
{
    return source->hasImage() || !Pictures::Files_In(*source).isEmpty() || !Rtf_In(*source).isEmpty() ||
           QTextEdit::canInsertFromMimeData(source);
}

void Text_Editor::insertFromMimeData(const QMimeData *source)
{
    Insert_Data(*source);
}

void Text_Editor::Insert_Data(const QMimeData &source)
{
    if (isReadOnly())
        return;
    QTextCursor cursor = textCursor();
    const int begin = cursor.selectionStart();
    cursor.beginEditBlock();
    const QStringList files = Pictures::Files_In(source);
    const bool keepsLooks = source.hasFormat(Own_Type) || Is_On(&Settings_Record::CH_KeepWord);
    Html::Closed_Door door;
    QTextDocument foreign(&door);
    if (!files.isEmpty()) {
        for (const QString &file : files)
            Pictures::Insert(cursor, Raster::Read_File(file));
    } else if (const QByteArray rtf = Rtf_In(source); Read_Clipboard(rtf, foreign)) {
        Insert_Document(foreign, keepsLooks);
    } else if (source.hasHtml()) {
        foreign.setHtml(Html::Bounded(source.html()));
        Insert_Document(foreign, keepsLooks);
    } else if (source.hasImage()) {
        Pictures::Insert(cursor, Pictures::In(source));
    } else {
        cursor.insertText(source.text());
    }
    const int end = textCursor().position();
    Line_Distance::Give(*document(), std::min(begin, end), std::max(begin, end));
    cursor.endEditBlock();
    ensureCursorVisible();
}

QMimeData *Text_Editor::createMimeDataFromSelection() const
{
    Html::Closed_Door door;
    QTextDocument copy(&door);
    copy.setUndoRedoEnabled(false);
    copy.setDefaultFont(document()->defaultFont());
    QTextCursor(&copy).insertFragment(textCursor().selection());
    Pictures::Carry_Over(*document(), copy);
    auto *copied = new QMimeData;
    const QTextDocumentFragment part = textCursor().selection();
    copied->setText(part.toPlainText());
    copied->setHtml(Line_Distance::Without(part.toHtml()));
    copied->setData(QLatin1String(Rtf_Types[0]),
                    Trap(QStringLiteral("Text_Editor\\Copy"), [&] { return Rich_Text::Write_Rtf(copy); }));
    copied->setData(Own_Type, QByteArrayLiteral("1"));
    return copied;
}

QAction *Text_Editor::Action_For(const QKeyEvent &event) const
{
    const QKeySequence key(event.keyCombination());
    for (QAction *action : actions()) {
        if (action->isEnabled() && action->shortcuts().contains(key))
            return action;
    }
    return nullptr;
}

bool Text_Editor::Handle_Tab(bool back)
{
    const QTextCursor cursor = textCursor();
    if (cursor.currentTable() != nullptr && !cursor.hasSelection())
        return Table_Commands::Step(*this, back);
    const bool shifts = cursor.block().textList() != nullptr || Is_On(&Settings_Record::CH_Tab);
    if (!back && (!shifts || (!cursor.atBlockStart() && !cursor.hasSelection())))
        return false;
    back ? Paragraph_Commands::Outdent(*this, true) : Paragraph_Commands::Indent(*this, true);
    return true;
}

/// A step back from an item's beginning takes away its label.
bool Text_Editor::Leave_List()
{
    QTextCursor cursor = textCursor();
    if (cursor.hasSelection() || !cursor.atBlockStart() || cursor.currentList() == nullptr)
        return false;
    Paragraph_Commands::Leave_List(cursor);
    return true;
}

/// An empty list item ends its list, and a heading is followed by plain text.
bool Text_Editor::Handle_Return()
{
    QTextCursor cursor = textCursor();
    const QTextBlock block = cursor.block();
    if (cursor.hasSelection())
        return false;
    if (block.textList() != nullptr && block.length() == 1) {
        Paragraph_Commands::Leave_List(cursor);
        return true;
    }
    if (block.blockFormat().headingLevel() == 0 || !cursor.atBlockEnd() || cursor.atBlockStart())
        return false;
    QTextBlockFormat plain = block.blockFormat();
    Paragraph_Commands::Make_Body(plain);
    QTextCharFormat format = Paragraph_Commands::Body_Format(*this, cursor.charFormat());
    cursor.insertBlock(plain, format);
    setTextCursor(cursor);
    ensureCursorVisible();
    return true;
}

void Text_Editor::Insert_Document(QTextDocument &foreign, bool keepsLooks)
{
    if (!keepsLooks)
        Character_Commands::Keep_Emphasis(foreign, currentCharFormat());
    Character_Commands::Fill_Font(foreign, currentCharFormat());
    Pictures::Carry_Over(foreign, *document());
    textCursor().insertFragment(QTextDocumentFragment(&foreign));
}
