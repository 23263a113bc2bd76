#include "exceptions/desk_fine_dialog.h"

#include "exceptions/fine_form.h"
#include "platform/ui/form/wait_cursor.h"
#include "platform/ui/form/window_in_use.h"
#include "platform/ui/scan/scan_guard.h"

namespace quilla {

/// The next books of the pile are scanned while the window is open; the Enter of such a scan must not save a
/// fine that nobody has looked at.
bool DeskFineDialog::settle(const QString& barcode)
{
    const ArrowCursor arrow;
    FKmangerFrm screen(m_session, u"E"_s, windowInUse());
    screen.Text1[FineBox::Barcode].setText(barcode);
    screen.Text1_LostFocus(FineBox::Barcode);
    const ScanGuard guard(screen,
        [this](const QStringList& scans) { m_session.prompt.warn(unservedNotice(scans), OperationTitle); });
    screen.exec();
    return screen.SavedFlag() == u"yes";
}

} // namespace quilla
