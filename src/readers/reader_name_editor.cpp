#include "readers/reader_name_editor.h"

#include "platform/ui/form/editor.h"
#include "platform/ui/form/form.h"
#include "platform/ui/look/theme.h"

namespace quilla {

ReaderNameFrm::ReaderNameFrm(Session& session, const ReaderList& list, QWidget* parent)
    : QDialog(parent)
    , cmdAdd(u"&A 保存增加"_s)
    , CmdSave(u"&T 保存退出"_s)
    , cmdQuit(u"&E 取消退出"_s)
    , m_session(session)
    , m_list(list)
{
    setObjectName(list.editorName);
    setWindowTitle(list.editorTitle);
    QUILLA_NAMES(Text1, cmdAdd, CmdSave, cmdQuit);
    Text1.setMaxLength(list.width);
    build(*this,
        column(
            fields(1, {{list.caption + u'：', Text1}}), stretch(), row(stretch(), cmdAdd, CmdSave, cmdQuit)));
    enterAsTab({Text1});
    onClick(cmdAdd, [this] { save(NameButton::SaveAndAdd); });
    onClick(CmdSave, [this] { save(NameButton::SaveAndLeave); });
    onClick(cmdQuit, [this] { reject(); });
    resize(pixelsOf(5400, *this), sizeHint().height());
    SetDataMode(u"A"_s);
}

void ReaderNameFrm::SetDataMode(const QString& mode)
{
    m_mode = quilla::SetDataMode(mode, cmdAdd, CmdSave);
}

void ReaderNameFrm::InfoLoad(const ReaderListEntry& entry)
{
    m_entry = entry;
    Text1.setText(entry.name);
}

void ReaderNameFrm::save(NameButton button)
{
    if (isBlank(Text1.text())) return Text1.setFocus();
    if (m_mode.isAdd()) return add(button);
    m_list.change(m_session, m_entry, name());
    accept();
}

/// What stands there already is left as it is stored; a typed name has no blanks around it, or it would count
/// as another one.
QString ReaderNameFrm::name() const
{
    return Text1.text() == m_entry.name ? m_entry.name : trimBlanks(Text1.text());
}

void ReaderNameFrm::add(NameButton button)
{
    if (const auto refusal = m_list.add(m_session, name(), button))
        return tell(m_session.prompt, *refusal, [this](int box) { retype(box); });
    if (button == NameButton::SaveAndLeave) return accept();
    retype(NameBox::Emptied);
}

void ReaderNameFrm::retype(int box)
{
    if (box == NameBox::Kept)
        Text1.selectAll();
    else
        Text1.clear();
    Text1.setFocus();
}

} // namespace quilla
