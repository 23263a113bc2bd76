#pragma once

#include <QSortFilterProxyModel>
#include <QTableView>

namespace quilla {

/// The lines of the session list, each in the colour of its outcome beside the word for it.
class ScanListView final : public QTableView {
    Q_OBJECT

public:
    explicit ScanListView(QWidget* parent = nullptr);

    /// The chosen lines as text, a tab between two cells; all lines when none is chosen.
    QString chosenText() const;
    /// What stands in the list while it has no lines.
    void setEmptyNote(const QString& text);

Q_SIGNALS:
    void opened(int row); ///< Enter or a double click
    void typed(const QString& text); ///< something to look for

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void shareWidth();

    QString m_emptyNote;
};

} // namespace quilla
