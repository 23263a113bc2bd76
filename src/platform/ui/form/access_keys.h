#pragma once

#include <QObject>

namespace quilla {

/// Alt and a letter, for the whole program. The letters of the dialog, or of the active screen inside the
/// main window, come before those of the menu. One that several controls share belongs to the first of them
/// in tab order that shows and is enabled: a button is pressed, a label leads to its box. A letter that
/// nobody has types nothing.
class AccessKeys final : public QObject {
    Q_OBJECT

public:
    /// Serves from now on, as long as it lives.
    AccessKeys();

    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace quilla
