#include "reservations/reader_pair.h"

#include "desk/reader_picker_form.h"
#include "platform/ui/form/form.h"
#include "reservations/reader_pair_ops.h"

namespace quilla {

ReaderPair::ReaderPair(Session& session)
    : cmdDuZhe(u"选读者(&S)"_s)
    , m_session(session)
{
    QUILLA_NAMES(Text2, cmdDuZhe);
    onFocus(Text2[0], [this] {
        if (code().isEmpty()) Text2[1].clear();
    });
    for (TextBox& box : Text2)
        onEnter(box, [this] { lookUp(); });
    onClick(cmdDuZhe, [this] { pick(); });
}

QString ReaderPair::code() const
{
    return trimBlanks(Text2[0].text());
}

void ReaderPair::lookUp()
{
    if (code().isEmpty()) {
        Text2[1].clear();
        return Text2[0].setFocus();
    }
    const auto name = findReaderName(m_session, code());
    if (!name) return;
    Text2[1].setText(*name);
    if (m_step) m_step();
}

/// Both boxes are emptied first and stay so when nobody is picked.
void ReaderPair::pick()
{
    for (TextBox& box : Text2)
        box.clear();
    ReaderPickerFrm picker(m_session, everyReaderPicker(), Text2[0].window());
    picker.exec();
    if (picker.PickedCode.isEmpty()) return;
    Text2[0].setText(picker.PickedCode);
    Text2[1].setText(picker.Text2[ReaderDetail::Name].text());
}

} // namespace quilla
