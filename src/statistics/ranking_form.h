#pragma once

#include "frame/workplace.h"
#include "platform/ui/grid/list_screen.h"
#include "statistics/pick_list.h"
#include "statistics/ranking_ops.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>

namespace quilla {

/// A ranking: its boxes, which the two screens have of their own, the list and the report.
class RankingForm : public ListScreen {
    Q_OBJECT

public:
    QPushButton Command1[3];

protected:
    RankingForm(const Workplace& place, const Ranking& ranking);
    /// The row of boxes above, the grid, and a foot before the buttons; for the end of the screen's own
    /// constructor.
    void arrange(const Piece& boxes, const Piece& foot);

    virtual RankingQuery query() = 0;
    /// The boxes of the two dates, the first day first.
    virtual QLineEdit& dateBox(int index) = 0;
    virtual ReportTexts reportTexts() const { return {}; }

    const Workplace m_place;
    Session& m_session;
    RankingWork m_work;
    PickList m_list;

private:
    bool checkDates();
    std::optional<Recordset> rank();
    void showRanking();
    void print();

    const Ranking& m_ranking;
};

/// The titles that were borrowed most.
class frmtsjh final : public RankingForm {
    Q_OBJECT

public:
    explicit frmtsjh(const Workplace& place);

    QComboBox Combo1[5]; ///< the second one is not used
    QLineEdit Text1; ///< the class
    FlexGrid& MSHFlexgrid1;
    PickList& MSHFlexGrid2;

private:
    void layOut();
    void preset();
    void openTitle(int row);
    RankingQuery query() override;
    QLineEdit& dateBox(int index) override { return *Combo1[3 + index].lineEdit(); }

    const QStringList m_classes;
};

/// The readers who borrowed most.
class dzjyphbFrm final : public RankingForm {
    Q_OBJECT

public:
    explicit dzjyphbFrm(const Workplace& place);

    QLineEdit Text1[4];
    QLabel Label3;
    FlexGrid& MSHFlexGrid2;
    PickList& MSHFlexGrid1;

private:
    void layOut();
    void openReader(int row);
    RankingQuery query() override;
    QLineEdit& dateBox(int index) override { return Text1[2 + index]; }
    ReportTexts reportTexts() const override;
};

} // namespace quilla
