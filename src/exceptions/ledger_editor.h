#pragma once

#include "exceptions/ledger_ops.h"
#include "platform/ui/form/just_told.h"
#include "platform/ui/form/text_box.h"

#include <QComboBox>
#include <QDialog>
#include <QPushButton>

namespace quilla {

/// Withdraws a copy, or corrects an entry of the ledger. Modal: construct, `SetDataMode`, `InfoLoad`, `exec`.
class AddBookOutFrm final : public QDialog {
    Q_OBJECT

public:
    explicit AddBookOutFrm(Session& session, QWidget* parent = nullptr);

    /// "A" withdraws, "E" looks at an entry and corrects it, whose barcode stays.
    void SetDataMode(const QString& mode);
    /// Puts an entry before the operator, a new one for 0; without that entry nothing can be saved.
    void InfoLoad(qint64 id);

    TextBox Text1[LedgerBox::Count];
    QComboBox Combo1; ///< the cause
    QPushButton CmdSave;
    QPushButton CmdCancel;

private:
    void layOut();
    void wire();
    void fill(int box, const QString& text);
    void checkPrice();
    bool checkDate();
    bool checkCopy();
    void save();
    Withdrawal shown() const;

    Session& m_session;
    EditorMode m_mode;
    JustTold m_told;
};

} // namespace quilla
