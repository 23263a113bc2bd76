// What the desk does with a scan, from its Enter to its line in the session list.

#include "desk/desk_form.h"

#include "desk/charge_ops.h"
#include "desk/desk_pages.h"
#include "desk/discharge_ops.h"
#include "desk/reader_panel_ops.h"
#include "desk/reader_picker_form.h"
#include "desk/renewal_ops.h"
#include "desk/scan_cause.h"
#include "desk/scan_log_ops.h"
#include "platform/ui/form/wait_cursor.h"
#include "platform/ui/look/theme.h"

namespace quilla {

namespace {

/// The fine screen, and whether the copy went there.
class WatchedFines final : public FineDialog {
public:
    explicit WatchedFines(FineDialog& fines)
        : m_fines(fines)
    {
    }
    bool settle(const QString& barcode) override
    {
        came = true;
        return m_fines.settle(barcode);
    }

    bool came = false;

private:
    FineDialog& m_fines;
};

const QString CopyIsBack = u"（书已还）"_s; ///< ends the note of a renewal without its new charge

/// What the database does not hold now.
QString missingAfter(const ScanEntry& scan)
{
    if (scan.kind == ScanKind::Card) return u"没有读到读者证"_s;
    return scan.copyIsBack ? u"没有重新借出"_s + CopyIsBack : u"没有写入数据库"_s;
}

/// Results above 0 are refusals, those below are failures.
ScanOutcome outcomeOf(qint32 result)
{
    if (result == 0) return ScanOutcome::Done;
    return result > 0 ? ScanOutcome::Refused : ScanOutcome::Failed;
}

} // namespace

void TsjhFrm::fadeResult()
{
    if (std::exchange(m_resultIsFresh, false)) setTone(tMsg, Tone::Faded);
}

void TsjhFrm::beginScan(ScanKind kind, const QString& code, const QString& reader)
{
    fadeResult();
    m_session.error.forgetFirst();
    m_scan = ScanEntry {.kind = kind, .barcode = code, .readercode = reader};
}

/// A scan that a check refused has its reason already, unless the check had not been able to read what it
/// tests.
void TsjhFrm::endScan(ScanOutcome outcome)
{
    if (!m_scan) return;
    ScanEntry scan = *std::exchange(m_scan, {});
    if (scan.barcode.isEmpty()) return;
    const Failure failure = m_session.error.first();
    const bool refused = !scan.note.isEmpty() && outcome != ScanOutcome::Done;
    if (!refused)
        scan.outcome = outcome;
    else
        scan.outcome = failure.number == 0 ? ScanOutcome::Refused : ScanOutcome::Failed;
    scan.time = m_session.clock.now();
    completeScan(m_session, scan);
    if (scan.outcome == ScanOutcome::Failed)
        explain(scan, failure);
    else if (scan.outcome == ScanOutcome::Refused && scan.copyIsBack)
        scan.note += CopyIsBack;
    enlist(scan);
}

void TsjhFrm::explain(ScanEntry& scan, const Failure& failure)
{
    scan.note = missingAfter(scan) + SeeCause.toString();
    scan.cause = causeText(failure);
    Scans.log().logCause(causeLine(scan, failure));
}

/// Of the line that is chosen in the session list, else of the latest failure.
void TsjhFrm::showCause()
{
    const ScanEntry* scan = Scans.List.hasFocus() ? Scans.current() : nullptr;
    for (int row = 0; !scan && row < Scans.log().rowCount(); ++row)
        if (!Scans.log().entry(row).cause.isEmpty()) scan = &Scans.log().entry(row);
    if (!scan || scan->cause.isEmpty())
        return m_session.prompt.inform(u"今天没有失败的借还。"_s, OperationTitle);
    const QString line = lineOf(*scan).remove(SeeCause.toString());
    m_session.prompt.inform(line + u"\n\n"_s + scan->cause, OperationTitle);
}

void TsjhFrm::enlist(const ScanEntry& scan)
{
    Scans.log().add(scan);
    tMsg.announce(lineOf(scan));
    cmdCause.setVisible(!scan.cause.isEmpty());
    if (scan.outcome != ScanOutcome::Refused)
        m_sounds.play(scan.outcome == ScanOutcome::Done ? Sound::Done : Sound::Refused);
}

/// Scans that came while a box was up, for a box that does not show any more.
void TsjhFrm::enlistUnserved(const QStringList& codes)
{
    const ScanKind kind = SSTab1.currentIndex() == DischargePage ? ScanKind::Return : ScanKind::Charge;
    for (const QString& code : codes)
        enlist({kind, code, m_session.clock.now(), {}, {}, {}, ScanOutcome::Unserved, u"请重新扫描"_s});
}

void TsjhFrm::refusing(const QString& reason)
{
    if (m_scan) m_scan->note = reason.simplified();
    m_sounds.play(Sound::Refused);
}

void TsjhFrm::asking()
{
    m_sounds.play(Sound::Attention);
}

void TsjhFrm::readReaderCard()
{
    const WaitCursor wait;
    beginScan(ScanKind::Card, TxtReaderCode.text());
    ShowReader(m_session, *this, TxtReaderCode.text());
    ShowLoans(m_session, *this, TxtReaderCode.text());
    if (m_scan->note.isEmpty()) return m_scan.reset();
    endScan(ScanOutcome::Refused);
}

/// The reader that was picked takes the place of a scanned card; from here on nothing is different.
void TsjhFrm::lendWithoutCard()
{
    ReaderPickerFrm picker(m_session, noCardPicker(), this);
    picker.exec();
    showPage(ChargePage);
    if (!picker.PickedCode.isEmpty()) {
        TxtReaderCode.setText(picker.PickedCode);
        return readReaderCard();
    }
    setUpLoans();
    clearReaderPanel();
    emptyReaderCode();
    focusReaderCode();
}

/// The barcode stays in its box until the operation has ended: a message below is about it. The next scan
/// finds the box empty whatever happened to this one.
void TsjhFrm::scanForCharge()
{
    const QString reader = TxtReaderCode.text();
    if (reader.isEmpty()) return;
    const WaitCursor wait;
    const QString barcode = TxtBarCode.text();
    beginScan(ScanKind::Charge, barcode, reader);
    const ChargeResult result = ChargeBook(m_session, *this, barcode, reader);
    TxtBarCode.clear();
    showCharge(result, barcode, reader);
    endScan(outcomeOf(result));
}

void TsjhFrm::showCharge(ChargeResult result, const QString& barcode, const QString& reader)
{
    if (result > Charged) return tMsg.clear();
    if (result < Charged) return tell(u"借书失败"_s, false);
    tell(u"借书成功"_s, true);
    ShowReader(m_session, *this, reader);
    ShowLoans(m_session, *this, reader);
    showLoan(barcode);
}

/// The new loan may be the last of a long list.
void TsjhFrm::showLoan(const QString& barcode)
{
    const int row = Grid1.cells().findRow(barcode, BarcodeColumn);
    if (row < 1) return;
    Grid1.setRow(row);
    Grid1.scrollTo(Grid1.model()->index(row - 1, BarcodeColumn));
}

/// A refusal leaves the barcode in the box, selected, so that the next scan takes its place.
void TsjhFrm::scanForReturn()
{
    const QString barcode = TxtRetBook.text();
    if (barcode.isEmpty()) return;
    const WaitCursor wait;
    TxtRetBook.selectAll();
    beginScan(Check1.isChecked() ? ScanKind::Renewal : ScanKind::Return, barcode);
    qint16 count = 0;
    if (Check1.isChecked()) {
        count = CheckRenewal(m_session, *this, barcode);
        if (count == RenewalRefused) return endScan(ScanOutcome::Refused);
    }
    ScanOutcome outcome = takeBack(barcode);
    if (outcome != ScanOutcome::Done) return endScan(outcome);
    if (Check1.isChecked()) outcome = renew(count, barcode);
    if (outcome != ScanOutcome::Refused) showReturn();
    endScan(outcome);
}

void TsjhFrm::showReturn()
{
    ShowReturns(m_session, *this, TxtReaderCode.text(), Returns::Today);
    TxtRetBook.clear();
    Check1.setChecked(false);
    TxtRetBook.setFocus();
}

ScanOutcome TsjhFrm::takeBack(const QString& barcode)
{
    WatchedFines fines(m_fines);
    const DischargeResult result = DischargeBook(m_session, *this, fines, barcode);
    if (fines.came) m_scan->kind = ScanKind::Fine;
    if (result == FineDeclined) m_scan->note = u"罚款未处理，没有还书"_s;
    if (result == Discharged)
        tell(u"还书成功"_s, true);
    else if (result < Discharged)
        tell(u"还书失败"_s, false);
    else if (result == FineDeclined)
        tell(u"取消还书"_s, false);
    else
        tMsg.clear();
    return outcomeOf(result);
}

/// When a check refuses the new charge, the copy stays returned.
ScanOutcome TsjhFrm::renew(qint16 count, const QString& barcode)
{
    m_scan->copyIsBack = true;
    const ChargeResult result = RechargeBook(m_session, *this, count, barcode, TxtReaderCode.text());
    if (result > Charged)
        tMsg.clear();
    else
        tell(result == Charged ? u"续借成功"_s : u"续借失败"_s, result == Charged);
    return outcomeOf(result);
}

void TsjhFrm::tell(const QString& text, bool good)
{
    tMsg.setText(text);
    setTone(tMsg, good ? Tone::Ok : Tone::Error);
    m_resultIsFresh = true;
}

} // namespace quilla
