#pragma once

#include "platform/ui/grid/flex_grid.h"

class QLineEdit;

namespace quilla {

/// A pick list beneath a text box: its lines follow the mouse; a click, Enter or the blank puts the text of
/// the current cell into the box, Esc or a click elsewhere takes nothing.
class gListfrm : public QWidget {
    Q_OBJECT

public:
    /// `target` must outlive the list.
    explicit gListfrm(QLineEdit& target);

    /// Fills the list; a result without rows leaves one empty line.
    void loadData(Recordset& records);
    /// Shows the list under its box, at the left edge, as wide as its columns need: all lines where there
    /// are fewer than four, else three and a scroll bar.
    void popUp();

    FlexGrid Grid1;

Q_SIGNALS:
    /// The box has taken a text and has the focus.
    void chosen();

private:
    void choose();
    void fitToLines();

    QLineEdit& m_target;
};

} // namespace quilla
