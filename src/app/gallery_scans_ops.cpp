#include "app/gallery_scans_ops.h"

#include "desk/scan_log_ops.h"
#include "frame/work.h"

#include <array>

namespace quilla {

namespace {

/// What became of a copy; an empty note is filled from the library.
struct Story {
    ScanKind kind;
    ScanOutcome outcome = ScanOutcome::Done;
    QString note {};
};

/// The scans of other readers; what follows is charged.
const std::array Stories {
    Story {ScanKind::Return},
    Story {ScanKind::Charge},
    Story {ScanKind::Charge, ScanOutcome::Failed, u"没有写入数据库，按 F8 看原因"_s},
    Story {ScanKind::Return},
    Story {ScanKind::Renewal},
    Story {ScanKind::Fine, ScanOutcome::Done, u"罚款 3.60 元"_s},
    Story {ScanKind::Charge, ScanOutcome::Refused, u"此书当前已借出"_s},
};

/// As charges, the latest loan first.
std::vector<ScanEntry> loans(Session& session, const QString& condition, std::size_t most)
{
    ResumingWork work(session);
    if (!work) return {};
    std::vector<ScanEntry> scans;
    for (Recordset row = work.select(
             u"select top %1 barcode,readercode from jhsk where %2 order by orderdate desc,barcode"_s.arg(
                 QString::number(most), condition));
         !row.eof(); row.next())
        scans.push_back({ScanKind::Charge, row.field(0).text(), {}, {}, row.field(1).text()});
    return scans;
}

void complete(Session& session, ScanEntry& scan, const Story& story)
{
    scan.kind = story.kind;
    scan.outcome = story.outcome;
    completeScan(session, scan);
    if (!story.note.isEmpty()) scan.note = story.note;
}

/// The last one now, the others half a minute and some seconds apart.
void setTimes(std::vector<ScanEntry>& scans, const Moment& now)
{
    int seconds = 0;
    for (std::size_t index = scans.size(); index-- > 0; seconds += 31 + int(index) * 7 % 20)
        scans[index].time = {now.date, now.time.addSecs(-seconds)};
}

} // namespace

std::vector<ScanEntry> scanSamples(Session& session, const QString& readercode)
{
    const QString reader = u"readercode='%1'"_s.arg(doubled(readercode));
    std::vector<ScanEntry> scans = loans(session, u"not "_s + reader, Stories.size());
    const std::vector<ScanEntry> own = loans(session, reader, 2);
    scans.insert(scans.end(), own.rbegin(), own.rend());
    for (std::size_t index = 0; index < scans.size(); ++index)
        complete(session, scans[index], index < Stories.size() ? Stories[index] : Story {ScanKind::Charge});
    setTimes(scans, session.clock.now());
    return scans;
}

} // namespace quilla
