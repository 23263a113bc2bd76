#pragma once

#include "support/report_double.h"
#include "support/screen_host.h"

#include <QTextDocument>
#include <QWidget>

namespace quilla {

/// No spreadsheet program; writes down which files it was to show.
class SheetsDouble final : public SpreadsheetProgram {
public:
    QString folder() const override { return place; }
    bool show(const QString& file) override
    {
        shown.append(file);
        return works;
    }
    void showFolder(const QString& file) override { folders.append(file); }
    QString place;
    QStringList shown;
    QStringList folders;
    bool works = true; ///< whether there is a program
};

/// No printer; writes down which forms went to it.
class FormPrinterDouble final : public FormPrinter {
public:
    void printForm(QWidget& form, Paper) override
    {
        shown.append(form.windowTitle());
        if (look) look(form);
    }
    void printSlip(const Slip& slip, const QString& pdfFile) override
    {
        slips.push_back(slip);
        shown.append(pdfFile);
    }
    void printText(const QTextDocument& text, const QString& pdfFile) override
    {
        shown.append(text.metaInformation(QTextDocument::DocumentTitle) + pdfFile);
    }
    bool isUpright() const override { return upright; }
    std::vector<Slip> slips;
    QStringList shown;
    std::function<void(QWidget& form)> look; ///< at the form while it prints
    bool upright = true;
};

/// A workplace whose outputs go nowhere and whose main window opens nothing; each writes down what it was
/// asked for.
struct WorkplaceDouble {
    explicit WorkplaceDouble(Session& session)
        : place {{reports, sheets, printer}, session, host}
    {
    }

    ReportDouble reports;
    SheetsDouble sheets;
    FormPrinterDouble printer;
    NoHost host;
    const Workplace place;
};

} // namespace quilla
