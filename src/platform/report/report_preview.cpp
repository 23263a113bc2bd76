#include "platform/report/report_preview.h"

#include "platform/core/error.h"
#include "platform/report/sheet_output.h"
#include "platform/ui/form/file_dialog.h"
#include "platform/ui/form/form.h"
#include "platform/ui/form/on_screen.h"
#include "platform/ui/form/wait_cursor.h"
#include "platform/ui/look/theme.h"

#include <QPrintDialog>
#include <QPrinter>
#include <QScreen>
#include <QScrollBar>
#include <QShortcut>
#include <QWheelEvent>

namespace quilla {

namespace {

constexpr int PageWidth = -1;
constexpr int WholePage = -2;
constexpr int Border = 24; ///< pixels around the sheet
constexpr int ToolPadding = 24; ///< pixels beside the text of a control

const QString PdfFiles = u"PDF (*.pdf)"_s;
const QString SheetFiles = u"电子表格 (*.xlsx)"_s;

const std::array<int, 8> Percents {50, 75, 100, 125, 150, 200, 300, 400};

} // namespace

ReportPreview::ReportPreview(std::shared_ptr<const PrintedPages> pages, std::shared_ptr<const FontBook> fonts,
    Prompt& prompt, QString printerName, QWidget* owner)
    : QWidget(owner, Qt::Window)
    , cmdFirst(u"首页"_s)
    , cmdPrevious(u"上一页"_s)
    , cmdNext(u"下一页"_s)
    , cmdLast(u"末页"_s)
    , cmdSmaller(u"缩小"_s)
    , cmdLarger(u"放大"_s)
    , cmdPrint(u"打印(&P)"_s)
    , cmdSave(u"另存为(&S)"_s)
    , cmdClose(u"关闭(&X)"_s)
    , m_pages(std::move(pages))
    , m_fonts(std::move(fonts))
    , m_prompt(prompt)
    , m_printerName(std::move(printerName))
    , m_sheet(*new PageSheet(*m_pages, *m_fonts))
{
    setObjectName(u"ReportPreview"_s);
    setWindowTitle(u"打印预览 - "_s + m_pages->title());
    QUILLA_NAMES(cmdFirst, cmdPrevious, txtPage, labPages, cmdNext, cmdLast, cmdSmaller, cboZoom, cmdLarger,
        cmdPrint, cmdSave, cmdClose, Pages);
    layOut();
    wire();
    addKeys();
    goTo(0);
}

/// Of a control in the toolbar: all of them have to fit on a narrow screen.
int ReportPreview::widthOf(const QString& text) const
{
    return fontMetrics().horizontalAdvance(text) + ToolPadding;
}

void ReportPreview::setUpTools()
{
    txtPage.setRange(1, m_pages->pageCount());
    txtPage.setButtonSymbols(QAbstractSpinBox::NoButtons);
    txtPage.setAlignment(Qt::AlignCenter);
    txtPage.setMinimumWidth(widthOf(QString::number(m_pages->pageCount())));
    txtPage.setAccessibleName(u"页码"_s);
    labPages.setText(u"页，共 %1 页"_s.arg(m_pages->pageCount()));
    cboZoom.addItem(u"页宽"_s, PageWidth);
    cboZoom.addItem(u"整页"_s, WholePage);
    for (const int percent : Percents)
        cboZoom.addItem(u"%1%"_s.arg(percent), percent);
    cboZoom.setAccessibleName(u"缩放"_s);
    for (QPushButton* button : {&cmdFirst, &cmdPrevious, &cmdNext, &cmdLast, &cmdSmaller, &cmdLarger,
             &cmdPrint, &cmdSave, &cmdClose})
        button->setFixedWidth(widthOf(button->text().remove(u'&')));
}

void ReportPreview::layOut()
{
    setUpTools();
    Pages.setAlignment(Qt::AlignCenter);
    Pages.setBackgroundRole(QPalette::Mid);
    Pages.setAccessibleName(u"报表"_s);
    Pages.setWidget(&m_sheet);
    Pages.viewport()->installEventFilter(this);
    build(*this,
        column(row(cmdFirst, cmdPrevious, room(8), u"第"_s, txtPage, labPages, room(8), cmdNext, cmdLast,
                   stretch(), cmdSmaller, cboZoom, cmdLarger, stretch(), cmdPrint, cmdSave, cmdClose),
            Piece(Pages).grow()));
    const QSize title(0, style()->pixelMetric(QStyle::PM_TitleBarHeight));
    resize(
        QSize(pixelsOf(14400, *this), pixelsOf(11400, *this)).boundedTo(screen()->availableSize() - title));
}

void ReportPreview::wire()
{
    onClick(cmdFirst, [this] { goTo(0); });
    onClick(cmdPrevious, [this] { turn(-1); });
    onClick(cmdNext, [this] { turn(1); });
    onClick(cmdLast, [this] { goTo(m_pages->pageCount() - 1); });
    connect(&txtPage, &QSpinBox::valueChanged, this, [this](int page) { goTo(page - 1); });
    onClick(cmdSmaller, [this] { zoomBy(-1); });
    onClick(cmdLarger, [this] { zoomBy(1); });
    connect(&cboZoom, &QComboBox::currentIndexChanged, this, [this] { applyZoom(); });
    onClick(cmdPrint, [this] { print(); });
    onClick(cmdSave, [this] { chooseFile(); });
    onClick(cmdClose, [this] { close(); });
}

void ReportPreview::addKeys()
{
    const auto key = [this](const QKeySequence& keys, std::function<void()> step) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, std::move(step));
    };
    key(Qt::Key_PageDown, [this] { scrollOrTurn(1); });
    key(Qt::Key_PageUp, [this] { scrollOrTurn(-1); });
    key(Qt::Key_Home, [this] { goTo(0); });
    key(Qt::Key_End, [this] { goTo(m_pages->pageCount() - 1); });
    key(QKeySequence::ZoomIn, [this] { zoomBy(1); });
    key(Qt::CTRL | Qt::Key_Equal, [this] { zoomBy(1); });
    key(QKeySequence::ZoomOut, [this] { zoomBy(-1); });
    key(QKeySequence::Print, [this] { print(); });
    key(QKeySequence::Save, [this] { chooseFile(); });
    key(Qt::Key_Escape, [this] { close(); });
}

void ReportPreview::goTo(int page)
{
    page = std::clamp(page, 0, m_pages->pageCount() - 1);
    if (page != m_sheet.page()) m_sheet.setPage(page);
    Pages.verticalScrollBar()->setValue(0);
    const QSignalBlocker quiet(txtPage);
    txtPage.setValue(page + 1);
    const bool isLast = page + 1 == m_pages->pageCount();
    cmdFirst.setEnabled(page > 0);
    cmdPrevious.setEnabled(page > 0);
    cmdNext.setEnabled(!isLast);
    cmdLast.setEnabled(!isLast);
}

void ReportPreview::turn(int pages)
{
    goTo(page() + pages);
}

/// A screenful further; at the end of the page to the next one.
void ReportPreview::scrollOrTurn(int direction)
{
    QScrollBar& bar = *Pages.verticalScrollBar();
    const int end = direction > 0 ? bar.maximum() : bar.minimum();
    if (bar.value() != end) return bar.setValue(bar.value() + direction * bar.pageStep());
    const int before = page();
    turn(direction);
    if (direction < 0 && page() != before) bar.setValue(bar.maximum());
}

double ReportPreview::wantedScale() const
{
    const QSizeF paper = paperSize(m_pages->paper());
    const QSizeF room = Pages.maximumViewportSize() - QSize(Border, Border);
    const int zoom = cboZoom.currentData().toInt();
    const double bar = Pages.verticalScrollBar()->sizeHint().width();
    if (zoom == PageWidth) return std::max(0.01, (room.width() - bar) / paper.width());
    if (zoom == WholePage)
        return std::max(0.01, std::min(room.width() / paper.width(), room.height() / paper.height()));
    return zoom / 100.0 * logicalDpiX() / TwipsPerInch;
}

void ReportPreview::applyZoom()
{
    m_sheet.setScale(wantedScale());
}

/// To the next of the fixed sizes.
void ReportPreview::zoomBy(int steps)
{
    const double percent = m_sheet.scale() * TwipsPerInch / logicalDpiX() * 100;
    const auto larger = std::find_if(
        Percents.begin(), Percents.end(), [&](int candidate) { return candidate > percent + 0.5; });
    const auto smaller = std::find_if(
        Percents.rbegin(), Percents.rend(), [&](int candidate) { return candidate < percent - 0.5; });
    const int wanted = steps > 0 ? (larger == Percents.end() ? Percents.back() : *larger)
                                 : (smaller == Percents.rend() ? Percents.front() : *smaller);
    cboZoom.setCurrentIndex(cboZoom.findData(wanted));
}

bool ReportPreview::wheel(const QWheelEvent& event)
{
    const int delta = event.angleDelta().y();
    if (delta == 0) return false;
    if (event.modifiers() & Qt::ControlModifier) {
        zoomBy(delta > 0 ? 1 : -1);
        return true;
    }
    const QScrollBar& bar = *Pages.verticalScrollBar();
    if (bar.value() != (delta < 0 ? bar.maximum() : bar.minimum())) return false;
    scrollOrTurn(delta < 0 ? 1 : -1);
    return true;
}

bool ReportPreview::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Wheel && wheel(*static_cast<QWheelEvent*>(event))) return true;
    return QWidget::eventFilter(watched, event);
}

void ReportPreview::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    if (layout()) layout()->activate();
    if (cboZoom.currentData().toInt() < 0) applyZoom();
}

void ReportPreview::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    // after the window manager has put its frame around
    QMetaObject::invokeMethod(
        this, [this] { keepOnScreen(*this); }, Qt::QueuedConnection);
    applyZoom();
    Pages.setFocus();
}

void ReportPreview::print()
{
    QPrinter printer(QPrinter::HighResolution);
    if (!m_printerName.isEmpty()) printer.setPrinterName(m_printerName);
    setUpPrinter(printer, *m_pages);
    QPrintDialog dialog(&printer, this);
    dialog.setWindowTitle(u"打印"_s);
    dialog.setMinMax(1, m_pages->pageCount());
    if (dialog.exec() != QDialog::Accepted) return;
    try {
        const WaitCursor wait;
        printPages(*m_pages, *m_fonts, printer);
    } catch (const Error& error) {
        m_prompt.warn(error.text, OperationTitle);
    }
}

void ReportPreview::chooseFile()
{
    const QStringList kinds = m_pages->table() ? QStringList {PdfFiles, SheetFiles} : QStringList {PdfFiles};
    const QString file = FileDialog(this, u"另存为"_s, kinds.join(u";;"_s)).saveFile(m_pages->title());
    if (!file.isEmpty()) save(file);
}

bool ReportPreview::save(const QString& file)
{
    try {
        const WaitCursor wait;
        const auto table = m_pages->table();
        if (table && file.endsWith(u".xlsx", Qt::CaseInsensitive))
            saveSheet(*table, file);
        else
            savePdf(*m_pages, *m_fonts, file);
        return true;
    } catch (const Error& error) {
        m_prompt.warn(error.text, OperationTitle);
        return false;
    }
}

} // namespace quilla
