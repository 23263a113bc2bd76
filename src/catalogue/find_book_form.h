#pragma once

#include "catalogue/title_list_screen.h"

#include <QLabel>

namespace quilla {

/// Finds titles and shows the copies of the current one. Only reads.
class frmFindBook final : public TitleListScreen {
    Q_OBJECT

public:
    explicit frmFindBook(Session& session);

    CopyGrid Grid2; ///< the copies of the current title
    QLabel labZhongShu; ///< the number of titles found
    QLabel labCeShu; ///< that of the copies shown

private:
    void titlesShown(qsizetype count) override;
    void showCopies();
};

} // namespace quilla
