#include "readers/reader_list_form.h"

#include "platform/ui/form/form.h"
#include "platform/ui/grid/list_screen.h"
#include "platform/ui/look/theme.h"
#include "readers/reader_name_editor.h"

namespace quilla {

namespace {

enum Column { Id, Name };
const std::vector<int> Widths {0, 4800}; // twips; the number stays hidden

} // namespace

MadddzlxFrm::MadddzlxFrm(Session& session, int index)
    : m_session(session)
{
    setObjectName(u"MadddzlxFrm"_s);
    setWindowTitle(u"Quilla-定义 读者类型&单位"_s);
    QUILLA_NAMES(Option1, Grid1, CmdDzcs);
    setCaptions(Option1, {u"定义读者类型"_s, u"定义读者单位"_s});
    onClick(Option1, [this](int kind) { SelectListKind(kind); });
    // Each button's tool tip is the key under which it is known.
    const struct {
        QString caption;
        QString key;
        void (MadddzlxFrm::*step)();
    } commands[] {{u"&A 增加"_s, u"Add"_s, &MadddzlxFrm::addEntry},
        {u"&E 修改"_s, u"Edit"_s, &MadddzlxFrm::editEntry},
        {u"&D 删除"_s, u"Del"_s, &MadddzlxFrm::removeEntry}, {u"&C 退出"_s, u"Quit"_s, &MadddzlxFrm::leave}};
    for (std::size_t i = 0; i < std::size(commands); ++i) {
        CmdDzcs[i].setText(commands[i].caption);
        CmdDzcs[i].setToolTip(commands[i].key);
        onClick(CmdDzcs[i], [this, step = commands[i].step] { (this->*step)(); });
    }
    build(*this,
        column(row(Option1[0], room(16), Option1[1], stretch()), Piece(Grid1).grow(),
            row(stretch(), CmdDzcs[0], CmdDzcs[1], CmdDzcs[2], CmdDzcs[3])));
    onOpen(Grid1, [this](int) { editEntry(); });
    resize(pixelsOf(6600, *this), pixelsOf(5400, *this));
    SelectListKind(index);
    Grid1.setFocus();
}

void MadddzlxFrm::SelectListKind(int index)
{
    m_kind = index == ReaderUnits ? ReaderUnits : ReaderTypes;
    Option1[m_kind].setChecked(true);
    Grid1.setAccessibleName(list().caption);
    Grid1.setUp(2, u"编号|"_s + list().caption, Widths);
    LoadCombo();
}

void MadddzlxFrm::LoadCombo()
{
    auto entries = readList(m_session, list());
    if (!entries) return;
    const QString remembered = current().id;
    fillGrid(Grid1, *entries, {.format = u"编号|"_s + list().caption, .widths = Widths, .key = remembered});
}

ReaderListEntry MadddzlxFrm::current() const
{
    return {Grid1.current(Id), Grid1.current(Name)};
}

void MadddzlxFrm::runEditor(const QString& mode, const ReaderListEntry& entry)
{
    ReaderNameFrm editor(m_session, list(), this);
    editor.SetDataMode(mode);
    editor.InfoLoad(entry);
    editor.exec();
    LoadCombo();
}

void MadddzlxFrm::addEntry()
{
    runEditor(u"A"_s, {});
}

void MadddzlxFrm::editEntry()
{
    if (!current().id.isEmpty()) runEditor(u"E"_s, current());
}

void MadddzlxFrm::removeEntry()
{
    if (current().id.isEmpty()) return;
    list().remove(m_session, current());
    LoadCombo();
}

void MadddzlxFrm::leave()
{
    closeScreen(*this);
}

} // namespace quilla
