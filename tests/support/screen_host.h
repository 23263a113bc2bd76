#pragma once

#include "frame/workplace.h"

#include <QStringList>

namespace quilla {

/// A main window that opens nothing and writes down what it was asked for.
class NoHost final : public ScreenHost {
public:
    QWidget* openScreen(const QString& target, const QString&) override
    {
        opened.append(target);
        return toOpen;
    }
    bool hasScreen(const QString& target) const override { return exists.contains(target); }
    void registerChild(QWidget*) override { }
    QWidget* toOpen = nullptr; ///< what it gives for any screen
    QStringList opened;
    QStringList exists;
};

} // namespace quilla
