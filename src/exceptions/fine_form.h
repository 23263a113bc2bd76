#pragma once

#include "exceptions/fine_ops.h"
#include "platform/ui/form/text_box.h"
#include "platform/ui/grid/flex_grid.h"

#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>

namespace quilla {

struct Piece;

/// The fine screen: settles a loan whose copy is overdue, damaged or lost.
class FKmangerFrm final : public QDialog, private FineView {
    Q_OBJECT

public:
    /// `entryMode` is "E" for a copy that the desk hands over, whose reader and book are not to be changed;
    /// else "A".
    FKmangerFrm(Session& session, const QString& entryMode, QWidget* parent = nullptr);

    const QString& EntryMode() const { return m_fines.EntryMode; }
    /// "yes" once a settlement was saved.
    const QString& SavedFlag() const { return m_fines.SavedFlag; }
    /// What the box does when the focus leaves it.
    void Text1_LostFocus(int index) { m_fines.lookup.Text1_LostFocus(index); }

    TextBox Text1[FineBox::Count];
    QCheckBox Check1[3];
    QTabWidget SSTab1;
    QLabel lXinXi[3]; ///< how the amounts came about
    QLabel lSum; ///< of what is taken for the kinds that are ticked
    QLabel lHint; ///< what can be done while no kind is ticked
    FlexGrid Grid1[2]; ///< open loans, fines taken
    QPushButton Command1[3];

private:
    // What the operations do to this screen.
    QString box(int index) const override;
    void setBox(int index, const QString& text) override;
    void focusBox(int index) override;
    bool isTicked(FineKind kind) const override;
    void setTicked(FineKind kind, bool ticked) override;
    void setTickable(FineKind kind, bool tickable) override;
    void focusKind(FineKind kind) override;
    void setWorking(FineKind kind, const QString& text) override;
    void showLoans(Recordset& loans) override;
    void showFines(Recordset& fines) override;
    void closeScreen() override;

    void layOut();
    Piece pageOf(FineKind kind, const QString& caption);
    void wire();
    void showSum();

    FineHandling m_fines;
};

} // namespace quilla
