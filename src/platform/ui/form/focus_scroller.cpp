#include "platform/ui/form/focus_scroller.h"

#include <QApplication>
#include <QScrollBar>
#include <QTimer>

namespace quilla {

FocusScroller::FocusScroller(QWidget* parent)
    : QScrollArea(parent)
{
    setWidgetResizable(true);
    setFrameShape(NoFrame);
    setFocusPolicy(Qt::NoFocus);
    connect(qApp, &QApplication::focusChanged, this, &FocusScroller::follow);
    for (QScrollBar* bar : {verticalScrollBar(), horizontalScrollBar()})
        connect(bar, &QScrollBar::rangeChanged, this, &FocusScroller::follow);
}

QSize FocusScroller::sizeHint() const
{
    return widget() ? widget()->sizeHint() : QScrollArea::sizeHint();
}

/// Once all is laid out.
void FocusScroller::follow()
{
    QTimer::singleShot(0, this, [this] {
        constexpr int above = 12;
        QWidget* control = QApplication::focusWidget();
        if (widget() && control && widget()->isAncestorOf(control)) ensureWidgetVisible(control, 0, above);
    });
}

} // namespace quilla
