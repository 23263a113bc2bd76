#pragma once

#include "setup/setup_page.h"

#include <QRadioButton>

namespace quilla {

/// Which library is the desk to open, or what is to be done with its backups?
class WelcomePage final : public SetupPage {
    Q_OBJECT

public:
    WelcomePage(SetupPlace& place, SetupPlan& plan);
    void open() override;
    void goOn() override;

    QRadioButton Option1[5];
    QLabel labNow;

private:
    void layOut();
};

} // namespace quilla
