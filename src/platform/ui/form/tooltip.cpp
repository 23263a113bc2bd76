#include "platform/ui/form/tooltip.h"

#include "platform/core/text.h"

#include <QAbstractScrollArea>
#include <QMouseEvent>
#include <QScreen>
#include <QToolTip>

namespace quilla {

namespace {

constexpr int Inside = 6; // between frame and text, beyond the margins
constexpr QPoint BesideCursor(12, 20);

QString upToZero(const QString& text)
{
    const qsizetype zero = text.indexOf(QChar(u'\0'));
    return zero < 0 ? text : text.left(zero);
}

} // namespace

bool cTooltip::Create(QWidget* parent)
{
    if (m_tip) return true;
    m_parent = parent;
    m_tip = std::make_unique<QLabel>(nullptr, Qt::ToolTip | Qt::BypassGraphicsProxyWidget);
    m_tip->setTextFormat(Qt::PlainText);
    m_tip->setFrameStyle(QFrame::Box | QFrame::Plain);
    m_tip->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_tip->setFocusPolicy(Qt::NoFocus);
    m_backColor = QToolTip::palette().color(QPalette::ToolTipBase);
    m_foreColor = QToolTip::palette().color(QPalette::ToolTipText);
    m_wait.setSingleShot(true);
    m_pop.setSingleShot(true);
    connect(&m_wait, &QTimer::timeout, this, &cTooltip::showTip);
    connect(&m_pop, &QTimer::timeout, this, &cTooltip::hideTip);
    dress();
    return true;
}

const cTooltip::Tool* cTooltip::find(const QObject* control) const
{
    const auto tool = std::find_if(
        m_tools.begin(), m_tools.end(), [=](const Tool& each) { return each.control == control; });
    return tool == m_tools.end() ? nullptr : &*tool;
}

QWidget* cTooltip::mouseTarget(QWidget& control)
{
    auto* area = qobject_cast<QAbstractScrollArea*>(&control);
    return area ? area->viewport() : &control;
}

bool cTooltip::AddTool(QObject* control, const QString& text)
{
    auto* widget = qobject_cast<QWidget*>(control);
    if (!m_tip || !widget || find(control)) return false;
    m_tools.push_back({widget, text.isEmpty() ? u"Tool%1"_s.arg(ToolCount() + 1) : text});
    mouseTarget(*widget)->setMouseTracking(true);
    mouseTarget(*widget)->installEventFilter(this);
    connect(widget, &QObject::destroyed, this, [this](QObject* gone) { RemoveTool(gone); });
    return true;
}

bool cTooltip::RemoveTool(QObject* control)
{
    const Tool* tool = find(control);
    if (!tool) return false;
    if (m_under == tool->control) hideTip();
    if (auto* widget = qobject_cast<QWidget*>(control)) {
        mouseTarget(*widget)->removeEventFilter(this);
        widget->disconnect(this);
    }
    m_tools.erase(m_tools.begin() + (tool - m_tools.data()));
    return true;
}

void cTooltip::setBackColor(const QColor& colour)
{
    m_backColor = colour;
    dress();
}

QColor cTooltip::ForeColor()
{
    // The tip window knows only a message that sets this colour; the read sends it too, with black.
    setForeColor(Qt::black);
    return m_foreColor;
}

void cTooltip::setForeColor(const QColor& colour)
{
    m_foreColor = colour;
    dress();
}

int cTooltip::DelayTime(int kind) const
{
    return m_delays[std::size_t(kind & 3)];
}

void cTooltip::setDelayTime(int kind, int milliseconds)
{
    m_delays[std::size_t(kind & 3)] = milliseconds;
    if ((kind & 3) != Automatic) return;
    m_delays[Initial] = milliseconds;
    m_delays[Reshow] = milliseconds / 5;
    m_delays[Autopop] = milliseconds * 10;
}

WId cTooltip::hwnd() const
{
    return m_tip ? m_tip->winId() : 0;
}

int cTooltip::Margin(int side) const
{
    return m_margins[std::size_t(side & 3)];
}

void cTooltip::setMargin(int side, int pixels)
{
    m_margins[std::size_t(side & 3)] = pixels;
    dress();
}

void cTooltip::setMaxTipWidth(int pixels)
{
    m_maxWidth = pixels < 1 ? -1 : pixels;
    dress();
}

QString cTooltip::ToolText(QObject* control) const
{
    const Tool* tool = find(control);
    return tool ? upToZero(tool->text) : QString();
}

void cTooltip::setToolText(QObject* control, const QString& text)
{
    const Tool* tool = find(control);
    if (!tool || tool->text == text) return;
    m_tools[std::size_t(tool - m_tools.data())].text = text;
    if (m_tip->isVisible() && m_under == control) showTip();
}

bool cTooltip::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseMove:
        for (const Tool& tool : m_tools)
            if (mouseTarget(*tool.control) == watched) waitForRest(*tool.control);
        break;
    case QEvent::ToolTip:
        return true; // this tip takes the place of the control's own
    case QEvent::Leave:
    case QEvent::KeyPress:
    case QEvent::Wheel:
    case QEvent::Hide:
        hideTip();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void cTooltip::waitForRest(QWidget& control)
{
    const bool shownJustNow = m_tip->isVisible();
    if (shownJustNow && m_under == &control) return;
    m_under = &control;
    m_wait.start(shownJustNow ? m_delays[Reshow] : m_delays[Initial]);
}

/// Below the pointer; where the screen ends before the tip, beside the pointer at the foot of the screen, so
/// that what stands above the control stays in sight.
QPoint cTooltip::tipPlace(const QPoint& pointer, const QSize& tip, const QRect& screen)
{
    QPoint at = pointer + BesideCursor;
    const int right = std::max(screen.left(), screen.right() - tip.width());
    if (at.y() + tip.height() <= screen.bottom()) return {std::clamp(at.x(), screen.left(), right), at.y()};
    at.setY(std::max(screen.top(), screen.bottom() - tip.height()));
    if (at.x() > right) at.setX(std::max(screen.left(), pointer.x() - tip.width() - BesideCursor.x()));
    return at;
}

void cTooltip::showTip()
{
    m_wait.stop();
    const Tool* tool = m_under ? find(m_under) : nullptr;
    if (!tool || upToZero(tool->text).isEmpty()) return hideTip();
    m_tip->setText(upToZero(tool->text));
    m_tip->adjustSize();
    m_tip->move(tipPlace(QCursor::pos(), m_tip->size(), tool->control->screen()->availableGeometry()));
    m_tip->show();
    m_tip->raise();
    m_pop.start(m_delays[Autopop]);
}

void cTooltip::hideTip()
{
    m_wait.stop();
    m_pop.stop();
    m_under = nullptr;
    if (m_tip) m_tip->hide();
}

void cTooltip::dress()
{
    if (!m_tip) return;
    QPalette palette = m_tip->palette();
    palette.setColor(QPalette::Window, m_backColor);
    palette.setColor(QPalette::WindowText, m_foreColor);
    m_tip->setPalette(palette);
    m_tip->setContentsMargins(
        m_margins[0] + Inside, m_margins[1] + Inside, m_margins[2] + Inside, m_margins[3] + Inside);
    m_tip->setWordWrap(m_maxWidth > 0);
    m_tip->setMaximumWidth(m_maxWidth > 0 ? m_maxWidth : QWIDGETSIZE_MAX);
}

} // namespace quilla
