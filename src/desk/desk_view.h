#pragma once

#include "platform/db/recordset.h"

#include <array>

namespace quilla {

/// The ten values of the reader panel, in the order of its labels.
using ReaderPanel = std::array<QString, 10>;

/// The labels of the reader panel by what they show.
namespace PanelLabel {
enum { Code, Name, Sex, Class, Unit, Quota, OnLoan, Free, Status, Term };
}

/// What the desk's operations may do to the desk's screen.
class DeskView {
public:
    virtual ~DeskView() = default;

    virtual void refusing(const QString&) { } ///< a scan is refused; the box with this reason comes next
    virtual void asking() { } ///< the operator is going to be asked

    virtual void focusReaderCode() = 0;
    virtual void emptyReaderCode() = 0;
    virtual void setReaderCode(const QString& readercode) = 0;
    virtual void selectBarCode() = 0; ///< selects the text of the barcode box
    virtual void emptyAndFocusBarCode() = 0;
    virtual void showPage(int page) = 0;

    virtual void clearReaderPanel() = 0;
    virtual void fillReaderPanel(const ReaderPanel& values) = 0;
    virtual void showReaderStatus(const QString& status) = 0;

    virtual void untickRenewal() = 0; ///< no renewal follows this return

    virtual void setUpReturns() = 0;
    virtual void bindReturns(Recordset& returns) = 0;
    virtual void setUpLoans() = 0;
    virtual void bindLoans(Recordset& loans) = 0;
};

} // namespace quilla
