#include "app/screens.h"

#include "desk/desk_form.h"
#include "desk/reader_picker_form.h"
#include "exceptions/desk_fine_dialog.h"
#include "exceptions/fine_form.h"
#include "frame/about_form.h"
#include "frame/password_form.h"
#include "output/export_desk.h"
#include "readers/holiday_form.h"
#include "readers/parameter_form.h"
#include "readers/reader_list_form.h"
#include "readers/reader_register_form.h"

#include <QBoxLayout>
#include <QDialog>

namespace quilla {

namespace {

/// The desk with the fine screen behind its discharge.
ScreenMaker desk(ReportViewer& reports)
{
    return [&reports](Session& session, ScreenHost& host, const QString&, QWidget*) {
        auto* fines = new DeskFineDialog(session);
        auto* desk = new TsjhFrm(session, host, *fines, reports);
        fines->setParent(desk);
        return desk;
    };
}

ScreenMaker readerPicker(ReaderPicker (*picker)())
{
    return [picker](Session& session, ScreenHost&, const QString&, QWidget* owner) {
        return new ReaderPickerFrm(session, picker(), owner);
    };
}

/// A dialog around a screen that else stands in the client area; closing either closes both.
QDialog* modalFrame(QWidget* screen, QWidget* owner)
{
    auto* dialog = new QDialog(owner);
    dialog->setWindowTitle(screen->windowTitle());
    auto* layout = new QVBoxLayout(dialog);
    layout->setContentsMargins({});
    layout->addWidget(screen);
    dialog->resize(screen->size());
    return dialog;
}

/// The types open as a dialog, the units beside the other screens.
QWidget* makeReaderLists(Session& session, ScreenHost&, const QString& mode, QWidget* owner)
{
    const int list = mode.toInt();
    auto* screen = new MadddzlxFrm(session, list);
    return list == ReaderTypes ? modalFrame(screen, owner) : static_cast<QWidget*>(screen);
}

} // namespace

ScreenCatalog allScreens(ReportViewer& reports)
{
    const auto spreadsheets = std::make_shared<DesktopSpreadsheets>();
    return {
        {u"TsjhFrm"_s, desk(reports)},
        {u"frmWuZhengJieShu"_s, readerPicker(noCardPicker)},
        {u"frmReaderSelect"_s, readerPicker(everyReaderPicker)},
        {u"FKmangerFrm"_s,
            [](Session& session, ScreenHost&, const QString& mode, QWidget* owner) {
                return new FKmangerFrm(session, mode, owner);
            }},
        {u"MadddzlxFrm"_s, makeReaderLists},
        {u"DzglFrm"_s,
            [spreadsheets, &reports](Session& session, ScreenHost&, const QString&, QWidget*) {
                return new DzglFrm(session, reports, *spreadsheets);
            }},
        {u"holidayfrm"_s,
            [](Session& session, ScreenHost&, const QString&, QWidget*) { return new holidayfrm(session); }},
        {u"JycsFrm"_s,
            [&reports](Session& session, ScreenHost&, const QString&, QWidget*) {
                return new JycsFrm(session, reports);
            }},
        {u"EditPassFrm"_s,
            [](Session& session, ScreenHost&, const QString&, QWidget*) { return new EditPassFrm(session); }},
        {u"AboutFrm"_s, [](Session&, ScreenHost&, const QString&, QWidget*) { return new AboutFrm; }},
    };
}

} // namespace quilla
