#include "app/gallery_command.h"

#include "app/desk_application.h"
#include "app/gallery_ops.h"
#include "app/gallery_samples_ops.h"
#include "desk/desk_form.h"
#include "desk/reader_picker_form.h"
#include "exceptions/fine_form.h"
#include "frame/about_form.h"
#include "frame/login_form.h"
#include "frame/main_form.h"
#include "frame/password_form.h"
#include "frame/sublib.h"
#include "output/export_desk.h"
#include "platform/report/report_preview.h"
#include "platform/ui/dialog_prompt.h"
#include "platform/ui/error_form.h"
#include "platform/ui/gallery.h"
#include "platform/ui/icons.h"
#include "platform/ui/working_form.h"
#include "readers/batch_unit_form.h"
#include "readers/holiday_editor.h"
#include "readers/holiday_form.h"
#include "readers/parameter_editor.h"
#include "readers/parameter_form.h"
#include "readers/reader_card_form.h"
#include "readers/reader_list_form.h"
#include "readers/reader_name_editor.h"
#include "readers/reader_register_form.h"
#include "statistics/query_form.h"

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTimer>

namespace quilla {

namespace {

class Album {
public:
    explicit Album(const QString& folder)
        : m_folder(folder)
    {
    }

    void add(const QString& name, QWidget& window)
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

void pressEnter(QWidget& box)
{
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, u"\r"_s);
    QCoreApplication::sendEvent(&box, &press);
}

void addPages(Album& album, const QString& name, QWidget& form, QTabWidget& book)
{
    for (int page = 0; page < book.count(); ++page) {
        book.setCurrentIndex(page);
        album.add(u"%1-%2"_s.arg(name, QString::number(page)), form);
    }
}

void addFines(Album& album, Session& session)
{
    FKmangerFrm form(session, u"A"_s);
    form.Text1[FineBox::Barcode].setText(overdueCopyForPictures(session));
    form.Text1_LostFocus(FineBox::Barcode);
    form.Check1[int(FineKind::Defile)].setChecked(true);
    addPages(album, u"FKmangerFrm"_s, form, form.SSTab1);
}

void addPickers(Album& album, Session& session)
{
    ReaderPickerFrm noCard(session, noCardPicker());
    album.add(noCard.objectName(), noCard);
    ReaderPickerFrm everyReader(session, everyReaderPicker());
    everyReader.Text1.setText(u"无此人"_s);
    everyReader.Command1.click();
    album.add(everyReader.objectName(), everyReader);
}

void addRules(Album& album, Session& session, ReportViewer& reports)
{
    holidayfrm holidays(session);
    album.add(holidays.objectName(), holidays);
    holidayaddFrm holiday(session);
    album.add(holiday.objectName() + u"-A"_s, holiday);
    holiday.edit(holidayOfLine(holidays.Grid1.current(0), holidays.Grid1.current(1)));
    album.add(holiday.objectName() + u"-E"_s, holiday);
    JycsFrm rules(session, reports);
    album.add(rules.objectName(), rules);
    JycsAddFrm rule(session);
    album.add(rule.objectName() + u"-A"_s, rule);
    rule.edit(rules.Grid1.current(0), true, false);
    album.add(rule.objectName() + u"-E"_s, rule);
    for (const ReaderListKind kind : {ReaderTypes, ReaderUnits}) {
        MadddzlxFrm lists(session, kind);
        album.add(u"%1-%2"_s.arg(lists.objectName(), QString::number(kind)), lists);
        ReaderNameFrm editor(session, readerList(kind));
        album.add(editor.objectName(), editor);
    }
}

/// Each mode without and with the parameters.
void addCards(Album& album, Session& session, const QString& photo)
{
    for (const QString& mode : {u"A"_s, u"E"_s}) {
        DzaddFrm form(session, {});
        form.setPhotoChooser([&](QWidget*, const QString&) { return photo; });
        form.SetEditMode(mode);
        form.LoadReader(mode == u"E" ? readerForPictures(session) : QString());
        if (mode == u"E") Q_EMIT form.ManPic.doubleClicked();
        album.add(form.objectName() + u'-' + mode, form);
        form.cmdXianShi.click();
        album.add(form.objectName() + u'-' + mode + u"-parameters"_s, form);
    }
}

/// Before the first search, and after one that was sorted by a caption.
void addReaderRegister(Album& album, Session& session, ReportViewer& reports)
{
    DesktopSpreadsheets spreadsheets;
    DzglFrm list(session, reports, spreadsheets);
    album.add(list.objectName() + u"-0"_s, list);
    list.loadData({}, {});
    list.Grid1.setRow(1);
    list.Grid1.sortBy({ReaderOnLoan, Qt::DescendingOrder});
    album.add(list.objectName() + u"-1"_s, list);
    updateAll unit;
    unit.Text1.setText(u"计算机系"_s);
    album.add(unit.objectName(), unit);
}

/// Half filled in, as an operator leaves it in the middle of his work.
void addQuery(Album& album, Session& session)
{
    class Nobody final : public QueryReceiver {
        void loadData(const QString&, const QString&) override { }
    } nobody;
    QueryFrm form(session.prompt, nobody);
    form.LoadCombo(u"barcode,bookname,readunit,readercode,name,orderdate,yhdate,cqday"_s,
        u"条形码,书名,读者单位,读者证号,读者姓名,借书日期,应还日期,超期天数"_s,
        u"字符,字符,字符,字符,字符,日期,日期,数字"_s);
    form.lSql.setText(u"B1"_s);
    form.Command3.click();
    form.Command1[0].click();
    form.cOrderby.setCurrentIndex(3);
    form.Label3[0].click();
    form.LFields.setCurrentRow(6);
    form.cFuhao.setCurrentIndex(3);
    form.lSql.setText(u"2004-05"_s);
    form.Command3.click();
    form.lSql.setText(u"2004"_s);
    album.add(form.objectName(), form);
}

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
    Album album(folder);
    Session& session = desk.session();
    readConnectionText(session);
    session.OperatorName = u"演示"_s;

    frmODBC settings(session);
    album.add(u"frmODBC"_s, settings);
    LtLoginFrm login(session);
    album.add(u"LtLoginFrm"_s, login);
    EditPassFrm password(session);
    album.add(u"EditPassFrm"_s, password);
    AboutFrm about;
    album.add(u"AboutFrm"_s, about);
    errMessageFrm failure;
    failure.textErrMessage.setPlainText(failureText({}, u"数据库正被另一个程序占用。"_s));
    album.add(u"errMessageFrm"_s, failure);
    WorkingFrm working;
    album.add(u"WorkingFrm"_s, working);
    addMessages(album);

    LtMainFrm window(session, desk.screens());
    window.openUp();
    window.openScreen(u"TsjhFrm"_s);
    auto* form = window.findChild<TsjhFrm*>();
    form->TxtReaderCode.setText(readerForPictures(session));
    pressEnter(form->TxtReaderCode);
    album.add(u"LtMainFrm"_s, window);
    album.add(u"TsjhFrm-0"_s, *form);
    form->SSTab1.setCurrentIndex(1);
    album.add(u"TsjhFrm-1"_s, *form);
    form->SSTab1.setCurrentIndex(2);
    form->Query.Check2[0].click();
    form->Query.Text2[0].setText(u"王"_s);
    form->Query.CmdFind.click();
    album.add(u"TsjhFrm-2"_s, *form);

    addFines(album, session);
    addPickers(album, session);
    addRules(album, session, desk.reports());
    addReaderRegister(album, session, desk.reports());
    addQuery(album, session);
    const QTemporaryDir photos;
    applicationIcon().pixmap(200, 200).save(photos.filePath(u"photo.png"_s));
    addCards(album, session, photos.filePath(u"photo.png"_s));
    addReports(album, desk, folder);

    for (const QString& file : album.failed())
        QTextStream(stderr) << u"无法写入："_s << file << Qt::endl;
    return album.failed().isEmpty() ? 0 : 1;
}

} // namespace quilla
