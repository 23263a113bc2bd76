#pragma once

#include <QMdiArea>

namespace quilla {

/// Lets an access key that both the screen in front and the main menu have press the button of the screen.
/// Left to itself, such a key opens the menu at the first press and only moves the focus at the second.
class ScreenKeys final : public QObject {
    Q_OBJECT

public:
    explicit ScreenKeys(QMdiArea& screens);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QMdiArea& m_screens;
};

} // namespace quilla
