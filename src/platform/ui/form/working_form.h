#pragma once

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

namespace quilla {

/// Progress of a long export, on top of all windows and not modal. Its button asks for the end of the
/// run by being disabled; the run looks at `cancelRequested` at every row.
class WorkingFrm : public QWidget {
    Q_OBJECT

public:
    explicit WorkingFrm(QWidget* owner = nullptr);

    void setTotal(qsizetype total);
    /// Shows how many rows are done; the note about the preparation goes with the first one.
    void setDone(qsizetype done);
    bool cancelRequested() const { return !cmdQuit.isEnabled(); }

    QProgressBar showBar;
    QLabel Label1;
    QLabel labAll;
    QLabel Label2;
    QLabel labTo;
    QLabel Label3;
    QPushButton cmdQuit;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    qsizetype m_total = 0;
};

} // namespace quilla
