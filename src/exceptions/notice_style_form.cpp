#include "exceptions/notice_style_form.h"

#include "platform/ui/form/form.h"
#include "platform/ui/look/theme.h"

namespace quilla {

namespace {

enum Style { ForReaders, ForUnits };

} // namespace

ShowStyleFrm::ShowStyleFrm(QString& groupField, QWidget* parent)
    : QDialog(parent)
    , CmdOK(u"&N 下一步"_s)
    , CmdCancel(u"&C 取 消"_s)
    , m_groupField(groupField)
{
    setObjectName(u"ShowStyleFrm"_s);
    setWindowTitle(u"催还单打印设置"_s);
    QUILLA_NAMES(Option1, Label1, CmdOK, CmdCancel);
    setCaptions(Option1, {u"个人催还单"_s, u"集体催还单"_s});
    build(*this,
        column(Option1[ForReaders], Option1[ForUnits], room(8), Label1, stretch(),
            row(stretch(), CmdOK, CmdCancel)));
    setMinimumWidth(pixelsOf(4500, *this));
    const QString meanings[] {u"针对某个读者打印催还单"_s, u"针对某个单位打印催还单"_s};
    for (const Style style : {ForReaders, ForUnits})
        connect(&Option1[style], &QRadioButton::toggled, this, [this, text = meanings[style]](bool on) {
            if (on) Label1.setText(text);
        });
    Option1[ForReaders].setChecked(true);
    onClick(CmdOK, [this] { goOn(); });
    onClick(CmdCancel, [this] { reject(); });
}

void ShowStyleFrm::goOn()
{
    m_groupField = Option1[ForUnits].isChecked() ? u"readunit"_s : u"readercode"_s;
    accept();
}

void ShowStyleFrm::reject()
{
    m_groupField.clear();
    QDialog::reject();
}

} // namespace quilla
