#pragma once

#include <QApplication>
#include <QLineEdit>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include <functional>

namespace quilla {

/// Shows a window with the focus, as it stands before the operator.
inline void appear(QWidget& window)
{
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
}

/// Types a text and Enter into a box, as a scanner does.
inline void type(QWidget& box, const QString& text)
{
    QTest::keyClicks(&box, text);
    QTest::keyClick(&box, Qt::Key_Return);
}

/// Puts a text that no key types, such as a Chinese one, into a box, and presses Enter.
inline void enter(QLineEdit& box, const QString& text)
{
    box.setText(text);
    QTest::keyClick(&box, Qt::Key_Return);
}

/// Types into a box and leaves it by Enter; the step of leaving it is done then.
inline void typeInto(QWidget& box, const QString& text)
{
    box.setFocus();
    QCoreApplication::processEvents();
    type(box, text);
    QCoreApplication::processEvents();
}

/// Presses the mouse on a line of a grid, in one of its columns.
inline void clickLine(QTableView& grid, int row, Qt::MouseButton button = Qt::LeftButton, int col = 0)
{
    const QPoint place = grid.visualRect(grid.model()->index(row - 1, col)).center();
    QTest::mouseClick(grid.viewport(), button, {}, place);
}

/// The window of that class that is on the screen.
template <typename Window> Window* shown()
{
    for (QWidget* window : QApplication::topLevelWidgets()) {
        auto* wanted = qobject_cast<Window*>(window);
        if (wanted && wanted->isVisible()) return wanted;
    }
    return nullptr;
}

/// Does `step` once such a window is on the screen, a dialog with the focus in it, from within whatever event
/// loop runs then.
template <typename Window> void whenShown(std::function<void(Window&)> step)
{
    auto* poll = new QTimer(qApp);
    QObject::connect(poll, &QTimer::timeout, poll, [poll, step = std::move(step)] {
        Window* window = shown<Window>();
        if (!window || (window->isModal() && !window->isActiveWindow())) return;
        poll->deleteLater();
        poll->stop();
        step(*window);
    });
    poll->start(5);
}

/// Name of the control with the focus, once what is under way has been done.
inline QString focusName()
{
    QCoreApplication::processEvents();
    const QWidget* control = QApplication::focusWidget();
    return control ? control->objectName() : QString();
}

} // namespace quilla
