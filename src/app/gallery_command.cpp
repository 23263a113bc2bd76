#include "app/gallery_command.h"

#include "app/desk_application.h"
#include "app/gallery_ops.h"
#include "app/gallery_samples_ops.h"
#include "app/gallery_scans_ops.h"
#include "app/pictures/pictures.h"
#include "app/screen_register.h"
#include "frame/main_form.h"
#include "frame/sublib.h"
#include "platform/report/report_preview.h"
#include "platform/report/slip_pages.h"
#include "platform/ui/form/dialog_prompt.h"
#include "platform/ui/look/gallery.h"
#include "platform/ui/look/theme.h"

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QTextStream>
#include <QTimer>

namespace quilla {

namespace {

class PictureAlbum final : public Album {
public:
    explicit PictureAlbum(const QString& folder)
        : m_folder(folder)
    {
    }

    void add(const QString& name, QWidget& window) override
    {
        if (!window.testAttribute(Qt::WA_Resized)) window.adjustSize();
        for (const double scale : {1.0, 1.5, 2.0}) {
            const QString file
                = m_folder.filePath(u"%1@%2.png"_s.arg(name, QString::number(int(scale * 100))));
            if (!renderPng(window, file, scale)) m_failed.append(file);
        }
    }

    const QStringList& failed() const { return m_failed; }

private:
    QDir m_folder;
    QStringList m_failed;
};

/// Puts the pages of forms that print themselves beside the pictures.
class PagePictures final : public FormPrinter {
public:
    PagePictures(const FontBook& fonts, const QString& folder)
        : m_fonts(fonts)
        , m_folder(folder)
    {
    }

    void printForm(QWidget& form, Paper paper) override
    {
        const FormPages pages(form, paper, m_fonts);
        for (int page = 0; page < pages.pageCount(); ++page)
            savePagePng(
                pages, m_fonts, page, m_folder.filePath(u"%1-%2.png"_s.arg(form.objectName()).arg(page + 1)));
    }
    void printSlip(const Slip& slip, const QString&) override
    {
        const SlipPages pages(slip, m_fonts);
        savePagePng(pages, m_fonts, 0, m_folder.filePath(u"slip-%1.png"_s.arg(int(slip.paper))));
    }
    void printText(const QTextDocument&, const QString&) override { }
    bool isUpright() const override { return true; }

private:
    const FontBook& m_fonts;
    QDir m_folder;
};

/// The boxes as `DialogPrompt` shows them, each closed once it is drawn.
void addMessages(Album& album)
{
    for (const Icon icon : {Icon::Information, Icon::Warning, Icon::Critical, Icon::Question}) {
        QTimer::singleShot(0, qApp, [&album, icon] {
            QWidget* box = QApplication::activeModalWidget();
            album.add(u"message-%1"_s.arg(QString::number(int(icon))), *box);
            box->close();
        });
        DialogPrompt().ask(u"你确定要删除读者:R2004001 吗？(Y/N)"_s, OperationTitle, icon, Answer::No);
    }
}

/// A reader before the operator, the latest copy charged, the session list filled.
void workAtDesk(Session& session, const LtMainFrm& window)
{
    auto* card = window.findChild<QLineEdit*>(u"TxtReaderCode"_s);
    card->setText(readerForPictures(session));
    Pictures::pressEnter(*card);
    for (const ScanEntry& scan : scanSamples(session, card->text()))
        session.scans->add(scan);
    auto* result = window.findChild<QLabel*>(u"tMsg"_s);
    result->setText(u"借书成功"_s);
    setTone(*result, Tone::Ok);
    window.findChild<QLineEdit*>(u"TxtBarCode"_s)->setFocus();
}

/// With the desk open in it, on a whole screen of the usual sizes, and of what is left of them when the
/// desktop enlarges everything.
void addMainWindow(Album& album, Session& session, LtMainFrm& window)
{
    window.show();
    QCoreApplication::processEvents(); // the size of the screen comes with it
    window.openScreen(u"TsjhFrm"_s)->parentWidget()->showMaximized();
    workAtDesk(session, window);
    for (const QSize size :
        {QSize(1366, 768), QSize(1920, 1080), QSize(1093, 614), QSize(960, 540), QSize(683, 384)}) {
        window.resize(size);
        QCoreApplication::processEvents();
        album.add(u"%1-%2x%3"_s.arg(window.objectName()).arg(size.width()).arg(size.height()), window);
    }
}

/// Every report page by page, and one in its window.
void addReports(Album& album, DeskApplication& desk, const QString& folder)
{
    for (ReportSample& sample : reportSamples(desk.session())) {
        const auto pages = desk.reports().layOut(sample.design, sample.rows, sample.texts);
        for (int page = 0; page < std::min(pages->pageCount(), 3); ++page)
            savePagePng(*pages, *desk.reports().fonts(), page,
                QDir(folder).filePath(u"%1-%2.png"_s.arg(sample.design.name).arg(page + 1)));
        if (sample.design.name != u"JHSKReport") continue;
        ReportPreview preview(pages, desk.reports().fonts(), desk.session().prompt, {});
        preview.setAttribute(Qt::WA_DontShowOnScreen);
        preview.show();
        album.add(preview.objectName(), preview);
    }
}

} // namespace

int renderGallery(DeskApplication& desk, const QString& folder)
{
    QDir().mkpath(folder);
    PictureAlbum album(folder);
    Session& session = desk.session();
    readConnectionText(session);
    session.OperatorName = u"演示"_s;

    LtMainFrm window(desk.outputs(), session, allScreens(), allActions());
    window.openUp();
    PagePictures printer(*desk.reports().fonts(), folder);
    const Workplace place {{desk.outputs().reports, desk.outputs().spreadsheets, printer}, session, window};
    for (const Screen& screen : allScreens())
        screen.pictures(album, place);
    addMessages(album);
    addMainWindow(album, session, window);
    addReports(album, desk, folder);

    for (const QString& file : album.failed())
        QTextStream(stderr) << u"无法写入："_s << file << Qt::endl;
    return album.failed().isEmpty() ? 0 : 1;
}

} // namespace quilla
