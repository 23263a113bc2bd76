#pragma once

#include <QApplication>
#include <QLineEdit>
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

/// Does the steps in the dialog that comes next and closes it. `awaited` counts those that have not come yet.
template <typename Dialog> void inDialog(int& awaited, std::function<void(Dialog&)> steps)
{
    ++awaited;
    whenShown<Dialog>([&awaited, steps = std::move(steps)](Dialog& dialog) {
        steps(dialog);
        --awaited;
        dialog.close();
    });
}

/// Name of the control with the focus, once what is under way has been done.
inline QString focusName()
{
    QCoreApplication::processEvents();
    const QWidget* control = QApplication::focusWidget();
    return control ? control->objectName() : QString();
}

} // namespace quilla
