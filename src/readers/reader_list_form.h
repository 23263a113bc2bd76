#pragma once

#include "platform/ui/grid/flex_grid.h"
#include "readers/reader_list_ops.h"

#include <QPushButton>
#include <QRadioButton>

namespace quilla {

/// Keeps the lists of reader types and of units, one at a time.
class MadddzlxFrm final : public QWidget {
    Q_OBJECT

public:
    /// `index` is the list to begin with.
    MadddzlxFrm(Session& session, int index);

    /// Shows the types for 0, the units for 1, as a choice of that option does.
    void SelectListKind(int index);
    /// Reads the list anew; the entry under the hand stays current.
    void LoadCombo();

    QRadioButton Option1[2];
    FlexGrid Grid1;
    QPushButton CmdDzcs[4];

private:
    void addEntry();
    void editEntry();
    void removeEntry();
    void leave();

    const ReaderList& list() const { return readerList(m_kind); }
    ReaderListEntry current() const;
    void runEditor(const QString& mode, const ReaderListEntry& entry);

    Session& m_session;
    ReaderListKind m_kind = ReaderTypes;
};

} // namespace quilla
