#include "desk/scan_list_pane.h"

#include "desk/scan_log_ops.h"
#include "platform/ui/form/form.h"

#include <QApplication>
#include <QClipboard>

namespace quilla {

namespace {

std::shared_ptr<ScanLog> logOf(Session& session)
{
    if (!session.scans) session.scans = std::make_shared<ScanLog>();
    return session.scans;
}

} // namespace

ScanListPane::ScanListPane(const Workplace& place)
    : cmdCopy(u"复制"_s)
    , cmdPrint(u"打印"_s)
    , m_session(place.session)
    , m_reports(place.reports)
    , m_log(logOf(place.session))
{
    QUILLA_NAMES(lTitle, TxtFilter, cmdCopy, cmdPrint, List);
    setObjectName(u"ScanListPane"_s);
    setWindowTitle(u"本台今日借还"_s);
    m_shown.setSourceModel(m_log.get());
    m_shown.setFilterKeyColumn(-1);
    m_shown.setFilterCaseSensitivity(Qt::CaseInsensitive);
    List.setModel(&m_shown);
    TxtFilter.setPlaceholderText(u"筛选"_s);
    TxtFilter.setAccessibleName(u"筛选今日借还"_s);
    TxtFilter.setClearButtonEnabled(true);
    List.setAccessibleName(u"本台今日借还"_s);
    List.setToolTip(u"F6 到此列表；回车：查看读者；F3：转到还书；Ctrl+C：复制"_s);
    build(*this, column(row(lTitle, Piece(TxtFilter).grow(), cmdCopy, cmdPrint), Piece(List).grow()));
    layout()->setContentsMargins(0, 0, 0, 0);
    connect(&TxtFilter, &QLineEdit::textChanged, this, &ScanListPane::narrow);
    onEnter(TxtFilter, [this] { enterList(); });
    onClick(cmdCopy, [this] { copy(); });
    onClick(cmdPrint, [this] { print(); });
    connect(&List, &ScanListView::opened, this,
        [this](int line) { Q_EMIT readerWanted(entryOf(line).readercode); });
    connect(&List, &ScanListView::typed, this, [this](const QString& text) {
        TxtFilter.setFocus();
        TxtFilter.setText(text);
    });
    connect(m_log.get(), &ScanLog::rowsInserted, this, &ScanListPane::takeScan);
    narrow({});
    count();
}

const ScanEntry& ScanListPane::entryOf(int line) const
{
    return m_log->entry(m_shown.mapToSource(m_shown.index(line, 0)).row());
}

const ScanEntry* ScanListPane::current() const
{
    const QModelIndex line = List.currentIndex();
    return line.isValid() ? &entryOf(line.row()) : nullptr;
}

void ScanListPane::enterList()
{
    List.setFocus();
    if (m_shown.rowCount() > 0) List.selectRow(0);
}

/// A barcode that was scanned into the filter by mistake is told to have done nothing.
void ScanListPane::narrow(const QString& text)
{
    const QString wanted = trimBlanks(text);
    m_shown.setFilterFixedString(wanted);
    List.setEmptyNote(wanted.isEmpty()
            ? u"扫描过的每一册都记在这里，最新的在最上面"_s
            : u"今天没有含“%1”的记录，这里只查找，不借还。要借还，请按 F2 或 F3，再扫描。"_s.arg(wanted));
}

void ScanListPane::copy()
{
    QApplication::clipboard()->setText(List.chosenText());
}

/// The lines that are shown, the oldest first, as on a journal.
void ScanListPane::print()
{
    std::vector<ScanEntry> entries;
    for (int line = m_shown.rowCount(); line-- > 0;)
        entries.push_back(entryOf(line));
    if (entries.empty()) return m_session.prompt.inform(u"列表中没有可打印的记录。"_s, OperationTitle);
    Recordset rows = scanRows(entries);
    m_reports.showReport(ScanReport.toString(), rows);
}

/// A filter from before would hide the new line.
void ScanListPane::takeScan()
{
    if (!TxtFilter.hasFocus()) TxtFilter.clear();
    count();
}

void ScanListPane::count()
{
    const int done = m_log->count(ScanOutcome::Done);
    const int rest = m_log->rowCount() - done;
    QString text = u"今日 %1 次"_s.arg(m_log->rowCount());
    if (rest > 0) text += u"，未成 %1"_s.arg(rest);
    lTitle.setText(text);
}

} // namespace quilla
