#pragma once

#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QTextEdit>

namespace quilla {

/// The details of a failed operation.
class errMessageFrm : public QDialog {
    Q_OBJECT

public:
    explicit errMessageFrm(QWidget* parent = nullptr);

    QLabel labTitle;
    QTextEdit textErrMessage;
    QPushButton Command1;
};

/// What `textErrMessage` says: the headline, or a usual one when it is empty, and the detail below.
QString failureText(const QString& headline, const QString& detail);

/// Shows `errMessageFrm` modally; nothing happens without a detail.
void ShowOperationFailure(QWidget* parent, const QString& headline, const QString& detail);

} // namespace quilla
