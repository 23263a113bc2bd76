#include "platform/report/report_page.h"

namespace quilla {

QSizeF paperSize(Paper paper)
{
    const QSizeF upright = QSizeF(210, 297) * TwipsPerMillimetre;
    return paper == Paper::Upright ? upright : upright.transposed();
}

} // namespace quilla
