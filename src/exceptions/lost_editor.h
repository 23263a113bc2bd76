#pragma once

#include "exceptions/lost_book_ops.h"
#include "frame/record_list.h"
#include "platform/ui/form/just_told.h"
#include "platform/ui/form/text_box.h"

namespace quilla {

/// Enters a book that its reader reports as lost, or changes the date of the report.
class lostMangerAddfrm final : public RecordEditor, public BoxView {
    Q_OBJECT

public:
    /// `entryMode` is "A" or "E".
    lostMangerAddfrm(Session& session, const QString& entryMode, QWidget* parent = nullptr);

    /// The current line of the list into the boxes, of which only the date can be changed then.
    void LoadLostEntryFromGrid(const FlexGrid& list);

    std::function<void(const QStringList& line)> Added; ///< in the columns of the list
    std::function<void(const QString& date)> Dated;

    TextBox Text1[LostBox::Count];
    QPushButton Command2; ///< offers the copies that the reader has

private:
    void layOut();
    void wire();
    bool save() override;
    void startNext() override;
    void setMode(const QString& mode);
    void offerCopies();

    QString box(int index) const override { return Text1[index].text(); }
    void setBox(int index, const QString& text) override { Text1[index].setText(text); }
    void focusBox(int index) override { Text1[index].setFocus(); }

    Session& m_session;
    LostEntry m_entry;
    JustTold m_told;
};

} // namespace quilla
