#pragma once

#include "frame/manual_ops.h"

#include <QDialog>
#include <QListWidget>
#include <QPushButton>
#include <QTextBrowser>

namespace quilla {

class FormPrinter;
struct Session;

/// The manual, a section at a time. Prints the section that it shows, or saves it as PDF.
class ManualFrm final : public QDialog {
    Q_OBJECT

public:
    /// A window of `owner`, so that it can be read while a dialog waits. Deletes itself when it is closed.
    ManualFrm(Session& session, FormPrinter& printer, QWidget* owner);

    /// Shows the section of that name, the first one when there is none.
    void showSection(const QString& name);

    QListWidget Contents;
    QTextBrowser Text;
    QPushButton cmdPrint;
    QPushButton cmdPdf;
    QPushButton cmdClose;

private:
    void fillContents();
    void showChosen();
    void printShown(const QString& pdfFile);
    void savePdf();

    Session& m_session;
    FormPrinter& m_printer;
};

} // namespace quilla
