#pragma once

#include "frame/record_list.h"
#include "platform/report/report_viewer.h"

namespace quilla {

class JycsAddFrm;

/// The circulation parameters: the rules of every reader type.
class JycsFrm final : public RecordList {
    Q_OBJECT

public:
    JycsFrm(Session& session, ReportViewer& viewer);

    void loadData() { RefreshParameterList({}); }
    /// Reads the list anew and goes to the line of that type, or to the first one.
    void RefreshParameterList(const QString& readerclass);

    QPushButton Command1[5];

private:
    void addRecord() override;
    void editRecord() override;
    void run(JycsAddFrm& editor);

    ReportViewer& m_viewer;
};

} // namespace quilla
