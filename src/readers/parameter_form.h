#pragma once

#include "frame/record_list.h"
#include "frame/workplace.h"

namespace quilla {

class JycsAddFrm;

/// The circulation parameters: the rules of every reader type.
class JycsFrm final : public RecordList {
    Q_OBJECT

public:
    explicit JycsFrm(const Workplace& place);

    void loadData() { RefreshParameterList({}); }
    /// Reads the list anew and goes to the line of that type, or to the first one.
    void RefreshParameterList(const QString& readerclass);

    QPushButton Command1[5];

private:
    void addRecord() override;
    void editRecord() override;
    void run(JycsAddFrm& editor);

    ReportViewer& m_reports;
};

} // namespace quilla
