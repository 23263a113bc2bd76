#pragma once

#include "frame/workplace.h"
#include "platform/ui/form/text_box.h"
#include "platform/ui/grid/list_screen.h"
#include "statistics/pick_list.h"
#include "statistics/yearly_readers_ops.h"

#include <QLabel>
#include <QPushButton>

namespace quilla {

/// The loans of each reader in a year, month by month.
class frmndzjytj final : public ListScreen {
    Q_OBJECT

public:
    explicit frmndzjytj(const Workplace& place);

    TextBox Text1; ///< the year
    TextBox Text2[2]; ///< unit and type
    QPushButton Command1[3];
    QPushButton cmdToExcel;
    QLabel Label4;
    FlexGrid& MSHFlexGrid2;
    PickList MSHFlexGrid1;

private:
    void layOut();
    void wire();
    void press(int button);
    YearlyReadersQuery query() const;
    void search();
    void toExcel();

    const Workplace m_place;
    Session& m_session;
    int m_year = 0; ///< of the last search
    qsizetype m_lines = 0;
};

} // namespace quilla
