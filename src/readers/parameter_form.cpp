#include "readers/parameter_form.h"

#include "platform/ui/form/form.h"
#include "readers/parameter_editor.h"

namespace quilla {

namespace {

const QString Format
    = u"读者类型|可借天数|可借册数|超期罚款|污损罚款|丢失罚款|续借次数|续借天数|过期可借|无证借书|预借天数|预借册数|文艺类可借册数|理科类可借册数"_s;
enum Column { Type, HoldsOverdue = 8, NeedsNoCard = 9 };
const QString Yes = u"是"_s;
/// Equal columns, wider under the longer captions; the last two are hidden.
const WidthRule Widths {.spareSmall = 80,
    .spareLarge = 300,
    .parts = 13,
    .columns = {{0, 0, 1, 150, false}, {1, 9, 1, 0, false}, {10, 11, 1, 150, false}, {12, 13, 0, 0, false}}};

} // namespace

JycsFrm::JycsFrm(const Workplace& place)
    : RecordList(place.session, u"JycsFrm"_s, u"Quilla流通参数设定"_s, Widths, parameterRemoval())
    , m_reports(place.reports)
{
    QUILLA_NAMES(Command1);
    setCaptions(Command1, {u"&A 增加"_s, u"&D 删除"_s, u"&X 关闭"_s, u"&E 修改"_s, u"&P 打印报表"_s});
    wire(Command1);
    QPushButton& print = Command1[4];
    onClick(print, [this] { printParameters(m_session, m_reports, Grid1.TextMatrix(1, Type)); });
    arrange({Command1[Add], Command1[Edit], Command1[Remove], print, Command1[Close]});
    Grid1.setUp(2, Format);
    loadData();
}

void JycsFrm::RefreshParameterList(const QString& readerclass)
{
    if (auto rules = listParameters(m_session))
        fillGrid(Grid1, *rules,
            {.format = Format, .yesNo = {HoldsOverdue, NeedsNoCard}, .count = &lCounts, .key = readerclass});
    linesChanged();
}

void JycsFrm::addRecord()
{
    JycsAddFrm editor(m_session, this);
    run(editor);
}

void JycsFrm::editRecord()
{
    JycsAddFrm editor(m_session, this);
    editor.edit(Grid1.current(Type), Grid1.current(HoldsOverdue) == Yes, Grid1.current(NeedsNoCard) == Yes);
    run(editor);
}

void JycsFrm::run(JycsAddFrm& editor)
{
    editor.Saved = [this](const QString& readerclass) { RefreshParameterList(readerclass); };
    editor.exec();
}

} // namespace quilla
