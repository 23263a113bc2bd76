#pragma once

#include "desk/reader_picker_ops.h"
#include "platform/ui/form/photo_box.h"
#include "platform/ui/form/text_box.h"
#include "platform/ui/grid/flex_grid.h"

#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

namespace quilla {

/// Finds a reader by name and hands back the code: `frmWuZhengJieShu` among those who may borrow without a
/// card, `frmReaderSelect` among all. Modal; the caller reads `PickedCode` afterwards.
class ReaderPickerFrm final : public QDialog {
    Q_OBJECT

public:
    ReaderPickerFrm(Session& session, ReaderPicker picker, QWidget* parent = nullptr);

    QString PickedCode; ///< empty when nobody was picked
    QString PickedFlag; ///< "yes" after a pick

    TextBox Text1;
    QPushButton Command1;
    QLabel labNotExists;
    FlexGrid Grid1;
    QGroupBox Frame1;
    PhotoBox Image1;
    TextBox Text2[ReaderDetail::Count];
    QPushButton Command2[2];

    bool eventFilter(QObject* watched, QEvent* event) override;
    /// Leaves without a reader, also by the window's close box.
    void reject() override;

private:
    void layOut();
    void wire();
    void search();
    void showNobody(const QString& part);
    void clickLine(int row);
    void showLine(int row);
    void showDetails(const QString& readercode);
    void clearDetails();
    void takeReader();
    void markMove(bool moving);

    QLabel m_memo;
    Session& m_session;
    const ReaderPicker m_picker;
    int m_shownLine = 0; ///< the grid's line whose reader is shown
    int m_lineAtPress = 0; ///< the current line when the mouse was pressed
};

} // namespace quilla
