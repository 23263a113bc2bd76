#pragma once

#include "readers/reader_register_ops.h"
#include "statistics/searched_list.h"

namespace quilla {

/// The register of reader cards: finds them, opens their editor, bars and deletes cards, and gives all that
/// were found another unit. Reads nobody before the first search.
class DzglFrm final : public SearchedList {
    Q_OBJECT

public:
    explicit DzglFrm(const Workplace& place);

    /// Searches, and remembers what for.
    void loadData(const QString& condition, const QString& order) override;
    /// Repeats the last search, or lists the whole register before the first one. The current line and the
    /// order by a caption stay.
    void RefreshReaderList();
    /// Empties the list.
    void Grid1Fresh();

    QLabel Label1; ///< the heading
    QLabel iRowCount;
    QPushButton CmdDzgl[7];
    QPushButton cmdPrint;
    QPushButton cmdToExcel;

private:
    void layOut();
    void wire();
    bool list();
    void refreshAt(const QString& code);

    void addCard();
    void editCard();
    void openEditor(const QString& mode, const QString& code);
    void deleteCurrent();
    void query();
    void reportLost();
    void deleteFound();
    void offerBatch();
    QString askForUnit();
    void changeUnit();
    void print();

    QString currentCode() const { return Grid1.current(ReaderCode); }
    QStringList codesFound() const;
};

} // namespace quilla
