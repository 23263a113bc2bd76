#pragma once

#include "platform/core/prompt.h"
#include "platform/report/page_output.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QSpinBox>

namespace quilla {

/// A page as it will be printed, at any size.
class PageSheet final : public QWidget {
public:
    PageSheet(const PrintedPages& pages, const FontBook& fonts);

    int page() const { return m_page; }
    void setPage(int page);
    /// Pixels to a twip.
    void setScale(double scale);
    double scale() const { return m_scale; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QPixmap drawn(double ratio) const;

    const PrintedPages& m_pages;
    const FontBook& m_fonts;
    int m_page = 0;
    double m_scale = 1 / 15.0;
    QPixmap m_picture; ///< of the page; none when it is to be painted anew
};

/// Shows a report page by page; from here it is printed or saved, as PDF or as a spreadsheet. A window of its
/// own.
class ReportPreview final : public QWidget {
    Q_OBJECT

public:
    /// `printerName` is the printer that the dialog offers first, empty for the system's default.
    ReportPreview(std::shared_ptr<const PrintedPages> pages, std::shared_ptr<const FontBook> fonts,
        Prompt& prompt, QString printerName, QWidget* owner = nullptr);

    const PrintedPages& pages() const { return *m_pages; }
    /// From 0.
    int page() const { return m_sheet.page(); }
    void goTo(int page);
    /// Writes the pages to a PDF file, or the rows of a report to a spreadsheet, by the ending of the name. A
    /// failure is reported.
    bool save(const QString& file);

    QPushButton cmdFirst;
    QPushButton cmdPrevious;
    QSpinBox txtPage;
    QLabel labPages;
    QPushButton cmdNext;
    QPushButton cmdLast;
    QPushButton cmdSmaller;
    QComboBox cboZoom;
    QPushButton cmdLarger;
    QPushButton cmdPrint;
    QPushButton cmdSave;
    QPushButton cmdClose;
    QScrollArea Pages;

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void setUpTools();
    void layOut();
    int widthOf(const QString& text) const;
    void wire();
    void addKeys();
    void turn(int pages);
    void scrollOrTurn(int direction);
    void zoomBy(int steps);
    void applyZoom();
    double wantedScale() const;
    bool wheel(const QWheelEvent& event);
    void print();
    void chooseFile();

    std::shared_ptr<const PrintedPages> m_pages;
    std::shared_ptr<const FontBook> m_fonts;
    Prompt& m_prompt;
    QString m_printerName;
    PageSheet& m_sheet;
};

} // namespace quilla
