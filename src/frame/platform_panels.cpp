#include "frame/platform_panels.h"

#include "frame/menu.h"
#include "frame/sublib.h"

#include <QDialogButtonBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QProcess>
#include <QPushButton>
#include <QStandardPaths>

#include <array>

namespace quilla {

bool isOwnAction(const QString& action)
{
    return action == MenuAction::Quit || action == MenuAction::RegionalSettings
        || action == MenuAction::PrinterSetup;
}

bool startRegionalSettings()
{
    static const std::array<QStringList, 6> panels {
        QStringList {u"control.exe"_s, u"intl.cpl"_s},
        {u"gnome-control-center"_s, u"region"_s},
        {u"systemsettings"_s, u"kcm_regionandlang"_s},
        {u"systemsettings5"_s, u"kcm_regionandlang"_s},
        {u"cinnamon-settings"_s, u"locale"_s},
        {u"mate-control-center"_s},
    };
    for (const QStringList& panel : panels) {
        const QString program = QStandardPaths::findExecutable(panel.front());
        if (!program.isEmpty()) return QProcess::startDetached(program, panel.sliced(1));
    }
    return false;
}

namespace {

const QString PrinterKey = u"Printer"_s;

} // namespace

QString chosenPrinter(const SettingsStore& settings)
{
    return settings.get(StoredText::Application.toString(), StoredText::Section.toString(), PrinterKey, {});
}

void showPrinterSetup(SettingsStore& settings, QWidget* owner)
{
    QPrinter printer;
    const QString kept = chosenPrinter(settings);
    if (!kept.isEmpty()) printer.setPrinterName(kept);
    QPrintDialog dialog(&printer, owner);
    dialog.setWindowTitle(u"打印机设置"_s);
    // nothing is printed here
    if (auto* buttons = dialog.findChild<QDialogButtonBox*>())
        if (QPushButton* ok = buttons->button(QDialogButtonBox::Ok)) ok->setText(u"确定"_s);
    if (dialog.exec() == QDialog::Accepted)
        settings.set(StoredText::Application.toString(), StoredText::Section.toString(), PrinterKey,
            printer.printerName());
}

} // namespace quilla
