#pragma once

#include "output/export_ops.h"

namespace quilla {

/// Opens files with the program that the desktop has for them; they lie among the operator's documents.
class DesktopSpreadsheets final : public SpreadsheetProgram {
public:
    QString folder() const override;
    bool show(const QString& file) override;
    void showFolder(const QString& file) override;
};

} // namespace quilla
