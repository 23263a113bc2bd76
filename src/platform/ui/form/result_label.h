#pragma once

#include <QLabel>

namespace quilla {

/// The line that says what became of an action, for eyes and for a screen reader. To the latter it is a
/// notification: it is read aloud without having the focus.
class ResultLabel : public QLabel {
    Q_OBJECT

public:
    explicit ResultLabel(QWidget* parent = nullptr);

    /// Has a screen reader read `text`, which need not be what the label shows. Costs nothing without one.
    void announce(const QString& text);
};

} // namespace quilla
