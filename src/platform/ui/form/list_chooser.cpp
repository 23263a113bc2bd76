#include "platform/ui/form/list_chooser.h"

#include "platform/ui/form/form.h"
#include "platform/ui/look/theme.h"

#include <QHeaderView>
#include <QLayout>
#include <QLineEdit>
#include <QScreen>
#include <QScrollBar>

namespace quilla {

namespace {

constexpr int LinesShown = 3;
constexpr int WidestColumn = 6000; // twips

} // namespace

gListfrm::gListfrm(QLineEdit& target)
    : QWidget(target.window(), Qt::Popup | Qt::FramelessWindowHint)
    , m_target(target)
{
    setObjectName(u"gListfrm"_s);
    QUILLA_NAMES(Grid1);
    build(*this, column(Grid1));
    layout()->setContentsMargins(0, 0, 0, 0);
    Grid1.horizontalHeader()->hide();
    Grid1.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    Grid1.setFollowsPointer(true);
    Grid1.setToolTip(u"<点击>/<回车>/<空格>“选定”;<Esc>“取消”"_s);
    Grid1.setAccessibleName(u"可选内容"_s);
    setFocusProxy(&Grid1);
    connect(&Grid1, &FlexGrid::rowClicked, this, &gListfrm::choose);
    connect(&Grid1, &FlexGrid::rowOpened, this, &gListfrm::choose);
    connect(&Grid1, &FlexGrid::blankPressed, this, &gListfrm::choose);
    connect(&Grid1, &FlexGrid::escapePressed, this, &QWidget::close);
}

void gListfrm::loadData(Recordset& records)
{
    Grid1.bind(records);
    std::vector<int> widths;
    for (int col = 0; col < Grid1.Cols(); ++col)
        widths.push_back(std::min(Grid1.contentTwips(col), WidestColumn));
    Grid1.setColWidths(widths);
    Grid1.setRow(1);
}

void gListfrm::fitToLines()
{
    const int lines = Grid1.Rows() - 1;
    const bool scrolls = lines > LinesShown;
    const int frame = 2 * Grid1.frameWidth();
    Grid1.setVerticalScrollBarPolicy(scrolls ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
    int width = frame + (scrolls ? Grid1.verticalScrollBar()->sizeHint().width() : 0);
    for (int col = 0; col < Grid1.Cols(); ++col)
        width += pixelsOf(Grid1.ColWidth(col), Grid1);
    Grid1.setFixedSize(
        std::max(width, m_target.width()), frame + std::min(lines, LinesShown) * Grid1.rowHeight(0));
    resize(Grid1.size()); // adjustSize() makes no window lower than a hundred pixels
}

void gListfrm::popUp()
{
    fitToLines();
    const QRect screen = m_target.screen()->availableGeometry();
    QPoint at = m_target.mapToGlobal(QPoint(0, m_target.height()));
    at.setX(std::max(screen.left(), std::min(at.x(), screen.right() + 1 - width())));
    move(at);
    show();
    Grid1.setFocus();
}

void gListfrm::choose()
{
    m_target.setText(Grid1.current(Grid1.Col()));
    close();
    m_target.setFocus();
    Q_EMIT chosen();
}

} // namespace quilla
