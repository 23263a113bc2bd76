#include "app/screen_register.h"

#include "app/pictures/pictures.h"
#include "catalogue/classification_form.h"
#include "catalogue/find_book_form.h"
#include "catalogue/good_book_form.h"
#include "desk/desk_form.h"
#include "desk/reader_picker_form.h"
#include "exceptions/desk_fine_dialog.h"
#include "exceptions/fine_form.h"
#include "exceptions/ledger_form.h"
#include "exceptions/lost_list_form.h"
#include "exceptions/overdue_filter_form.h"
#include "exceptions/overdue_form.h"
#include "exceptions/overdue_result_form.h"
#include "frame/about_form.h"
#include "frame/menu.h"
#include "frame/password_form.h"
#include "platform/ui/form/escape_key.h"
#include "readers/holiday_form.h"
#include "readers/parameter_form.h"
#include "readers/reader_card_form.h"
#include "readers/reader_list_form.h"
#include "readers/reader_register_form.h"
#include "reservations/reservation_form.h"
#include "reservations/reservation_list_form.h"
#include "reservations/reservation_ops.h"
#include "reservations/return_notices.h"
#include "statistics/circulation_form.h"
#include "statistics/fine_statistic_form.h"
#include "statistics/loan_count_form.h"
#include "statistics/loan_history_form.h"
#include "statistics/period_form.h"
#include "statistics/ranking_form.h"
#include "statistics/yearly_readers_form.h"

#include <QBoxLayout>
#include <QDialog>

namespace quilla {

namespace {

/// A screen that is made from its workplace alone.
template <typename Form> QWidget* make(const Workplace& place, const QString&, QWidget*)
{
    if constexpr (std::is_constructible_v<Form, const Workplace&>)
        return new Form(place);
    else if constexpr (std::is_constructible_v<Form, Session&>)
        return new Form(place.session);
    else
        return new Form;
}

/// The desk, whose discharge opens the fine screen.
QWidget* makeDesk(const Workplace& place, const QString&, QWidget*)
{
    auto* fines = new DeskFineDialog(place.session);
    auto* desk = new TsjhFrm(place, *fines);
    fines->setParent(desk);
    return desk;
}

QWidget* makeFines(const Workplace& place, const QString& mode, QWidget* owner)
{
    return new FKmangerFrm(place.session, mode, owner);
}

template <ReaderPicker (*Picker)()>
QWidget* makePicker(const Workplace& place, const QString&, QWidget* owner)
{
    return new ReaderPickerFrm(place.session, Picker(), owner);
}

/// A dialog around a screen that else stands in the client area; closing either closes both.
QDialog* modalFrame(QWidget* screen, QWidget* owner)
{
    auto* dialog = new QDialog(owner);
    keepOpenAtEscape(*dialog);
    dialog->setObjectName(screen->objectName() + u"Dialog"_s); // its place is remembered under it
    dialog->setWindowTitle(screen->windowTitle());
    auto* layout = new QVBoxLayout(dialog);
    layout->setContentsMargins({});
    layout->addWidget(screen);
    dialog->resize(screen->size());
    return dialog;
}

/// The desk waits for it; from the menu it stands beside the others.
QWidget* makeReservation(const Workplace& place, const QString& mode, QWidget* owner)
{
    auto* screen = new frmTushuYuYue(place.session);
    return mode == Modally ? modalFrame(screen, owner) : static_cast<QWidget*>(screen);
}

/// The types open as a dialog, the units beside the other screens.
QWidget* makeReaderLists(const Workplace& place, const QString& mode, QWidget* owner)
{
    const int list = mode.toInt();
    auto* screen = new MadddzlxFrm(place.session, list);
    return list == ReaderTypes ? modalFrame(screen, owner) : static_cast<QWidget*>(screen);
}

/// The search for titles; `mode` is a title that is looked for at once.
QWidget* makeTitleSearch(const Workplace& place, const QString& mode, QWidget*)
{
    auto* search = new frmFindBook(place.session);
    search->Text1.setText(mode);
    if (!mode.isEmpty()) search->cmdQuery.click();
    return search;
}

/// A reader's card to be looked at; `mode` is the reader code.
QWidget* makeCard(const Workplace& place, const QString& mode, QWidget* owner)
{
    auto* card = new DzaddFrm(
        place.session, [] {}, owner);
    card->SetEditMode({});
    card->LoadReader(mode);
    card->setWindowTitle(u"读者信息"_s);
    return card;
}

/// The statistics over a month or a year.
template <int Index> QWidget* makePeriodStatistic(const Workplace& place, const QString&, QWidget*)
{
    return new PeriodStatisticFrm(place, periodStatistics()[Index]);
}

} // namespace

const ScreenRegister& allScreens()
{
    static const ScreenRegister screens {
        {u"frmODBC"_s, {}, Pictures::connection},
        {u"LtLoginFrm"_s, {}, Pictures::login},
        {u"EditPassFrm"_s, make<EditPassFrm>, Pictures::password},
        {u"AboutFrm"_s, make<AboutFrm>, Pictures::about},
        {u"errMessageFrm"_s, {}, Pictures::failure},
        {u"ManualFrm"_s, {}, Pictures::manual},
        {u"WorkingFrm"_s, {}, Pictures::working},

        {u"TsjhFrm"_s, makeDesk, Pictures::desk, true},
        {u"frmWuZhengJieShu"_s, makePicker<noCardPicker>, Pictures::noCardPicker},
        {u"frmReaderSelect"_s, makePicker<everyReaderPicker>, Pictures::readerPicker},
        {u"FKmangerFrm"_s, makeFines, Pictures::fines},

        {u"ChaoQifrm"_s, make<ChaoQifrm>, Pictures::overdueList},
        {u"CqTjFrm"_s, make<CqTjFrm>, Pictures::overdueFilter},
        {u"CQListFrm"_s, make<CQListFrm>, Pictures::overdueResult},
        {u"ShowStyleFrm"_s, {}, Pictures::noticeStyle},
        {u"lostMangerfrm"_s, make<lostMangerfrm>, Pictures::lostBooks},
        {u"lostMangerAddfrm"_s, {}, Pictures::lostEditor},
        {u"BookOutFrm"_s, make<BookOutFrm>, Pictures::ledger},
        {u"AddBookOutFrm"_s, {}, Pictures::ledgerEditor},

        {u"holidayfrm"_s, make<holidayfrm>, Pictures::holidays},
        {u"JycsFrm"_s, make<JycsFrm>, Pictures::parameters},
        {u"MadddzlxFrm"_s, makeReaderLists, Pictures::readerLists},
        {u"DzglFrm"_s, make<DzglFrm>, Pictures::readerRegister},
        {u"DzaddFrm"_s, makeCard, Pictures::readerCard},

        {u"LttjFrm"_s, make<LttjFrm>, Pictures::circulation},
        {u"LtCountFrm"_s, make<LtCountFrm>, Pictures::loanCounts},
        {u"FkTjFrm"_s, make<FkTjFrm>, Pictures::fineStatistic},
        {u"JylsQueryFrm"_s, make<JylsQueryFrm>, Pictures::loanHistory},
        {u"frmtsjh"_s, make<frmtsjh>, Pictures::titleRanking},
        {u"dzjyphbFrm"_s, make<dzjyphbFrm>, Pictures::readerRanking},
        {u"frmYueLiuTongtj"_s, makePeriodStatistic<0>, Pictures::periodStatistic<0>},
        {u"frmJieYueFltj"_s, makePeriodStatistic<1>, Pictures::periodStatistic<1>},
        {u"frmYueDuzheJieYuetj"_s, makePeriodStatistic<2>, Pictures::periodStatistic<2>},
        {u"frmNianLiuTongTj"_s, makePeriodStatistic<3>, Pictures::periodStatistic<3>},
        {u"frmNianJieYueTj"_s, makePeriodStatistic<4>, Pictures::periodStatistic<4>},
        {u"frmndzjytj"_s, make<frmndzjytj>, Pictures::yearlyReaders},

        {u"fenleihelp"_s, make<fenleihelp>, Pictures::classification},
        {u"frmFindBook"_s, makeTitleSearch, Pictures::findBook},
        {u"frmGoodBook"_s, make<frmGoodBook>, Pictures::goodBook},

        {u"frmTushuYuYue"_s, makeReservation, Pictures::reservation},
        {u"frmTuShuYuyueList"_s, make<frmTuShuYuyueList>, Pictures::reservationList},

        {u"QueryFrm"_s, {}, Pictures::query},
    };
    return screens;
}

const ActionRegister& allActions()
{
    static const ActionRegister actions {
        {MenuAction::ReturnNotices.toString(), printReturnNotices},
        {MenuAction::ClearReservations.toString(),
            [](const Workplace& place) { ClearExpiredReservations(place.session); }},
    };
    return actions;
}

} // namespace quilla
