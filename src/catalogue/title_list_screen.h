#pragma once

#include "catalogue/title_search_ops.h"
#include "catalogue/title_search_screen.h"
#include "statistics/query_ops.h"

namespace quilla {

/// A search among all fields of the titles: by the box, or by the query dialog.
class TitleListScreen : public TitleSearchScreen, public QueryReceiver {
    Q_OBJECT

public:
    void loadData(const QString& condition, const QString& order) override;

    QPushButton cmdQueryAdvance;
    QPushButton Command1; ///< closes

protected:
    TitleListScreen(Session& session, const QString& name, const QString& closing);

    void searchFor(const QString& text) override;
    void clearTitles();
    /// After a search that did not fail: so many titles are shown, the first of them current.
    virtual void titlesShown(qsizetype count) = 0;
    Piece searchTools();

private:
    void show(const ListSearch& search);
    qsizetype fill(Recordset& titles);
    void queryAdvanced();
};

} // namespace quilla
