#pragma once

#include "frame/workplace.h"
#include "platform/ui/form/text_box.h"
#include "platform/ui/grid/flex_grid.h"

#include <QPushButton>

namespace quilla {

struct Piece;

/// A screen on which the operator looks for titles by name or call number. Enter in the box, or its button,
/// runs the search; the text stays in the box.
class TitleSearchScreen : public QWidget {
    Q_OBJECT

public:
    TextBox Text1;
    QPushButton cmdQuery;
    FlexGrid Grid1; ///< the titles found

protected:
    TitleSearchScreen(Session& session, const QString& name, const QString& title);

    /// Looks for a text that is not empty.
    virtual void searchFor(const QString& text) = 0;
    /// The line with the box, its button and the rest.
    Piece searchLine(const std::vector<Piece>& rest);
    /// Closes the screen with its window.
    void leave();

    Session& m_session;

private:
    void search();
};

/// The copies of a title, those that can be lent or are out.
class CopyGrid final : public FlexGrid {
    Q_OBJECT

public:
    CopyGrid();

    /// Empties the list.
    void clearCopies();
    /// Lists the copies; none empties the list. Their number.
    qsizetype showCopies(Recordset& copies);
};

} // namespace quilla
