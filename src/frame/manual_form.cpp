#include "frame/manual_form.h"

#include "frame/session.h"
#include "platform/core/error.h"
#include "platform/report/form_printer.h"
#include "platform/ui/form/file_dialog.h"
#include "platform/ui/form/form.h"
#include "platform/ui/look/theme.h"

#include <QCoreApplication>
#include <QDir>
#include <QTextBlock>
#include <QTextTable>

namespace quilla {

namespace {

/// The build draws them; see `cmake/manual-pictures.sh`.
QString pictureFolder()
{
    return QCoreApplication::applicationDirPath() + u"/manual"_s;
}

/// A picture that was not drawn leaves no broken frame.
QString withoutMissingPictures(const QString& markdown)
{
    const QDir folder(pictureFolder());
    QString text;
    for (const QString& line : markdown.split(u'\n')) {
        const bool picture = line.startsWith(u"![");
        const QString file = line.section(u'(', -1).section(u')', 0, 0);
        if (!picture || folder.exists(file)) text += line + u'\n';
    }
    return text;
}

void rule(QTextTable& table)
{
    QTextTableFormat format = table.format();
    format.setBorder(1);
    format.setBorderCollapse(true);
    format.setBorderBrush(Theme::current().line);
    format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
    format.setCellPadding(4);
    format.setCellSpacing(0);
    format.setWidth(QTextLength(QTextLength::PercentageLength, 100));
    table.setFormat(format);
}

/// No picture is wider than the window's text or a sheet.
void fitPictures(QTextDocument& document)
{
    constexpr int Widest = 640;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            QTextImageFormat picture = part.fragment().charFormat().toImageFormat();
            if (!picture.isValid()) continue;
            const QImage image(QDir(pictureFolder()).filePath(picture.name()));
            picture.setWidth(std::min(Widest, image.width()));
            QTextCursor cursor(&document);
            cursor.setPosition(part.fragment().position());
            cursor.setPosition(
                part.fragment().position() + part.fragment().length(), QTextCursor::KeepAnchor);
            cursor.setCharFormat(picture);
            break; // the block is another one now
        }
}

/// As the manual shows it on screen and on paper.
void setSection(QTextDocument& document, const ManualSection& section)
{
    document.setMarkdown(u"# %1\n\n%2"_s.arg(section.title, withoutMissingPictures(section.text)));
    document.setMetaInformation(QTextDocument::DocumentTitle, section.title);
    for (QTextFrame* frame : document.rootFrame()->childFrames())
        if (auto* table = qobject_cast<QTextTable*>(frame)) rule(*table);
    fitPictures(document);
}

} // namespace

ManualFrm::ManualFrm(Session& session, FormPrinter& printer, QWidget* owner)
    : QDialog(owner)
    , cmdPrint(u"打印本节(&P)"_s)
    , cmdPdf(u"存为PDF(&S)"_s)
    , cmdClose(u"关闭(&X)"_s)
    , m_session(session)
    , m_printer(printer)
{
    QUILLA_NAMES(Contents, Text, cmdPrint, cmdPdf, cmdClose);
    setObjectName(u"ManualFrm"_s);
    setWindowTitle(u"使用手册"_s);
    setAttribute(Qt::WA_DeleteOnClose);
    setModal(false);
    Contents.setAccessibleName(u"目录"_s);
    Text.setAccessibleName(u"正文"_s);
    Text.setOpenLinks(false);
    Text.setSearchPaths({pictureFolder()});
    Contents.setFixedWidth(pixelsOf(3300, *this));
    build(*this, column(row(Contents, Piece(Text).grow()), row(stretch(), cmdPrint, cmdPdf, cmdClose)),
        AtEscape::Close);
    resize(pixelsOf(13500, *this), pixelsOf(9600, *this));
    fillContents();
    connect(&Contents, &QListWidget::currentRowChanged, this, &ManualFrm::showChosen);
    connect(&Text, &QTextBrowser::anchorClicked, this,
        [this](const QUrl& link) { showSection(link.fragment()); });
    onClick(cmdPrint, [this] { printShown({}); });
    onClick(cmdPdf, [this] { savePdf(); });
    onClick(cmdClose, [this] { close(); });
}

void ManualFrm::fillContents()
{
    for (const ManualSection& section : manual()) {
        auto* line = new QListWidgetItem(section.isChapter ? section.title : u"　"_s + section.title);
        QFont font = line->font();
        font.setBold(section.isChapter);
        line->setFont(font);
        Contents.addItem(line);
    }
}

void ManualFrm::showSection(const QString& name)
{
    Contents.setCurrentRow(int(findSection(name).value_or(0)));
}

void ManualFrm::showChosen()
{
    setSection(*Text.document(), manual()[std::size_t(Contents.currentRow())]);
    Text.moveCursor(QTextCursor::Start);
}

void ManualFrm::printShown(const QString& pdfFile)
{
    QTextDocument sheet;
    setSection(sheet, manual()[std::size_t(Contents.currentRow())]);
    sheet.setBaseUrl(QUrl::fromLocalFile(pictureFolder() + u'/'));
    sheet.setDefaultFont(Text.font());
    try {
        m_printer.printText(sheet, pdfFile);
    } catch (const Error& error) {
        m_session.prompt.warn(error.text, OperationTitle);
    }
}

void ManualFrm::savePdf()
{
    const QString title = Contents.currentItem()->text().trimmed();
    const QString file = FileDialog(this, u"另存为"_s, u"PDF 文件 (*.pdf)"_s).saveFile(title);
    if (!file.isEmpty()) printShown(file);
}

} // namespace quilla
