#pragma once

#include "frame/workplace.h"
#include "platform/ui/form/popup_menu.h"
#include "platform/ui/grid/flex_grid.h"
#include "readers/reader_register_ops.h"
#include "statistics/query_ops.h"

#include <QLabel>
#include <QPushButton>

namespace quilla {

/// The register of reader cards: finds them, opens their editor, bars and deletes cards, and gives all that
/// were found another unit. Reads nobody before the first search.
class DzglFrm final : public QWidget, public QueryReceiver {
    Q_OBJECT

public:
    explicit DzglFrm(const Workplace& place);

    /// Searches, and remembers what for.
    void loadData(const QString& condition, const QString& order) override;
    /// Repeats the last search, or lists the whole register before the first one. The current line and the
    /// order by a caption stay.
    void RefreshReaderList();
    /// Empties the list.
    void Grid1Fresh();

    QSize sizeHint() const override;

    QLabel Label1; ///< the heading
    QLabel iRowCount;
    FlexGrid Grid1;
    QPushButton CmdDzgl[7];
    QPushButton cmdPrint;
    QPushButton cmdToExcel;
    CreateMenu Menu; ///< of the right mouse button

private:
    void layOut();
    void wire();
    bool list();
    void refreshAt(const QString& code);

    void addCard();
    void editCard();
    void openEditor(const QString& mode, const QString& code);
    void deleteCurrent();
    void search();
    void reportLost();
    void deleteFound();
    void offerBatch();
    QString askForUnit();
    void changeUnit();
    void print();
    void toExcel();

    QString currentCode() const { return Grid1.current(ReaderCode); }
    bool anyShown() const;
    QStringList codesFound() const;

    Session& m_session;
    ReportViewer& m_reports;
    SpreadsheetProgram& m_spreadsheets;
    ReaderSearch m_search;
};

} // namespace quilla
