#include "exceptions/desk_fine_dialog.h"

#include "exceptions/fine_form.h"
#include "platform/ui/form/wait_cursor.h"
#include "platform/ui/form/window_in_use.h"

namespace quilla {

bool DeskFineDialog::settle(const QString& barcode)
{
    const ArrowCursor arrow;
    FKmangerFrm screen(m_session, u"E"_s, windowInUse());
    screen.Text1[FineBox::Barcode].setText(barcode);
    screen.Text1_LostFocus(FineBox::Barcode);
    screen.exec();
    return screen.SavedFlag() == u"yes";
}

} // namespace quilla
