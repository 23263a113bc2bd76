#pragma once

#include "platform/report/font_book.h"
#include "platform/report/form_printer.h"

#include <functional>
#include <memory>

class QPrinter;
class QWidget;

namespace quilla {

/// A form laid out on paper: its labels and its grid where they stand on the screen, as wide as the page. The
/// grid shows all its lines; one too long for the page goes on under its captions on the next, and what
/// stands below it on the form follows after its last line.
class FormPages final : public PrintedPages {
public:
    /// The form need not have been shown; it is not needed afterwards.
    FormPages(QWidget& form, Paper paper, const FontBook& fonts);

    QString title() const override { return m_title; }
    Paper paper() const override { return m_paper; }
    int pageCount() const override { return int(m_pages.size()); }
    ReportPage page(int index) const override { return m_pages[std::size_t(index)]; }

private:
    QString m_title;
    Paper m_paper;
    std::vector<ReportPage> m_pages;
};

/// Prints on the chosen printer, else on the system's default one, without a question.
class DefaultPrinter final : public FormPrinter {
public:
    /// `printerName` returns the chosen printer, empty for none; `isUpright` how its paper was set.
    DefaultPrinter(std::function<QString()> printerName, std::function<bool()> isUpright);
    void printForm(QWidget& form, Paper paper) override;
    void printSlip(const Slip& slip, const QString& pdfFile) override;
    void printText(const QTextDocument& text, const QString& pdfFile) override;
    bool isUpright() const override { return m_isUpright(); }

private:
    void print(const PrintedPages& pages, const FontBook& fonts) const;
    void choose(QPrinter& printer) const;

    std::function<QString()> m_printerName;
    std::function<bool()> m_isUpright;
};

} // namespace quilla
