#pragma once

#include "frame/record_list.h"
#include "platform/core/editor_mode.h"
#include "platform/ui/form/text_box.h"
#include "readers/holiday_ops.h"

namespace quilla {

/// Adds or changes one period of the holiday calendar.
class holidayaddFrm final : public RecordEditor {
    Q_OBJECT

public:
    explicit holidayaddFrm(Session& session, QWidget* parent = nullptr);
    /// Puts a holiday before the operator in mode "E"; a fresh editor is in mode "A".
    void edit(const ClosingPeriod& holiday);

    /// A holiday was saved, as a new one or over the one put before the operator.
    std::function<void(const ClosingPeriod&, bool added)> Saved;

    TextBox Text1[HolidayBox::Count];

private:
    bool save() override;
    void startNext() override;
    void setMode(const QString& letter, const ClosingPeriod& holiday);
    void checkName();

    Session& m_session;
    EditorMode m_mode;
    QString m_name; ///< of the holiday under edit
};

} // namespace quilla
