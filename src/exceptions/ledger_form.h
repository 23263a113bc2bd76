#pragma once

#include "platform/ui/form/text_box.h"
#include "statistics/searched_list.h"

#include <QComboBox>

namespace quilla {

class AddBookOutFrm;

/// The ledger of copies that have left the collection. A registration takes a copy out of circulation, a
/// restoration brings it back.
class BookOutFrm final : public SearchedList {
    Q_OBJECT

public:
    explicit BookOutFrm(const Workplace& place);

    void loadData(const QString& condition, const QString& order) override;
    /// Reads the list anew; the current entry stays current.
    void ReloadLedger();
    /// Of the current line, without a question.
    void RestoreWithdrawnCopy();
    /// Part of a text in the field chosen.
    void FindInLedger();
    void PrintLedger();

    QComboBox Combo1; ///< the field to look into
    TextBox Text1; ///< what to look for
    QPushButton CmdFind;
    QPushButton CmdQuery;
    QPushButton CmdAdd;
    QPushButton CmdPrint;
    QPushButton cmdToExcel;
    QPushButton CmdQuit;
    QLabel iRec;

private:
    void layOut();
    void wire();
    void query();
    void add();
    void edit(int row);
    void run(AddBookOutFrm& editor);
    void offerRestoration(int row);

    qint64 currentId() const { return Grid1.cells().RowData(Grid1.Row()); }
};

} // namespace quilla
