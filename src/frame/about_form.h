#pragma once

#include <QPushButton>
#include <QWidget>

namespace quilla {

/// What this program is.
class AboutFrm final : public QWidget {
    Q_OBJECT

public:
    AboutFrm();

    QPushButton cmdOK;
};

} // namespace quilla
