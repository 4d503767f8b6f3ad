// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/month_view.h"

#include "platform/machine/machine.h"
#include "platform/models/plain_tip.h"
#include "tools/day_text.h"
#include "ui/kit/readable_color.h"

#include <QAbstractTableModel>
#include <QHeaderView>
#include <QIcon>
#include <QKeyEvent>
#include <QLocale>
#include <QPainter>
#include <QStyledItemDelegate>

namespace
{
constexpr int Days_In_Week = 7;
constexpr int Weeks = 6;
constexpr int Marks = 4;
constexpr int Sign_Size = 7;
constexpr int Sign_Room = 13;
constexpr int Margin = 4;

enum Role { Day_Role = Qt::UserRole, Line_Role, Kind_Role, Marks_Role, Beside_Role };

Day_Mark Mark_Of(int mark)
{
    return static_cast<Day_Mark>(1 << mark);
}

/// Where the sign of a mark stands in the cell of a day.
QRect Mark_Place(const QRect &cell, int mark)
{
    return {cell.center().x() - Marks * Sign_Room / 2 + mark * Sign_Room, cell.bottom() - Sign_Size - Margin - 1,
            Sign_Room, Sign_Size + Margin};
}

/// Made is a disc, changed a triangle, read a ring, due a diamond.
void Paint_Sign(QPainter &painter, const QPointF &center, int mark, const QColor &color)
{
    constexpr qreal Half = Sign_Size / 2.0;
    painter.setPen(QPen(color, 1.4));
    painter.setBrush(mark == 2 ? QBrush(Qt::NoBrush) : QBrush(color));
    const QPointF up(0, -Half);
    const QPointF right(Half, 0);
    switch (Mark_Of(mark)) {
    case Day_Mark::Made:
    case Day_Mark::Read:
        painter.drawEllipse(center, Half - 0.5, Half - 0.5);
        break;
    case Day_Mark::Changed:
        painter.drawPolygon(QPolygonF({center + up, center + right - up * 0.8, center - right - up * 0.8}));
        break;
    case Day_Mark::Due:
        painter.drawPolygon(QPolygonF({center + up, center + right, center - up, center - right}));
        break;
    }
}

QFont Number_Font(QFont font)
{
    font.setPointSizeF(font.pointSizeF() * 1.25);
    return font;
}

class Day_Painter : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        const bool chosen = option.state.testFlag(QStyle::State_Selected);
        Paint_Ground(*painter, option, index, chosen);
        const QRect room = option.rect.adjusted(Margin, Margin, -Margin, -Margin);
        const QColor number = Color(option, index, index.data(Kind_Role).value<Day_Text::Kind>() == Holiday, chosen);
        painter->setPen(number);
        painter->setFont(Number_Font(option.font));
        painter->drawText(room, Qt::AlignHCenter | Qt::AlignTop, index.data().toString());
        Paint_Line(*painter, option, index, room, chosen);
        const auto marks = index.data(Marks_Role).value<Day_Marks>();
        for (int mark = 0; mark < Marks; ++mark) {
            if (marks.testFlag(Mark_Of(mark)))
                Paint_Sign(*painter, QRectF(Mark_Place(option.rect, mark)).center(), mark,
                           Color(option, index, false, chosen));
        }
        painter->restore();
    }

private:
    static constexpr auto Holiday = Day_Text::Kind::Holiday;

    static void Paint_Ground(QPainter &painter, const QStyleOptionViewItem &option, const QModelIndex &index,
                             bool chosen)
    {
        const QRectF ground = QRectF(option.rect).adjusted(1.5, 1.5, -1.5, -1.5);
        const bool today = index.data(Day_Role).toDate() == Machine::Now().date();
        painter.setPen(today ? QPen(Readable(option.palette.color(QPalette::Link), Ground(option, chosen)), 2)
                             : QPen(Qt::NoPen));
        painter.setBrush(chosen ? option.palette.brush(QPalette::Highlight) : QBrush(Qt::NoBrush));
        painter.drawRoundedRect(ground, Margin, Margin);
    }

    static void Paint_Line(QPainter &painter, const QStyleOptionViewItem &option, const QModelIndex &index,
                           const QRect &room, bool chosen)
    {
        const auto kind = index.data(Kind_Role).value<Day_Text::Kind>();
        QFont font = option.font;
        font.setBold(kind == Holiday);
        painter.setFont(font);
        painter.setPen(Color(option, index, kind != Day_Text::Kind::Plain, chosen));
        const QFontMetrics metrics(font);
        const QRect line = room.adjusted(0, QFontMetrics(Number_Font(option.font)).height(), 0, 0);
        painter.drawText(line, Qt::AlignHCenter | Qt::AlignTop,
                         metrics.elidedText(index.data(Line_Role).toString(), Qt::ElideRight, line.width()));
    }

    static QColor Ground(const QStyleOptionViewItem &option, bool chosen)
    {
        return option.palette.color(chosen ? QPalette::Highlight : QPalette::Base);
    }

    /// What is special has a colour, days of the months beside are pale.
    static QColor Color(const QStyleOptionViewItem &option, const QModelIndex &index, bool special, bool chosen)
    {
        if (chosen)
            return option.palette.color(QPalette::HighlightedText);
        if (index.data(Beside_Role).toBool())
            return option.palette.color(QPalette::PlaceholderText);
        if (!special)
            return option.palette.color(QPalette::Text);
        const bool term = index.data(Kind_Role).value<Day_Text::Kind>() == Day_Text::Kind::Term;
        return Readable(option.palette.color(term ? QPalette::LinkVisited : QPalette::Link), Ground(option, chosen));
    }
};
} // namespace

/// Six weeks that hold a month.
class Month_Model : public QAbstractTableModel
{
public:
    explicit Month_Model(QWidget &view) : QAbstractTableModel(&view), m_view(view) {}

    void Show_Month_Of(const QDate &day)
    {
        const QDate first(day.year(), day.month(), 1);
        const int before = (first.dayOfWeek() - m_view.locale().firstDayOfWeek() + Days_In_Week) % Days_In_Week;
        if (m_month != first)
            m_marks.clear();
        m_month = first;
        m_first = first.addDays(-before);
        Say_Changed();
    }

    [[nodiscard]] QModelIndex Index_Of(const QDate &day) const
    {
        const auto days = static_cast<int>(m_first.daysTo(day));
        return index(days / Days_In_Week, days % Days_In_Week);
    }

    [[nodiscard]] int rowCount(const QModelIndex & /*parent*/) const override { return Weeks; }
    [[nodiscard]] int columnCount(const QModelIndex & /*parent*/) const override { return Days_In_Week; }

    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
            return {};
        const int day = (m_view.locale().firstDayOfWeek() - 1 + section) % Days_In_Week + 1;
        return m_view.locale().standaloneDayName(day, QLocale::ShortFormat);
    }

    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override
    {
        const QDate day = m_first.addDays(index.row() * Days_In_Week + index.column());
        switch (role) {
        case Qt::DisplayRole:
            return QString::number(day.day());
        case Qt::ToolTipRole:
            return Plain_Tip(Whole_Text(day));
        case Qt::AccessibleTextRole:
            return Whole_Text(day);
        case Day_Role:
            return day;
        case Line_Role:
            return m_lunar ? Text_Of_Day(day).line : QString();
        case Kind_Role:
            return QVariant::fromValue(Text_Of_Day(day).kind);
        case Marks_Role:
            return QVariant::fromValue(Marks_On(day));
        case Beside_Role:
            return day.month() != m_month.month();
        default:
            return {};
        }
    }

    [[nodiscard]] Day_Marks Marks_On(const QDate &day) const
    {
        return day.month() == m_month.month() ? m_marks.value(day.day()) : Day_Marks();
    }

    void Set_Marks(const QHash<int, Day_Marks> &marks, const QStringList &words)
    {
        m_marks = marks;
        m_words = words;
        Say_Changed();
    }

    void Set_Lunar(bool on)
    {
        m_lunar = on;
        Say_Changed();
    }

private:
    [[nodiscard]] QString Whole_Text(const QDate &day) const
    {
        QStringList texts{m_view.locale().toString(day, QLocale::LongFormat)};
        if (m_lunar)
            texts << Text_Of_Day(day).whole;
        for (int mark = 0; mark < m_words.size(); ++mark) {
            if (Marks_On(day).testFlag(Mark_Of(mark)))
                texts << m_words[mark];
        }
        texts.removeAll(QString());
        return texts.join(QLatin1Char('\n'));
    }

    void Say_Changed()
    {
        emit dataChanged(index(0, 0), index(Weeks - 1, Days_In_Week - 1));
        emit headerDataChanged(Qt::Horizontal, 0, Days_In_Week - 1);
    }

    QWidget &m_view;
    QDate m_month;
    QDate m_first;
    QHash<int, Day_Marks> m_marks;
    QStringList m_words;
    bool m_lunar = false;
};

Month_View::Month_View(QWidget *parent) : QTableView(parent), m_month(new Month_Model(*this))
{
    setModel(m_month);
    setItemDelegate(new Day_Painter(this));
    setSelectionMode(SingleSelection);
    setShowGrid(false);
    setTabKeyNavigation(false);
    setCornerButtonEnabled(false);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    verticalHeader()->hide();
    for (QHeaderView *header : {verticalHeader(), horizontalHeader()}) {
        header->setMinimumSectionSize(1);
        header->setSectionResizeMode(QHeaderView::Stretch);
    }
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(false);
    Set_Day(Machine::Now().date());
    connect(selectionModel(), &QItemSelectionModel::currentChanged, this, [this](const QModelIndex &index) {
        if (!m_setting)
            Set_Day(index.data(Day_Role).toDate());
    });
}

QDate Month_View::Day() const
{
    return currentIndex().data(Day_Role).toDate();
}

void Month_View::Set_Day(const QDate &day)
{
    if (!day.isValid())
        return;
    m_setting = true;
    m_month->Show_Month_Of(day);
    setCurrentIndex(m_month->Index_Of(day));
    m_setting = false;
    emit Day_Chosen(day);
}

void Month_View::Set_Lunar(bool on)
{
    m_month->Set_Lunar(on);
}

void Month_View::Set_Marks(const QHash<int, Day_Marks> &marks, const QStringList &words)
{
    m_month->Set_Marks(marks, words);
}

Day_Marks Month_View::Marks_Of_Day() const
{
    return m_month->Marks_On(Day());
}

QIcon Month_View::Mark_Icon(int mark, const QWidget &where)
{
    constexpr int Size = 16;
    QPixmap picture(QSize(Size, Size) * where.devicePixelRatioF());
    picture.setDevicePixelRatio(where.devicePixelRatioF());
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    Paint_Sign(painter, QPointF(Size, Size) / 2, mark, where.palette().color(QPalette::ButtonText));
    painter.end();
    return picture;
}

QSize Month_View::sizeHint() const
{
    const int line = fontMetrics().height();
    const int cellHeight = QFontMetrics(Number_Font(font())).height() + line + Sign_Size + 3 * Margin;
    const int cellWidth = fontMetrics().averageCharWidth() * 10;
    return {cellWidth * Days_In_Week, cellHeight * Weeks + horizontalHeader()->sizeHint().height() + 2};
}

QDate Month_View::Day_By_Key(const QKeyEvent &event) const
{
    const QDate day = Day();
    const bool shift = event.modifiers().testFlag(Qt::ShiftModifier);
    switch (event.key()) {
    case Qt::Key_Left:
        return day.addDays(-1);
    case Qt::Key_Right:
        return day.addDays(1);
    case Qt::Key_Up:
        return day.addDays(-Days_In_Week);
    case Qt::Key_Down:
        return day.addDays(Days_In_Week);
    case Qt::Key_PageUp:
        return shift ? day.addYears(-1) : day.addMonths(-1);
    case Qt::Key_PageDown:
        return shift ? day.addYears(1) : day.addMonths(1);
    case Qt::Key_Home:
        return event.modifiers().testFlag(Qt::ControlModifier) ? Machine::Now().date()
                                                               : QDate(day.year(), day.month(), 1);
    case Qt::Key_End:
        return {day.year(), day.month(), day.daysInMonth()};
    default:
        return {};
    }
}

void Month_View::keyPressEvent(QKeyEvent *event)
{
    const QDate day = Day_By_Key(*event);
    if (day.isValid())
        Set_Day(day);
    else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        emit Day_Taken(Day());
    else
        event->ignore(); // letters search nothing here
}

/// Dragging chooses nothing: the month may have changed under the pointer.
void Month_View::mouseMoveEvent(QMouseEvent *event)
{
    if (event->buttons() == Qt::NoButton)
        QTableView::mouseMoveEvent(event);
}

void Month_View::mouseReleaseEvent(QMouseEvent *event)
{
    QTableView::mouseReleaseEvent(event);
    const QRect cell = visualRect(currentIndex());
    if (event->button() != Qt::LeftButton || !indexAt(event->position().toPoint()).isValid())
        return;
    for (int mark = 0; mark < Marks; ++mark) {
        if (Marks_Of_Day().testFlag(Mark_Of(mark)) && Mark_Place(cell, mark).contains(event->position().toPoint())) {
            emit Mark_Taken(Day(), Mark_Of(mark));
            return;
        }
    }
    emit Day_Taken(Day());
}

void Month_View::changeEvent(QEvent *event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::LocaleChange)
        Set_Day(Day());
}
