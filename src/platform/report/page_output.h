#pragma once

#include "platform/report/font_book.h"
#include "platform/report/report_page.h"

class QPainter;
class QPrinter;
class QTextDocument;

namespace quilla {

/// Paints a page; a unit of the painter is a twip.
void paintPage(QPainter& painter, const ReportPage& page, const FontBook& fonts);

/// Writes a page to a picture, half as large again as on a screen at 100 %.
void savePagePng(const PrintedPages& pages, const FontBook& fonts, int page, const QString& file);

/// Writes all pages to a PDF file, the fonts in it. Throws `Error` when it can't be written; no half file
/// stays then.
void savePdf(const PrintedPages& pages, const FontBook& fonts, const QString& file);

/// The same for a text, on upright sheets; its title is the document's.
void saveTextPdf(const QTextDocument& text, const FontBook& fonts, const QString& file);
/// Prints a text on upright sheets. Throws `Error`.
void printText(const QTextDocument& text, QPrinter& printer);

/// Sets the paper of a printer to that of the pages.
void setUpPrinter(QPrinter& printer, const PrintedPages& pages);
/// Prints the range of pages that is set in the printer, all of them by default. Throws `Error`.
void printPages(const PrintedPages& pages, const FontBook& fonts, QPrinter& printer);

} // namespace quilla
