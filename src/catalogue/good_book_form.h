#pragma once

#include "catalogue/title_list_screen.h"
#include "platform/report/report_viewer.h"

#include <QLabel>

namespace quilla {

/// Collects titles from several searches into a list of recommended books and prints it. The list lives as
/// long as the screen.
class frmGoodBook final : public TitleListScreen {
    Q_OBJECT

public:
    explicit frmGoodBook(const Workplace& place);

    FlexGrid Grid2; ///< the recommended books
    QPushButton cmdAdd[2];
    QPushButton cmdClick[3];
    QLabel labZhongShu; ///< the number of titles found
    QLabel labHaoShu; ///< that of the recommended ones

private:
    void layOut();
    void wire();
    void titlesShown(qsizetype count) override;
    void add(int which);
    void removeCurrent();
    void removeAll();
    void clearList();
    void showCount();

    ReportViewer& m_reports;
};

} // namespace quilla
