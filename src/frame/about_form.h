#pragma once

#include <QLabel>
#include <QPushButton>
#include <QWidget>

namespace quilla {

struct Session;

/// What this program is, and on what it runs, to be copied into a support question.
class AboutFrm final : public QWidget {
    Q_OBJECT

public:
    explicit AboutFrm(const Session& session);

    QLabel labFacts;
    QLabel labCopied;
    QPushButton cmdCopy;
    QPushButton cmdOK;

private:
    void copyFacts();
};

} // namespace quilla
