#pragma once

#include "frame/record_ops.h"
#include "platform/ui/grid/list_screen.h"

#include <QDialog>

namespace quilla {

/// A list screen of records. The text of the first column identifies a record; 增加 and 修改 open an editor.
/// The derived screens say what the records are.
class RecordList : public ListScreen {
    Q_OBJECT

public:
    QLabel lCounts;

protected:
    /// The commands, by their index in the screen's `Command1`.
    enum Command { Add, Remove, Close, Edit };

    RecordList(Session& session, const QString& name, const QString& title, const WidthRule& rule,
        RecordRemoval removal);

    /// Enter and a double click in the grid edit, Delete removes.
    template <std::size_t Count> void wire(QPushButton (&Command1)[Count])
    {
        wireButtons({std::begin(Command1), std::end(Command1)});
    }
    /// Puts the parts in their places; for the end of the screen's own constructor.
    void arrange(const std::vector<std::reference_wrapper<QPushButton>>& buttons);
    /// Counts the lines anew and shares the width.
    void linesChanged();

    virtual void addRecord() = 0;
    /// Of the current line, which holds a record.
    virtual void editRecord() = 0;

    Session& m_session;

private:
    void wireButtons(const std::vector<std::reference_wrapper<QPushButton>>& buttons);
    void editCurrent();
    void removeSelected();

    const RecordRemoval m_removal;
};

/// The dialog over one record: 保存增加 goes on to the next one, 保存 closes, 关闭 leaves.
class RecordEditor : public QDialog {
    Q_OBJECT

public:
    QPushButton Command1[3];

protected:
    RecordEditor(const QString& name, const QStringList& captions, QWidget* parent);

    /// False when the record was refused, which has been reported.
    virtual bool save() = 0;
    virtual void startNext() = 0;
};

} // namespace quilla
