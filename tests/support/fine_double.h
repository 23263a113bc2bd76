#pragma once

#include "desk/fine_dialog.h"

#include <QStringList>

#include <functional>

namespace quilla {

/// A fine dialog that does what the test says and writes down what it was given.
class FineDouble final : public FineDialog {
public:
    bool settle(const QString& barcode) override
    {
        given.append(barcode);
        return closes && closes(barcode);
    }
    QStringList given;
    std::function<bool(const QString&)> closes;
};

} // namespace quilla
