#pragma once

#include "platform/core/editor_mode.h"
#include "platform/ui/form/text_box.h"
#include "readers/reader_list_ops.h"

#include <QDialog>
#include <QPushButton>

namespace quilla {

/// Enters or renames an entry: `MaddDzlx1Frm` a reader type, `MadddzdwFrm` a unit.
class ReaderNameFrm final : public QDialog {
    Q_OBJECT

public:
    ReaderNameFrm(Session& session, const ReaderList& list, QWidget* parent = nullptr);

    void SetDataMode(const QString& mode);
    /// Takes the entry that mode "E" renames.
    void InfoLoad(const ReaderListEntry& entry);

    TextBox Text1;
    QPushButton cmdAdd;
    QPushButton CmdSave;
    QPushButton cmdQuit;

private:
    void save(NameButton button);
    QString name() const;
    void add(NameButton button);
    void retype(int box);

    Session& m_session;
    const ReaderList& m_list;
    EditorMode m_mode;
    ReaderListEntry m_entry;
};

} // namespace quilla
