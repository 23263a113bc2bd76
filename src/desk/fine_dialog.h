#pragma once

#include <QString>

namespace quilla {

/// How the desk hands an overdue copy to the fine screen, which is modal and does all the writing of that
/// discharge.
class FineDialog {
public:
    virtual ~FineDialog() = default;
    /// True when the loan was settled and closed, false when the operator left it open.
    virtual bool settle(const QString& barcode) = 0;
};

} // namespace quilla
