#pragma once

#include "catalogue/title_search_screen.h"
#include "platform/ui/form/tooltip.h"
#include "reservations/reader_pair.h"

#include <QGroupBox>
#include <QLabel>

namespace quilla {

struct ReservationRequest;

/// Reserves a title for a reader: the operator finds the title, looks at its copies and names the reader.
/// Lines are chosen by a click or by Enter; a move by the arrow keys chooses nothing. Leaving hides the
/// screen, emptied, for the next use.
class frmTushuYuYue final : public TitleSearchScreen {
    Q_OBJECT

public:
    explicit frmTushuYuYue(Session& session);

    CopyGrid Grid2; ///< the copies of the chosen title
    QLabel labBookISBN; ///< of the chosen title
    QLabel labBookName;
    QLabel labBarCode; ///< of the chosen copy
    ReaderPair Reader;
    QPushButton cmdYuYue[2];
    cTooltip Tip; ///< details of a title
    QLabel labZhongShu; ///< the number of titles found
    QLabel labCeShu; ///< that of the copies shown

    /// The grid with its captions and no data.
    void ClearTitleGrid();
    void ClearCopyGrid();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void layOut();
    void wire();
    void makeTip();
    void searchFor(const QString& text) override;
    void showNoTitles();
    void chooseTitle(int row);
    void LoadCopies(const QString& zskid);
    void chooseCopy(int row);
    void showNoCopy();
    void showDetail(int row);
    ReservationRequest request() const;
    void place();
    void emptyReader();
    void backToReader();
    void putAway();
};

} // namespace quilla
