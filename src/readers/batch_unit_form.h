#pragma once

#include "platform/ui/form/text_box.h"

#include <QDialog>
#include <QGroupBox>
#include <QPushButton>

namespace quilla {

/// Asks for the unit that all readers found are to get. Modal; `Text1` is empty when they are to keep theirs.
class updateAll final : public QDialog {
    Q_OBJECT

public:
    explicit updateAll(QWidget* parent = nullptr);

    void reject() override;

    QGroupBox Frame1;
    TextBox Text1;
    QPushButton Command1;
    QPushButton Command2;

private:
    void confirm();
};

} // namespace quilla
