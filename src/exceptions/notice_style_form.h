#pragma once

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

namespace quilla {

/// Asks whether dunning notices are for a reader each or for a unit each. Modal.
class ShowStyleFrm final : public QDialog {
    Q_OBJECT

public:
    /// `groupField` takes the answer: "readercode", "readunit", or empty after a cancel.
    ShowStyleFrm(QString& groupField, QWidget* parent = nullptr);

    QRadioButton Option1[2];
    QLabel Label1; ///< what the choice means
    QPushButton CmdOK;
    QPushButton CmdCancel;

    /// The close box cancels too.
    void reject() override;

private:
    void goOn();

    QString& m_groupField;
};

} // namespace quilla
