#include "app/desk_fines.h"

namespace quilla {

/// The fine screen is not part of this program yet: the loan stays open and the operator is told.
bool DeskFines::settle(const QString& barcode)
{
    m_session.prompt.inform(u"图书【%1】已超期，罚款管理尚不可用，不能还书。"_s.arg(barcode), OperationTitle);
    return false;
}

} // namespace quilla
