#pragma once

#include "desk/desk_view.h"
#include "support/field_texts.h"

namespace quilla {

/// A desk that writes down what an operation did to it.
class DeskDouble final : public DeskView {
public:
    void focusReaderCode() override { done.append(u"focus reader"_s); }
    void emptyReaderCode() override { done.append(u"empty reader"_s); }
    void setReaderCode(const QString& code) override { done.append(u"reader "_s + code); }
    void untickRenewal() override { done.append(u"untick"_s); }
    void selectBarCode() override { done.append(u"select barcode"_s); }
    void emptyAndFocusBarCode() override { done.append(u"empty barcode"_s); }
    void showPage(int page) override { done.append(u"page %1"_s.arg(page)); }
    void clearReaderPanel() override { panel = {}; }
    void fillReaderPanel(const ReaderPanel& values) override { panel = values; }
    void showReaderStatus(const QString& status) override { panel[PanelLabel::Status] = status; }
    void setUpLoans() override { loans.clear(); }
    void bindLoans(Recordset& rows) override { loans += fieldTexts(rows, u"barcode"); }
    void setUpReturns() override { returns.clear(); }
    void bindReturns(Recordset& rows) override { returns += fieldTexts(rows, u"barcode"); }

    QString takeDone() { return std::exchange(done, {}).join(u", "); }

    QStringList done;
    QStringList loans;
    QStringList returns;
    ReaderPanel panel;
};

} // namespace quilla
