#include "readers/parameter_editor.h"

#include "platform/ui/form/editor.h"
#include "platform/ui/form/form.h"
#include "platform/ui/form/open_list.h"
#include "platform/ui/look/theme.h"

#include <QLineEdit>

namespace quilla {

JycsAddFrm::JycsAddFrm(Session& session, QWidget* parent)
    : RecordEditor(u"JycsAddFrm"_s, {u"&A 保存增加"_s, u"&S  保存"_s, u"&X  关闭"_s}, parent)
    , m_session(session)
    , m_mode(SetDataMode(u"A"_s, Command1[0], Command1[1]))
{
    setWindowTitle(u"流通参数设置----流通参数添加"_s);
    QUILLA_NAMES(Combo1, Text1, Check1);
    setCaptions(Check1, {u"有过期书刊时还可以借书"_s, u"可以无证借书"_s});
    takeAnyText(Combo1); // leaving it enters it
    Combo1.addItems(readerTypes(m_session));
    Combo1.setCurrentIndex(-1);
    Combo1.lineEdit()->setMaxLength(ReaderTypeWidth);
    layOut();
    wire();
    Combo1.setFocus();
}

void JycsAddFrm::layOut()
{
    const auto rules = numberRules<QString>();
    const QString widest = rules.back().caption.toString();
    std::vector<FormField> numbers;
    for (std::size_t i = 0; i < rules.size(); ++i)
        numbers.emplace_back(rules[i].caption.toString(), Text1[i]);
    m_type.setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_type.setMinimumWidth(fontMetrics().horizontalAdvance(widest)); // in line with the labels below
    build(*this,
        column(u"参数设置是图书馆正常流通的重要前提，请慎重填写！"_s,
            fields(1, {{m_type, row(Piece(Combo1).grow(), u"（设置流通参数前，需要先添加读者类型）"_s)}}),
            fields(2, numbers), row(Check1[0], room(16), Check1[1], stretch()), stretch(),
            row(stretch(), Command1[0], Command1[1], Command1[2])));
    resize(pixelsOf(8400, *this), sizeHint().height());
}

void JycsAddFrm::wire()
{
    enterAsTab({Combo1});
    enterAsTab(allOf(Text1));
    enterAsTab(allOf(Check1));
    onLeave(Combo1, [this] { leaveType(); });
    for (int index = 0; index < NumberRules; ++index)
        onLeave(Text1[index], [this, index] { leaveBox(index); });
}

void JycsAddFrm::edit(const QString& readerclass, bool mayHoldOverdue, bool needsNoCard)
{
    m_mode = SetDataMode(u"E"_s, Command1[0], Command1[1]);
    m_readerclass = readerclass;
    setWindowTitle(u"流通参数设置----修改【%1】的流通参数"_s.arg(readerclass));
    Combo1.setEditText(readerclass);
    Combo1.setEnabled(false);
    const RuleTexts stored = readParameters(m_session, readerclass);
    const auto rules = numberRules<QString>();
    for (std::size_t i = 0; i < rules.size(); ++i)
        Text1[i].setText(stored.*rules[i].number);
    Check1[0].setChecked(mayHoldOverdue);
    Check1[1].setChecked(needsNoCard);
    Text1[0].setFocus();
}

void JycsAddFrm::leaveBox(int index)
{
    TextBox& box = Text1[index];
    box.setText(trimBlanks(box.text()));
    if (const auto refusal = leftBoxRefusal(index, box.text()))
        tell(m_session.prompt, *refusal, [this](int at) { focusBox(at); });
}

void JycsAddFrm::leaveType()
{
    const QString type = chosenOrTyped(Combo1);
    if (!type.isEmpty() && Combo1.findText(type, Qt::MatchFixedString) < 0) Combo1.addItem(type);
}

void JycsAddFrm::focusBox(int index)
{
    if (index == ParameterBox::Type) return Combo1.setFocus();
    Text1[index].clear();
    Text1[index].setFocus();
}

Parameters JycsAddFrm::shown() const
{
    Parameters parameters;
    parameters.readerclass = m_mode.isEdit() ? m_readerclass : chosenOrTyped(Combo1);
    const auto rules = numberRules<QString>();
    for (std::size_t i = 0; i < rules.size(); ++i)
        parameters.rules.*rules[i].number = trimBlanks(Text1[i].text());
    parameters.rules.mayHoldOverdue = Check1[0].isChecked();
    parameters.rules.needsNoCard = Check1[1].isChecked();
    return parameters;
}

bool JycsAddFrm::save()
{
    const Parameters parameters = shown();
    if (const auto refusal = checkParameters(m_session, m_mode, parameters)) {
        tell(m_session.prompt, *refusal, [this](int box) { focusBox(box); });
        return false;
    }
    if (!saveParameters(m_session, m_mode, parameters)) return false;
    if (Saved) Saved(parameters.readerclass);
    return true;
}

void JycsAddFrm::startNext()
{
    for (TextBox& box : Text1)
        box.clear();
    for (QCheckBox& box : Check1)
        box.setChecked(false);
    Combo1.setFocus();
}

} // namespace quilla
