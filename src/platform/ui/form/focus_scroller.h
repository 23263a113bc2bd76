#pragma once

#include <QScrollArea>

namespace quilla {

/// Scrolls what has not enough room, so that the control with the focus is seen, also where the program has
/// set the focus. Has no frame, and asks for as much room as its content.
class FocusScroller final : public QScrollArea {
    Q_OBJECT

public:
    explicit FocusScroller(QWidget* parent = nullptr);

    QSize sizeHint() const override;

private:
    void follow();
};

} // namespace quilla
