#include "platform/ui/form/working_form.h"

#include "platform/ui/form/form.h"
#include "platform/ui/look/theme.h"

#include <QCloseEvent>

namespace quilla {

WorkingFrm::WorkingFrm(QWidget* owner)
    : QWidget(owner, Qt::Dialog | Qt::WindowStaysOnTopHint)
    , Label1(u"总记录数："_s)
    , labAll(u"0"_s)
    , Label2(u"已经处理："_s)
    , labTo(u"0"_s)
    , Label3(u"正在准备，请稍候…………………………"_s)
    , cmdQuit(u"取消 &Q"_s)
{
    setObjectName(u"WorkingFrm"_s);
    setWindowTitle(u"输出数据到excel"_s);
    QUILLA_NAMES(showBar, Label1, labAll, Label2, labTo, Label3, cmdQuit);
    showBar.setRange(0, 100);
    showBar.setAccessibleName(u"进度"_s);
    build(*this,
        column(row(Label1, labAll, stretch(), Label2, labTo, stretch()), showBar, Label3,
            row(stretch(), cmdQuit)));
    setMinimumWidth(pixelsOf(5400, *this));
    onClick(cmdQuit, [this] { cmdQuit.setEnabled(false); });
    adjustSize();
    if (owner) move(owner->mapToGlobal(owner->rect().center()) - rect().center());
    show();
    raise();
}

void WorkingFrm::setTotal(qsizetype total)
{
    m_total = total;
    labAll.setText(QString::number(total));
    repaint();
}

void WorkingFrm::setDone(qsizetype done)
{
    Label3.hide();
    labTo.setText(QString::number(done));
    if (m_total > 0) showBar.setValue(int(done * 100 / m_total));
    labTo.repaint();
}

/// The close box asks for the end as the button does; the run takes the form away itself.
void WorkingFrm::closeEvent(QCloseEvent* event)
{
    cmdQuit.setEnabled(false);
    event->ignore();
}

} // namespace quilla
