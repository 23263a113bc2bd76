#pragma once

#include "output/export_ops.h"
#include "platform/ui/wait_cursor.h"
#include "platform/ui/working_form.h"

#include <optional>

namespace quilla {

/// An export as it stands before the operator: the hourglass, and the progress form with its button.
class WorkingProgress final : public ExportProgress {
public:
    explicit WorkingProgress(QWidget* owner)
        : m_owner(owner)
    {
    }
    void begin() override;
    void setTotal(qsizetype rows) override;
    void setDone(qsizetype rows) override;
    bool goOn() override;
    void end() override;

private:
    QWidget* m_owner;
    std::optional<WaitCursor> m_hourglass;
    std::unique_ptr<WorkingFrm> m_form;
};

/// Opens files with the program that the desktop has for them.
class DesktopSpreadsheets final : public SpreadsheetProgram {
public:
    void show(const QString& file) override;
};

/// The operator's folder of documents, which is made when it is missing.
QString exportFolder();

} // namespace quilla
