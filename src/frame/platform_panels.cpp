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
const QString PaperKey = u"PrinterPaper"_s;
const QString SoundsKey = u"Sounds"_s;
const QString SoundsOff = u"off"_s;
const QString WidePaper = u"wide"_s;

QString kept(const SettingsStore& settings, const QString& key)
{
    return settings.get(StoredText::Application.toString(), StoredText::Section.toString(), key, {});
}

void keep(SettingsStore& settings, const QString& key, const QString& value)
{
    settings.set(StoredText::Application.toString(), StoredText::Section.toString(), key, value);
}

} // namespace

QString chosenPrinter(const SettingsStore& settings)
{
    return kept(settings, PrinterKey);
}

bool isChosenUpright(const SettingsStore& settings)
{
    return kept(settings, PaperKey) != WidePaper;
}

bool soundsAreOn(const SettingsStore& settings)
{
    return kept(settings, SoundsKey) != SoundsOff;
}

void turnSounds(SettingsStore& settings, bool on)
{
    keep(settings, SoundsKey, on ? QString() : SoundsOff);
}

void showPrinterSetup(SettingsStore& settings, QWidget* owner)
{
    QPrinter printer;
    const QString name = chosenPrinter(settings);
    if (!name.isEmpty()) printer.setPrinterName(name);
    printer.setPageOrientation(isChosenUpright(settings) ? QPageLayout::Portrait : QPageLayout::Landscape);
    QPrintDialog dialog(&printer, owner);
    dialog.setWindowTitle(u"打印机设置"_s);
    // nothing is printed here
    if (auto* buttons = dialog.findChild<QDialogButtonBox*>())
        if (QPushButton* ok = buttons->button(QDialogButtonBox::Ok)) ok->setText(u"确定"_s);
    if (dialog.exec() != QDialog::Accepted) return;
    const bool isUpright = printer.pageLayout().orientation() == QPageLayout::Portrait;
    keep(settings, PrinterKey, printer.printerName());
    keep(settings, PaperKey, isUpright ? QString() : WidePaper);
}

} // namespace quilla
