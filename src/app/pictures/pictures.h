#pragma once

#include "frame/workplace.h"

#include <QCoreApplication>
#include <QKeyEvent>

namespace quilla {

/// One function for each form: puts it before the album in every state that looks different. The data comes
/// from the library at hand.
namespace Pictures {
/// Enter in a box, as the operator presses it.
inline void pressEnter(QWidget& box)
{
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, u"\r"_s);
    QCoreApplication::sendEvent(&box, &press);
}

void connection(Album& album, const Workplace& place);
void login(Album& album, const Workplace& place);
void password(Album& album, const Workplace& place);
void about(Album& album, const Workplace& place);
void failure(Album& album, const Workplace& place);
void manual(Album& album, const Workplace& place);
void working(Album& album, const Workplace& place);

void desk(Album& album, const Workplace& place);
void noCardPicker(Album& album, const Workplace& place);
void readerPicker(Album& album, const Workplace& place);
void fines(Album& album, const Workplace& place);

void overdueList(Album& album, const Workplace& place);
void overdueFilter(Album& album, const Workplace& place);
void overdueResult(Album& album, const Workplace& place);
void noticeStyle(Album& album, const Workplace& place);
void lostBooks(Album& album, const Workplace& place);
void lostEditor(Album& album, const Workplace& place);
void ledger(Album& album, const Workplace& place);
void ledgerEditor(Album& album, const Workplace& place);

void holidays(Album& album, const Workplace& place);
void parameters(Album& album, const Workplace& place);
void readerLists(Album& album, const Workplace& place);
void readerCard(Album& album, const Workplace& place);
void readerRegister(Album& album, const Workplace& place);

void classification(Album& album, const Workplace& place);
void findBook(Album& album, const Workplace& place);
void goodBook(Album& album, const Workplace& place);

void reservation(Album& album, const Workplace& place);
void reservationList(Album& album, const Workplace& place);

void query(Album& album, const Workplace& place);
void circulation(Album& album, const Workplace& place);
void loanCounts(Album& album, const Workplace& place);
void fineStatistic(Album& album, const Workplace& place);
void loanHistory(Album& album, const Workplace& place);
void titleRanking(Album& album, const Workplace& place);
void readerRanking(Album& album, const Workplace& place);
void yearlyReaders(Album& album, const Workplace& place);
/// `index` is its place in `periodStatistics`.
void periodStatistic(Album& album, const Workplace& place, std::size_t index);
template <std::size_t Index> void periodStatistic(Album& album, const Workplace& place)
{
    periodStatistic(album, place, Index);
}
} // namespace Pictures

} // namespace quilla
