#pragma once

#include "frame/record_list.h"
#include "platform/ui/form/text_box.h"
#include "readers/parameter_ops.h"

#include <QCheckBox>
#include <QComboBox>

namespace quilla {

/// Adds or changes the rules of one reader type.
class JycsAddFrm final : public RecordEditor {
    Q_OBJECT

public:
    explicit JycsAddFrm(Session& session, QWidget* parent = nullptr);
    /// Puts the rules of a type before the operator in mode "E"; a fresh editor is in mode "A". The list says
    /// how the two boxes stand.
    void edit(const QString& readerclass, bool mayHoldOverdue, bool needsNoCard);

    /// The rules of that type were saved.
    std::function<void(const QString& readerclass)> Saved;

    QComboBox Combo1;
    TextBox Text1[NumberRules]; ///< in the order of `numberRules`
    QCheckBox Check1[2];

private:
    bool save() override;
    void startNext() override;
    void layOut();
    void wire();
    void leaveBox(int index);
    void leaveType();
    void focusBox(int index);
    Parameters shown() const;

    QLabel m_type {u"读者类型"_s};
    Session& m_session;
    EditorMode m_mode;
    QString m_readerclass; ///< the type under edit
};

} // namespace quilla
