#pragma once

#include "platform/report/report_page.h"
#include "platform/report/slip.h"

class QTextDocument;
class QWidget;

namespace quilla {

/// Puts forms that print themselves on paper.
class FormPrinter {
public:
    virtual ~FormPrinter() = default;
    /// Prints the form as it stands. Throws `Error` when the printer does not accept it.
    virtual void printForm(QWidget& form, Paper paper) = 0;
    /// Prints the slip, or saves it as a PDF file where one is named. Throws `Error` when the printer or the
    /// folder does not take it.
    virtual void printSlip(const Slip& slip, const QString& pdfFile) = 0;
    /// The same for a text, on upright sheets.
    virtual void printText(const QTextDocument& text, const QString& pdfFile) = 0;
    /// Whether the operator has set the printer to upright paper.
    virtual bool isUpright() const = 0;
};

} // namespace quilla
