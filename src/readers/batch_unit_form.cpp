#include "readers/batch_unit_form.h"

#include "platform/core/text.h"
#include "platform/ui/form/form.h"
#include "platform/ui/look/theme.h"

namespace quilla {

namespace {

constexpr int UnitWidth = 100; // characters of a reader's unit

} // namespace

updateAll::updateAll(QWidget* parent)
    : QDialog(parent)
    , Frame1(u"将检索出的读者的读者单位，批量修改为如下内容："_s)
    , Command1(u"确定(&G)"_s)
    , Command2(u"取消(&Q)"_s)
{
    setObjectName(u"updateAll"_s);
    setWindowTitle(u"批量修改，请慎重！！！"_s);
    QUILLA_NAMES(Frame1, Text1, Command1, Command2);
    Text1.setAccessibleName(u"读者单位"_s);
    Text1.setMaxLength(UnitWidth);
    build(*this, column(group(Frame1, Text1), stretch(), row(stretch(), Command1, Command2)));
    setMinimumWidth(pixelsOf(6000, *this));
    enterAsTab({Text1});
    onClick(Command1, [this] { confirm(); });
    onClick(Command2, [this] { reject(); });
}

void updateAll::confirm()
{
    if (isBlank(Text1.text())) return Text1.setFocus();
    accept();
}

/// However the dialog is left without 确定, nothing is to be changed.
void updateAll::reject()
{
    Text1.clear();
    QDialog::reject();
}

} // namespace quilla
