#pragma once

#include "frame/session.h"
#include "platform/ui/grid/flex_grid.h"

#include <QCoreApplication>
#include <QWidget>

namespace quilla {

/// The library classification at a glance: the main classes, and the second level of the current one. Reads a
/// text file beside the program.
class fenleihelp final : public QWidget {
    Q_OBJECT

public:
    /// `folder` is the one that the file lies in.
    explicit fenleihelp(Session& session, const QString& folder = QCoreApplication::applicationDirPath());

    FlexGrid Grid1; ///< the main classes
    FlexGrid Grid2; ///< the second level

private:
    void loadMainClasses();
    void loadSecondLevel();

    Session& m_session;
    const QString m_file;
};

} // namespace quilla
