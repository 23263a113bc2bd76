#pragma once

#include "platform/ui/grid/flex_grid.h"

class QLineEdit;

namespace quilla {

/// A list that lies over a form beneath a text box, to pick what the box shall hold. The focus stays in the
/// box: a click picks, and so does Enter once the arrow keys have chosen a line; Esc, and the focus leaving
/// the box, hide it. A click on an empty place of the form hides it as well.
class PickList final : public FlexGrid {
    Q_OBJECT

public:
    /// Hidden at first. The form must outlive the list.
    explicit PickList(QWidget& form);

    /// A click in the box, or Alt and the down key, asks for the list.
    void serve(QLineEdit& box);
    /// Shows these lines under the box; without lines nothing is shown.
    void open(QLineEdit& box, const QStringList& lines);

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void wanted(QLineEdit& box);
    /// The list is hidden again, and the box has the focus.
    void picked(QLineEdit& box, const QString& line);

private:
    bool takesKey(QLineEdit& box, int key, Qt::KeyboardModifiers modifiers);
    void place(QLineEdit& box);
    void pick(int row);
    void step(int lines);

    QWidget& m_form;
    QLineEdit* m_box = nullptr;
    bool m_chosen = false; ///< by the arrow keys
};

} // namespace quilla
