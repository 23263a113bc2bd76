#pragma once

#include "frame/search.h"
#include "platform/core/progress.h"
#include "platform/grid/grid_model.h"
#include "platform/report/report_viewer.h"

namespace quilla {

/// The columns of the reader list, in the order of its select.
enum ReaderColumn {
    ReaderCode,
    ReaderName,
    ReaderSex,
    ReaderType,
    ReaderUnit,
    ReaderQuota,
    ReaderOnLoan,
    ReaderIssued,
    ReaderTerm,
    ReaderState
};

/// From so many readers on, a walk over them shows its progress and can be ended.
inline constexpr qsizetype LongWalk = 500;

/// What came of a listing.
struct ListedReaders {
    qsizetype found = 0;
    QString toTell {}; ///< once the list stands before the operator; mostly empty
};

/// Fills the grid with the readers who meet the condition, if there are any, and gives their number. Every
/// line reads "有效" then: a card stored as "超期" is put back to it, other states stay in the database.
/// Nullopt when no connection can be had; the grid is not touched then. Here as in every walk over readers
/// another desk's writing is waited for once; what was not done is reported.
std::optional<ListedReaders> listReaders(Session& session, const ListSearch& search, GridModel& grid);

/// Asks, then deletes the reader. A reader who has books out, or whose books can't be counted, stays, which
/// is reported. False when the list stays as it is.
bool deleteReader(Session& session, const QString& code);

/// Asks, then bars the card. False when its line stays as it is.
bool reportCardLost(Session& session, const QString& code);

/// Asks, then deletes these readers, except those who have books out. `refresh` is called after that, and
/// before a message says that some were kept or not reached.
void deleteReaders(
    Session& session, Progress& progress, const QStringList& codes, const std::function<void()>& refresh);

/// Gives these readers that unit, which need not be a listed one, then says so, whatever became of it, unless
/// another desk's writing was in the way. A text with a quote in it changes nothing. False when the list
/// stays as it is.
bool changeUnits(Session& session, Progress& progress, const QStringList& codes, const QString& unit);

/// `anyShown`: whether the list has a first line.
void printReaders(Session& session, ReportViewer& viewer, const ListSearch& search, bool anyShown);
/// What an export of the list sends.
QString readersForOutput(const ListSearch& search);

} // namespace quilla
