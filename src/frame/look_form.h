#pragma once

#include <QLabel>

namespace quilla {

/// The background of the main window: fills the client area and shows the program's title.
class frmLook final : public QWidget {
    Q_OBJECT

public:
    /// Keeps the size of `area` and stays behind everything else in it.
    frmLook(const QString& title, QWidget& area);

    QLabel lMain;

    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace quilla
