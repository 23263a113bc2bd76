#pragma once

#include "statistics/searched_list.h"

namespace quilla {

/// One entry of a list's sort menu; its place in the menu is the column that the grid is sorted by.
struct SortChoice {
    QString caption;
    QString field; ///< by which later printouts are ordered
};

/// What differs between the overdue list and the register of losses, apart from their own commands.
struct SortedListPlan {
    QString name;
    QString title;
    ListSearch everything;
    QString format;
    std::vector<int> money; ///< columns
    const WidthRule& widths;
    QueryTriple triple;
    std::vector<SortChoice> sorting;
    QStringList captions; ///< of `Command1`
};

/// A list of loans that is read when it opens, found by the query dialog and sorted by a menu. The reader's
/// card opens by a key.
class SortedList : public SearchedList {
    Q_OBJECT

public:
    void loadData(const QString& condition, const QString& order) override;

    QLabel lCounts;
    QLabel labRemark; ///< what else the list has to say
    QPushButton Command1[5];

protected:
    /// The commands of both lists, by their index; 1 and 4 are their own.
    enum Command { Sort, Print, Close, Find, Own };
    /// The columns that both lists begin with.
    enum Column { Barcode, Title, Unit, ReaderCode, ReaderName };

    /// `plan` must outlive the screen.
    SortedList(const Workplace& place, const SortedListPlan& plan);

    void showCount(int lines);
    int lines() const { return Grid1.Rows() - 1; }

private:
    void offerSorting();
    void openReaderCard();

    const SortedListPlan& m_plan;
};

} // namespace quilla
