// A desk that works without a pause until it is told to stop or killed: it charges, or charges, takes back
// and settles what is overdue, or places reservations, lets them run out and clears them, or withdraws and
// restores copies at the ledger. After each operation that it would tell the operator as done it prints a
// line: "+ barcode" for a charge, "-" for a return in time, "=" for a settlement, "* reader" for a
// reservation, "w barcode" for a withdrawal, "r" for a restoration.
//
//   desk_loop CONNECTION-TEXT SEED MILLISECONDS READERS COPIES charge|all|reserve|ledger

#include "database/library_schema.h"
#include "database/scale.h"
#include "desk/charge_ops.h"
#include "desk/discharge_ops.h"
#include "exceptions/ledger_ops.h"
#include "frame/sublib.h"
#include "platform/db/pooled_factory.h"
#include "reservations/reservation_ops.h"
#include "support/memory_settings.h"
#include "support/quiet_fines.h"
#include "support/quiet_session.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <cstdio>
#include <random>

using namespace quilla;

namespace {

/// Tells of the settlements, which the desk's result does not.
class CountedFines final : public FineDialog {
public:
    explicit CountedFines(Session& session)
        : m_fines(session)
    {
    }
    bool settle(const QString& barcode) override
    {
        settled = m_fines.settle(barcode);
        return settled;
    }
    bool settled = false;

private:
    QuietFines m_fines;
};

/// The first column of a table that a desk left behind.
QStringList leftBehind(Session& session, const QString& select)
{
    Connection conn = session.connections.open(session.ConnectionText);
    QStringList texts;
    for (Recordset row = conn.open(select); !row.eof(); row.next())
        texts.append(row.field(0).text());
    return texts;
}

void tell(char sign, const QString& barcode)
{
    std::fprintf(stdout, "%c %s\n", sign, qPrintable(barcode));
    std::fflush(stdout);
}

/// An operator who wants it.
class WillingPrompt final : public Prompt {
public:
    Answer show(const Message& message) override { return message.question ? Answer::Yes : Answer::Ok; }
};

/// Reserves the title, and every other time lets its last day be over and clears.
void reserve(Session& session, const QString& reader, int title)
{
    const QString id = QString::number(title);
    const ReservationRequest request {reader, u"书"_s, u"B"_s, u"书"_s, u"B"_s, id, {u"借出"_s}};
    if (PlaceReservation(session, request) != ReservationOutcome::Placed) return;
    tell('*', reader);
    if (title % 2) return;
    session.connections.open(session.ConnectionText)
        .execute(u"update yyk set oldtime='2001-01-01' where readercode='%1' and zskid=%2"_s.arg(reader, id));
    ClearExpiredReservations(session);
}

bool withdraw(Session& session, const QString& barcode)
{
    const CopyCheck check = CheckCopyForWithdrawal(session, barcode);
    if (check.refused || !check.data) return false;
    const Withdrawal entry {.bookname = check.data->bookname,
        .barcode = barcode,
        .price = check.data->price,
        .cause = u"注销"_s,
        .outdate = u"2026-03-10"_s};
    return !SaveWithdrawal(session, EditorMode(u"A"_s), entry);
}

/// One step at the ledger, which never holds many entries.
void workAtLedger(Session& session, std::mt19937& random, const QString& barcode)
{
    const QStringList entries = leftBehind(session, u"select BookOutID from BookOut"_s);
    if (entries.size() < 5 || random() % 2) {
        if (withdraw(session, barcode)) tell('w', barcode);
        return;
    }
    const qint64 id = entries[int(random() % entries.size())].toLongLong();
    const QString restored
        = leftBehind(session, u"select barcode from BookOut where BookOutID=%1"_s.arg(id)).value(0);
    if (restoreWithdrawnCopy(session, id)) tell('r', restored);
}

} // namespace

int main(int argc, char** argv)
{
    settleTimeZone();
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 7) return 2;
    MemorySettings settings;
    QuietPrompt quiet;
    WillingPrompt willing;
    NoEditor editor;
    NoDesk desk;
    const SystemClock clock;
    const sql::Schema schema = librarySchema();
    PooledFactory factory(schema, clock);
    const bool reserves = arguments[6] == u"reserve";
    Prompt& prompt = reserves ? static_cast<Prompt&>(willing) : quiet;
    Session session {settings, prompt, clock, factory, editor};
    storeConnectionText(session, arguments[1]);
    session.OperatorName = u"desk"_s;
    CountedFines fines(session);

    std::mt19937 random(arguments[2].toUInt());
    const auto upTo = [&](const QString& most) { return int(random() % most.toUInt()) + 1; };
    const bool all = arguments[6] == u"all";
    QStringList out = all ? leftBehind(session, u"select barcode from jhsk"_s) : QStringList();
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < arguments[3].toInt()) {
        if (reserves) {
            reserve(session, scaleReaderCode(upTo(arguments[4])), upTo(arguments[5]) / 2 + 1);
            continue;
        }
        if (arguments[6] == u"ledger") {
            workAtLedger(session, random, scaleBarcode(upTo(arguments[5])));
            continue;
        }
        const bool giveBack = all && !out.isEmpty() && (out.size() > 40 || random() % 2);
        if (giveBack) {
            const QString barcode = out.takeAt(int(random() % out.size()));
            fines.settled = false;
            if (DischargeBook(session, desk, fines, barcode) == Discharged)
                tell(fines.settled ? '=' : '-', barcode);
        } else {
            const QString barcode = scaleBarcode(upTo(arguments[5]));
            const QString reader = scaleReaderCode(upTo(arguments[4]));
            if (ChargeBook(session, desk, barcode, reader) != Charged) continue;
            tell('+', barcode);
            out.append(barcode);
        }
    }
    return 0;
}
