#pragma once

#include "platform/core/date_box.h"
#include "platform/core/dates.h"
#include "platform/core/prompt.h"
#include "platform/ui/form/text_box.h"

#include <QCheckBox>

#include <functional>

namespace quilla {

/// A check box that governs two date boxes: from and to.
class DateRange : public QWidget {
    Q_OBJECT

public:
    /// Fresh: ticking always fills both boxes with today and clearing empties them. Kept: ticking fills
    /// them only when both are empty, and clearing leaves what was typed.
    enum class Filling { Fresh, Kept };

    /// `serverDate` is asked at each tick that fills the boxes.
    DateRange(const QString& caption, Filling filling, std::function<Moment()> serverDate);

    bool isOn() const { return Check1.isChecked(); }
    /// The dates as every database reads them.
    QString from() const { return databaseDate(Text1[0].text()); }
    QString to() const { return databaseDate(Text1[1].text()); }
    /// "pass" or empty; a box that was refused is enabled and has the focus.
    QString CheckDateBox(int index, Prompt& prompt);
    /// Whether both boxes pass, the first one tested first.
    bool passes(Prompt& prompt);

    QCheckBox Check1;
    TextBox Text1[2];

private:
    void follow(bool ticked);
    void setOpen(bool open);

    Filling m_filling;
    std::function<Moment()> m_serverDate;
};

} // namespace quilla
