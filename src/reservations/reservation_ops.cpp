#include "reservations/reservation_ops.h"

#include "catalogue/title_search_ops.h"
#include "frame/refusal.h"
#include "frame/sublib.h"

namespace quilla {

namespace {

using Objection = std::optional<Refusal>;

const QString SetParametersAnew = u"\n如果确定要预约，您可以重新设置该读者的流通参数！"_s;

/// The lines may have been moved by keys since the title and the copy were chosen.
bool linesAreThoseChosen(const ReservationRequest& request)
{
    return request.currentName == request.bookname && request.currentBarcode == request.barcode;
}

/// No row of the reader is an objection, too. A counter that is null passes the limit.
Objection quotaObjection(Session& session, StrictWork& work, const QString& readercode)
{
    const Recordset reader
        = work.open(u"select ordercount,yordercshu from dzk where readercode='%1'"_s.arg(readercode));
    if (reader.eof())
        return Refusal {u"出现意外错误！%1\n没有找到该读者的信息！"_s.arg(session.error.text())};
    const qint64 limit = reader.field(u"ordercount").integer().value_or(0);
    if (limit <= 0) return Refusal {u"该读者没有预约图书的权限！"_s + SetParametersAnew};
    const auto placed = reader.field(u"yordercshu").integer();
    if (placed && limit <= *placed)
        return Refusal {u"该读者预约图书的册数已经到达规定的册数！不能再预约了！"_s + SetParametersAnew};
    return {};
}

/// Whatever the state of the earlier reservation.
Objection repetitionObjection(StrictWork& work, const QString& readercode, const QString& zskid)
{
    const Recordset earlier = work.open(
        u"select zskid,barcode from yyk where readercode='%1' and zskid=%2"_s.arg(readercode, zskid));
    if (earlier.eof()) return {};
    return Refusal {u"该读者已经预约了该种图书，不能再预约这种图书了！"_s};
}

/// Judges the list as it was loaded, every line of it; the database is not asked again.
Objection shelfObjection(const QStringList& copyStates)
{
    const bool onShelf = std::any_of(
        copyStates.begin(), copyStates.end(), [](const QString& state) { return sameText(state, u"库本"); });
    if (!onShelf) return {};
    return Refusal {u"该种图书有可以借的书(状态为库本的书可借)，不必预约这种图书！"_s};
}

Objection objection(
    Session& session, StrictWork& work, const QString& readercode, const ReservationRequest& request)
{
    if (const auto found = quotaObjection(session, work, readercode)) return found;
    if (const auto found = repetitionObjection(work, readercode, request.zskid)) return found;
    return shelfObjection(request.copyStates);
}

/// A failure leaves the transaction to the end of the work, which rolls it back.
void writeReservation(StrictWork& work, const QString& readercode, const QString& zskid, const QString& today)
{
    work.connection().begin(OnFailure::EndTransaction);
    work.execute(u"insert yyk (readercode,zskid,ordertime,orderstatus) values ('%1',%2,'%3',0)"_s.arg(
        readercode, zskid, today));
    work.execute(u"update dzk set yordercshu=yordercshu+1 where readercode='%1'"_s.arg(readercode));
    work.connection().commit();
}

/// Places the reservation, or returns what speaks against it. nullopt after a failure, which is reported.
std::optional<Objection> checkAndWrite(Session& session, const ReservationRequest& request)
{
    const QString readercode = SqlText(request.readercode);
    const auto steps = [&](StrictWork& work) {
        Objection found = objection(session, work, readercode, request);
        if (!found) writeReservation(work, readercode, request.zskid, isoDate(GetServerDate(session)));
        return found;
    };
    return handled(session, Opened::Directly, steps, [&](const Error& error) {
        session.prompt.inform(u"图书预约失败！错误原因如下：\n"_s + error.text, OperationTitle);
    });
}

} // namespace

std::optional<Recordset> SearchTitles(Session& session, const QString& text)
{
    return selectOrTell(session, Opened::Directly,
        u"select zskid,classcode + '/'+ convert(varchar,zch)+fzqfh as shh, bookname,isbn  from zsk  where (bookname like '%%1%') or (classcode +'/'+ convert(varchar,zch)+fzqfh like '%1%')"_s
            .arg(SqlText(text)));
}

ReservationOutcome PlaceReservation(Session& session, const ReservationRequest& request)
{
    if (isBlank(request.readercode)) return ReservationOutcome::Refused;
    if (request.barcode.isEmpty()) return ReservationOutcome::Untouched;
    if (!linesAreThoseChosen(request)) {
        session.prompt.inform(u"图书选择可能有问题，请检查后重新预约！"_s, OperationTitle);
        return ReservationOutcome::Untouched;
    }
    if (!session.prompt.ask(u"确实要预约【%1】吗？(y/n)"_s.arg(request.bookname), OperationTitle))
        return ReservationOutcome::Refused;

    const auto checked = checkAndWrite(session, request);
    if (!checked) return ReservationOutcome::Refused;
    if (const Objection& found = *checked) {
        session.prompt.show({found->text, found->title, found->icon});
        return ReservationOutcome::Refused;
    }
    session.prompt.inform(u"图书预约成功！"_s, OperationTitle);
    return ReservationOutcome::Placed;
}

void ClearExpiredReservations(Session& session)
{
    if (!session.prompt.ask(u"确定要清除过期的预约信息吗？"_s, OperationTitle)) return;
    const QString today = isoDate(GetServerDate(session));
    const bool cleared = handled(
        session, Opened::Directly,
        [&](StrictWork& work) { work.execute(u"delete from yyk  where oldtime<'%1'"_s.arg(today)); },
        [&](const Error& error) {
            session.prompt.inform(u"清除失败，原因如下：\n"_s + error.text, OperationTitle);
        });
    if (cleared) session.prompt.inform(u"成功清除过期的预约信息！"_s, OperationTitle);
}

} // namespace quilla
