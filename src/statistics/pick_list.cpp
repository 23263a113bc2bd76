#include "statistics/pick_list.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>

namespace quilla {

namespace {

constexpr int LinesShown = 10;

} // namespace

PickList::PickList(QWidget& form)
    : FlexGrid(&form)
    , m_form(form)
{
    setUp(1, u"<可选内容"_s);
    setAccessibleName(u"可选内容"_s);
    setFocusPolicy(Qt::NoFocus);
    horizontalHeader()->hide();
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFollowsPointer(true);
    hide();
    form.installEventFilter(this);
    connect(this, &FlexGrid::rowClicked, this, &PickList::pick);
}

void PickList::serve(QLineEdit& box)
{
    box.installEventFilter(this);
}

void PickList::open(QLineEdit& box, const QStringList& lines)
{
    if (lines.isEmpty()) return hide();
    m_box = &box;
    m_chosen = false;
    {
        const GridModel::Filling filling(cells());
        setRows(int(lines.size()) + 1);
        for (int line = 0; line < lines.size(); ++line)
            setTextMatrix(line + 1, 0, lines[line]);
    }
    place(box);
    setRow(1);
    show();
    raise();
}

/// As wide as the box, wider where the lines need it; as high as its lines, as far as the form reaches.
void PickList::place(QLineEdit& box)
{
    const QPoint at = box.mapTo(&m_form, QPoint(0, box.height()));
    const int frame = 2 * frameWidth();
    const int lines = std::min(Rows() - 1, LinesShown);
    const int wanted = sizeHintForColumn(0) + frame + 24;
    setGeometry(at.x(), at.y(), std::min(std::max(box.width(), wanted), m_form.width() - at.x()),
        std::min(lines * rowHeight(0) + frame, m_form.height() - at.y()));
}

void PickList::step(int lines)
{
    setRow(m_chosen ? std::clamp(Row() + lines, 1, Rows() - 1) : 1);
    m_chosen = true;
}

void PickList::pick(int row)
{
    QLineEdit& box = *m_box;
    const QString line = TextMatrix(row, 0);
    hide();
    box.setFocus();
    Q_EMIT picked(box, line);
}

bool PickList::takesKey(QLineEdit& box, int key, Qt::KeyboardModifiers modifiers)
{
    if (!isVisible()) {
        if (key != Qt::Key_Down || !(modifiers & Qt::AltModifier)) return false;
        Q_EMIT wanted(box);
        return true;
    }
    const bool isEnter = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (key == Qt::Key_Escape) hide();
    if (key == Qt::Key_Down) step(1);
    if (key == Qt::Key_Up) step(-1);
    if (isEnter && m_chosen) pick(Row());
    return key == Qt::Key_Escape || key == Qt::Key_Down || key == Qt::Key_Up || (isEnter && m_chosen);
}

bool PickList::eventFilter(QObject* watched, QEvent* event)
{
    auto* box = qobject_cast<QLineEdit*>(watched);
    if (!box) {
        if (watched == &m_form && event->type() == QEvent::MouseButtonPress) hide();
        return FlexGrid::eventFilter(watched, event);
    }
    if (event->type() == QEvent::FocusOut) hide();
    if (event->type() == QEvent::MouseButtonRelease && box->isEnabled()) Q_EMIT wanted(*box);
    if (event->type() != QEvent::KeyPress) return false;
    const auto& press = static_cast<QKeyEvent&>(*event);
    return takesKey(*box, press.key(), press.modifiers());
}

} // namespace quilla
