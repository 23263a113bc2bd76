#pragma once

#include "frame/workplace.h"
#include "platform/ui/form/text_box.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QWidget>

namespace quilla {

/// Asks whose overdue loans are wanted, and opens their list.
class CqTjFrm final : public QWidget {
    Q_OBJECT

public:
    explicit CqTjFrm(const Workplace& place);

    /// Opens the result with what is ticked, after a condition handed in, and closes this screen.
    void loadData(const QString& condition, const QString& order);

    QCheckBox Check1[3];
    TextBox Text1; ///< part of a name or a reader code
    QComboBox Combo1; ///< units
    QComboBox Combo2; ///< reader types
    QPushButton CmdOK;
    QPushButton CmdExit;

private:
    void layOut();
    void wire();
    QString conditionAfter(const QString& given) const;

    Session& m_session;
    ScreenHost& m_host;
};

} // namespace quilla
