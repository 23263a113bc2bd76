#include "platform/report/page_output.h"

#include "platform/core/error.h"
#include "platform/core/private_files.h"

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QSaveFile>
#include <QTextDocument>

namespace quilla {

namespace {

QColor colourOf(Ink ink)
{
    switch (ink) {
    case Ink::Text:
        return QColor(0x10, 0x10, 0x10);
    case Ink::Muted:
        return QColor(0x60, 0x60, 0x60);
    case Ink::Rule:
        return QColor(0x40, 0x40, 0x40);
    case Ink::Hairline:
        return QColor(0xb4, 0xb4, 0xb4);
    case Ink::Band:
        return QColor(0xec, 0xef, 0xf0);
    case Ink::Bar:
        return QColor(0x4f, 0x93, 0x9e);
    }
    return {};
}

/// On a screen a rule is a whole number of pixels, at least one.
QPen penOf(const PlacedRule& rule, double scale)
{
    const double width = (rule.ink == Ink::Rule ? 0.9 : 0.4) * TwipsPerPoint;
    const bool onScreen = scale < 0.5;
    QPen pen(colourOf(rule.ink), onScreen ? std::max(1.0, std::floor(width * scale)) : width);
    pen.setCosmetic(onScreen);
    return pen;
}

void paintLine(QPainter& painter, const QPointF& base, const PlacedText& text, const FontBook& fonts)
{
    if (const auto glyphs = fonts.glyphs(text.text, text.font)) return painter.drawGlyphRun(base, *glyphs);
    painter.setFont(fonts.font(text.font));
    painter.drawText(base, text.text);
}

void paintText(QPainter& painter, const PlacedText& text, const FontBook& fonts)
{
    const QPointF base(text.place.x(), text.place.y() + fonts.drop(text.font));
    if (text.squeeze == 1) return paintLine(painter, base, text, fonts);
    painter.save();
    painter.translate(base);
    painter.scale(text.squeeze, 1);
    paintLine(painter, QPointF(), text, fonts);
    painter.restore();
}

QPageLayout pageLayout(const PrintedPages& pages)
{
    if (pages.size() == paperSize(pages.paper()))
        return QPageLayout(QPageSize(QPageSize::A4),
            pages.paper() == Paper::Upright ? QPageLayout::Portrait : QPageLayout::Landscape, QMarginsF());
    const QPageSize own(pages.size() / TwipsPerPoint, QPageSize::Point, {}, QPageSize::ExactMatch);
    return QPageLayout(own, QPageLayout::Portrait, QMarginsF());
}

/// The last code of a line "<from> <to> <first character>", or all after "[" of "<from> <to> [<one> <one>
/// ]".
void nameRange(QByteArray& pdf, qsizetype at, qsizetype end, const QHash<char16_t, char16_t>& characters)
{
    constexpr qsizetype codeLength = 6; // "<2F47>"
    int place = 0; // in the line
    bool several = false;
    QByteArrayView from;
    for (; at < end; ++at) {
        const char c = pdf[at];
        if (c == '\n') place = 0;
        if (c == '\n') several = false;
        if (c == '[') several = true;
        if (c != '<') continue;
        const QByteArrayView code = QByteArrayView(pdf).sliced(at, codeLength);
        if (++place == 1) from = code;
        if (place == 2 && from != code) from = {};
        if (place < 3 || (!several && from.isEmpty())) continue;
        const auto found = characters.constFind(char16_t(pdf.sliced(at + 1, 4).toUShort(nullptr, 16)));
        if (found != characters.cend())
            pdf.replace(at + 1, 4, QByteArray::number(*found, 16).rightJustified(4, '0').toUpper());
    }
}

/// Qt names a glyph of a PDF by the first character that has it: "⽇" for "日", a tab for a blank, so that
/// nobody finds "日期" in the file. Puts the usual ones into the tables from glyphs to characters.
void nameCharacters(QByteArray& pdf, QHash<char16_t, char16_t> characters)
{
    characters.insert(u'\t', u' ');
    characters.insert(u'\u00a0', u' ');
    for (qsizetype at = 0; (at = pdf.indexOf("beginbfrange", at)) >= 0;) {
        const qsizetype end = pdf.indexOf("endbfrange", at);
        if (end < 0) return;
        nameRange(pdf, at, end, characters);
        at = end;
    }
}

/// A printer that writes a file does not watch over it: on a full disk its end is missing.
bool isWholePdf(const QString& name)
{
    constexpr qint64 tail = 16;
    QFile file(name);
    return file.open(QIODevice::ReadOnly) && file.seek(std::max(qint64(0), file.size() - tail))
        && file.read(tail).contains("%%EOF");
}

[[noreturn]] void failPrinting(const QString& why)
{
    throw Error(ErrorNumber::CannotOpen, u"Report"_s, why);
}

/// A file that stood under the name is replaced only by a whole one.
void writeWhole(const QByteArray& content, const QString& file)
{
    QSaveFile target(file);
    if (!target.open(QIODevice::WriteOnly) || !target.setPermissions(OwnerOnly) || target.write(content) < 0
        || !target.commit())
        failPrinting(u"无法写入文件 %1：%2"_s.arg(file, target.errorString()));
}

/// A text leaves the margins by itself.
const QPageLayout UprightSheet(QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF());

} // namespace

/// From the back to the front.
void paintPage(QPainter& painter, const ReportPage& page, const FontBook& fonts)
{
    for (const Ink ink : {Ink::Band, Ink::Hairline, Ink::Bar, Ink::Rule}) {
        for (const PlacedBand& band : page.bands)
            if (band.ink == ink) painter.fillRect(band.area, colourOf(ink));
        for (const PlacedRule& rule : page.rules) {
            if (rule.ink != ink) continue;
            painter.setPen(penOf(rule, painter.worldTransform().m11()));
            painter.drawLine(rule.line);
        }
    }
    painter.setPen(colourOf(Ink::Text));
    for (const PlacedText& text : page.texts)
        paintText(painter, text, fonts);
}

void savePagePng(const PrintedPages& pages, const FontBook& fonts, int page, const QString& file)
{
    constexpr double scale = 1.5 * 96 / TwipsPerInch;
    QImage picture((pages.size() * scale).toSize(), QImage::Format_RGB32);
    picture.fill(Qt::white);
    {
        QPainter painter(&picture);
        painter.scale(scale, scale);
        paintPage(painter, pages.page(page), fonts);
    }
    if (!picture.save(file, "PNG")) failPrinting(u"无法写入文件 %1"_s.arg(file));
}

void savePdf(const PrintedPages& pages, const FontBook& fonts, const QString& file)
{
    QBuffer pdf;
    pdf.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&pdf);
        writer.setTitle(pages.title());
        writer.setCreator(u"quilla"_s);
        writer.setResolution(int(TwipsPerInch));
        writer.setPageLayout(pageLayout(pages));
        QPainter painter(&writer);
        for (int page = 0; page < pages.pageCount(); ++page) {
            if (page > 0) writer.newPage();
            paintPage(painter, pages.page(page), fonts);
        }
    }
    nameCharacters(pdf.buffer(), fonts.charactersOfRadicals());
    writeWhole(pdf.data(), file);
}

void saveTextPdf(const QTextDocument& text, const FontBook& fonts, const QString& file)
{
    QBuffer pdf;
    pdf.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&pdf);
        writer.setTitle(text.metaInformation(QTextDocument::DocumentTitle));
        writer.setCreator(u"quilla"_s);
        writer.setPageLayout(UprightSheet);
        text.print(&writer);
    }
    nameCharacters(pdf.buffer(), fonts.charactersOfRadicals());
    writeWhole(pdf.data(), file);
}

void printText(const QTextDocument& text, QPrinter& printer)
{
    printer.setPageLayout(UprightSheet);
    printer.setDocName(text.metaInformation(QTextDocument::DocumentTitle));
    if (!printer.isValid()) failPrinting(u"打印机没有响应，请检查打印机设置。"_s);
    text.print(&printer);
}

void setUpPrinter(QPrinter& printer, const PrintedPages& pages)
{
    printer.setFullPage(true);
    printer.setPageLayout(pageLayout(pages));
    printer.setDocName(pages.title());
}

void printPages(const PrintedPages& pages, const FontBook& fonts, QPrinter& printer)
{
    const int copies = printer.supportsMultipleCopies() ? 1 : printer.copyCount();
    const int last = printer.toPage() > 0 ? std::min(printer.toPage(), pages.pageCount()) : pages.pageCount();
    const int first = std::max(printer.fromPage(), 1);
    QPainter painter;
    if (!painter.begin(&printer)) failPrinting(u"打印机没有响应，请检查打印机设置。"_s);
    const double scale = printer.resolution() / TwipsPerInch;
    painter.scale(scale, scale);
    for (int sheet = 0; sheet < copies * (last - first + 1); ++sheet) {
        if (sheet > 0 && !printer.newPage()) failPrinting(u"打印中断，请检查打印机。"_s);
        paintPage(painter, pages.page(first - 1 + sheet % (last - first + 1)), fonts);
    }
    painter.end();
    if (printer.outputFormat() == QPrinter::PdfFormat && !isWholePdf(printer.outputFileName()))
        failPrinting(u"无法写入文件 %1"_s.arg(printer.outputFileName()));
}

} // namespace quilla
