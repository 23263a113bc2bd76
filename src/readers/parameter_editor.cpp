#include "readers/parameter_editor.h"

#include "platform/ui/form/editor.h"
#include "platform/ui/form/form.h"
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
    Combo1.setEditable(true);
    Combo1.setCompleter(nullptr); // a new type may be the beginning of a known one
    Combo1.setInsertPolicy(QComboBox::NoInsert); // leaving it enters it
    Combo1.addItems(readerTypes(m_session));
    Combo1.setCurrentIndex(-1);
    Combo1.lineEdit()->setMaxLength(ReaderTypeWidth);
    keepPlain(*Combo1.lineEdit());
    layOut();
    wire();
    Combo1.setFocus();
}

void JycsAddFrm::layOut()
{
    using namespace ParameterBox;
    const QString widest = u"理科类可借册数(册)"_s;
    m_type.setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_type.setMinimumWidth(fontMetrics().horizontalAdvance(widest)); // in line with the labels below
    build(*this,
        column(u"参数设置是图书馆正常流通的重要前提，请慎重填写！"_s,
            fields(1, {{m_type, row(Piece(Combo1).grow(), u"（设置流通参数前，需要先添加读者类型）"_s)}}),
            fields(2,
                {{u"可借天数(天)"_s, Text1[LoanDays]}, {u"可借册数(册)"_s, Text1[LoanCopies]},
                    {u"超期罚款(元/天)"_s, Text1[OverdueFine]}, {u"污损罚款(倍)"_s, Text1[DefileFine]},
                    {u"丢失罚款(倍)"_s, Text1[LostFine]}, {u"可续借次数(次)"_s, Text1[Renewals]},
                    {u"可续借天数(天)"_s, Text1[RenewalDays]}, {u"可预借天数(天)"_s, Text1[HoldDays]},
                    {u"可预借册数(册)"_s, Text1[HoldCopies]}, {u"文艺类可借册数(册)"_s, Text1[ArtsCopies]},
                    {u"理科类可借册数(册)"_s, Text1[ScienceCopies]}}),
            row(Check1[0], room(16), Check1[1], stretch()), stretch(),
            row(stretch(), Command1[0], Command1[1], Command1[2])));
    resize(pixelsOf(8400, *this), sizeHint().height());
}

void JycsAddFrm::wire()
{
    enterAsTab({Combo1});
    enterAsTab(allOf(Text1));
    enterAsTab(allOf(Check1));
    onLeave(Combo1, [this] { leaveType(); });
    for (int index = 0; index < ParameterBox::Count; ++index)
        onLeave(Text1[index], [this, index] { leaveBox(index); });
}

void JycsAddFrm::edit(const QString& readerclass, bool mayHoldOverdue, bool needsNoCard)
{
    m_mode = SetDataMode(u"E"_s, Command1[0], Command1[1]);
    m_readerclass = readerclass;
    setWindowTitle(u"流通参数设置----修改【%1】的流通参数"_s.arg(readerclass));
    Combo1.setEditText(readerclass);
    Combo1.setEnabled(false);
    const auto numbers = readParameters(m_session, readerclass);
    for (int index = 0; index < ParameterBox::Count; ++index)
        Text1[index].setText(numbers[index]);
    Check1[0].setChecked(mayHoldOverdue);
    Check1[1].setChecked(needsNoCard);
    Text1[0].setFocus();
}

void JycsAddFrm::leaveBox(int index)
{
    TextBox& box = Text1[index];
    box.setText(box.text().trimmed());
    if (checkLeftBox(m_session, index, box.text())) return;
    box.clear();
    box.setFocus();
}

void JycsAddFrm::leaveType()
{
    const QString type = Combo1.currentText().trimmed();
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
    parameters.readerclass = m_mode.isEdit() ? m_readerclass : Combo1.currentText().trimmed();
    for (int index = 0; index < ParameterBox::Count; ++index)
        parameters.numbers[index] = Text1[index].text().trimmed();
    parameters.mayHoldOverdue = Check1[0].isChecked();
    parameters.needsNoCard = Check1[1].isChecked();
    return parameters;
}

bool JycsAddFrm::save()
{
    const Parameters parameters = shown();
    if (const auto refused = checkParameters(m_session, m_mode, parameters)) {
        focusBox(*refused);
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
