#pragma once

#include "desk/scan_list_view.h"
#include "desk/scan_log.h"
#include "frame/workplace.h"
#include "platform/ui/form/text_box.h"

#include <QLabel>
#include <QPushButton>

namespace quilla {

/// The session list of the desk: the day's scans, what is typed narrows them.
class ScanListPane final : public QWidget {
    Q_OBJECT

public:
    /// Shows the log of the session, which it makes when there is none.
    explicit ScanListPane(const Workplace& place);

    ScanLog& log() { return *m_log; }
    /// Puts the focus on the newest line.
    void enterList();
    /// The scan that is chosen; nullptr without one.
    const ScanEntry* current() const;

    QLabel lTitle;
    TextBox TxtFilter;
    QPushButton cmdCopy;
    QPushButton cmdPrint;
    ScanListView List;

Q_SIGNALS:
    void readerWanted(const QString& readercode);

private:
    const ScanEntry& entryOf(int row) const;
    void narrow(const QString& text);
    void copy();
    void print();
    void takeScan();
    void count();

    Session& m_session;
    ReportViewer& m_reports;
    const std::shared_ptr<ScanLog> m_log;
    QSortFilterProxyModel m_shown;
};

} // namespace quilla
