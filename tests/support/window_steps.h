#pragma once

#include <QTest>
#include <QWidget>

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

} // namespace quilla
