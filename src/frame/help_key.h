#pragma once

#include <QObject>
#include <QPointer>

namespace quilla {

class FormPrinter;
class ManualFrm;
struct Session;

/// Opens the manual at F1, wherever the focus is, at the section of the screen that has it. Watches the whole
/// program from its making to its end.
class HelpKey final : public QObject {
    Q_OBJECT

public:
    /// Both must outlive it.
    HelpKey(Session& session, FormPrinter& printer);

    /// The manual at the section of the screen that `focus` stands in.
    void open(QWidget* focus);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    Session& m_session;
    FormPrinter& m_printer;
    QPointer<ManualFrm> m_manual;
};

} // namespace quilla
