#pragma once

#include "frame/search.h"
#include "frame/work.h"

namespace quilla {

/// The columns of a list of titles, as far as every such list has them.
enum TitleColumn { TitleId, TitleCallNumber, TitleName, TitleIsbn };
/// The columns of a list of copies.
enum CopyColumn { CopyTitleId, CopyBarcode, CopyPlace, CopyStatus };

/// Titles whose name holds `text`, or whose call number begins with it; the blanks around it do not count.
/// "%" and "_" stay wild cards. The call number is the one without the distinguishing mark.
ListSearch titlesLike(const QString& text);
/// All titles that meet a condition of the query dialog, in its order.
ListSearch titlesBy(const QString& condition, const QString& order);

/// The titles found. nullopt after a failure, which is reported, and when the operator was sent to the
/// connection settings instead.
std::optional<Recordset> findTitles(Session& session, const ListSearch& search);

/// The copies of a title that are neither lost nor withdrawn; with an empty id those of every title. nullopt
/// as with `findTitles`.
std::optional<Recordset> usableCopies(Session& session, Opened opened, const QString& zskid);

/// All that is known of a title, a line a field that is not null; the first field always has its line.
/// nullopt after a failure, which is reported, and for a title that is gone.
std::optional<QString> ShowTitleDetail(Session& session, const QString& zskid);

/// A select in handler mode; an error is reported in the words of the database. nullopt as with `findTitles`.
std::optional<Recordset> selectOrTell(Session& session, Opened opened, const QString& statement);

} // namespace quilla
