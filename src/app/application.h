#pragma once

#include "platform/core/error.h"

#include <QApplication>

namespace quilla {

/// The event loop with an edge guard: an error that no operation handles shows the run-time error box
/// and ends the program with status 1. No half written work survives it, since a connection that is
/// dropped rolls back.
class GuardedApplication final : public QApplication {
    Q_OBJECT

public:
    GuardedApplication(int& argc, char** argv);

    bool notify(QObject* receiver, QEvent* event) override;

private:
    void endAfter(const Error& error);

    bool m_failed = false;
};

} // namespace quilla
