#include "platform/ui/look/quilla_style.h"

#include "platform/ui/look/icons.h"
#include "platform/ui/look/style_parts.h"
#include "platform/ui/look/style_shapes.h"

#include <QPainter>
#include <QStyleFactory>
#include <QStyleOption>
#include <QToolButton>

namespace quilla {

namespace {

constexpr int TitleGap = 3;

bool has(const QStyleOption* option, QStyle::StateFlag flag)
{
    return option->state.testFlag(flag);
}

} // namespace

QuillaStyle::QuillaStyle(const Theme& theme)
    : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion")))
    , m_theme(theme)
{
}

int QuillaStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const
{
    switch (metric) {
    case PM_LayoutLeftMargin:
    case PM_LayoutRightMargin:
    case PM_LayoutTopMargin:
    case PM_LayoutBottomMargin:
        return 12;
    case PM_LayoutHorizontalSpacing:
    case PM_LayoutVerticalSpacing:
        return 8;
    case PM_HeaderMargin:
        return 6;
    case PM_FocusFrameHMargin: // beside the text of a grid's cell
        return 5;
    case PM_TitleBarHeight:
        return 28;
    case PM_MdiSubWindowFrameWidth:
        return 3;
    case PM_ScrollBarExtent:
        return 14;
    case PM_MenuPanelWidth:
        return 1;
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
        return 0;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int QuillaStyle::styleHint(
    StyleHint hint, const QStyleOption* option, const QWidget* widget, QStyleHintReturn* data) const
{
    // The access keys are part of the captions that operators know; they are always underlined.
    if (hint == SH_UnderlineShortcut) return 1;
    if (hint == SH_EtchDisabledText) return 0; // it would be drawn twice
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0; // the program's own buttons have none
    if (hint == SH_Table_GridLineColor) return int(m_theme.line.rgb());
    return QProxyStyle::styleHint(hint, option, widget, data);
}

void QuillaStyle::drawBox(
    QPainter* painter, const QRect& rect, const QColor& face, const QColor& edge, bool ring) const
{
    const qreal width = ring ? 2 : 1;
    const QRectF frame = QRectF(rect).adjusted(width / 2, width / 2, -width / 2, -width / 2);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(ring ? m_theme.link : edge, width));
    painter->setBrush(face);
    painter->drawRoundedRect(frame, FrameCorner, FrameCorner);
    painter->restore();
}

/// A text box or button face with an arrow; the text is drawn by others.
void QuillaStyle::drawComboBox(QPainter* painter, const QStyleOptionComboBox& list) const
{
    const QColor face = list.palette.color(list.editable ? QPalette::Base : QPalette::Button);
    const bool enabled = has(&list, State_Enabled);
    drawBox(painter, list.rect, face, m_theme.border, enabled && has(&list, State_HasFocus));
    const QPointF middle = QRectF(proxy()->subControlRect(CC_ComboBox, &list, SC_ComboBoxArrow)).center();
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(enabled ? m_theme.text : m_theme.disabledText, 1.4));
    painter->drawPolyline(
        QPolygonF({middle + QPointF(-4, -2), middle + QPointF(0, 2), middle + QPointF(4, -2)}));
    painter->restore();
}

void QuillaStyle::drawButtonFace(QPainter* painter, const QStyleOption* option) const
{
    QColor face = option->palette.color(QPalette::Button);
    if (has(option, State_Sunken) || has(option, State_On))
        face = m_theme.restingSelection;
    else if (has(option, State_MouseOver) && has(option, State_Enabled))
        face = m_theme.header;
    const QColor edge = has(option, State_Enabled) ? m_theme.border : m_theme.line;
    drawBox(painter, option->rect, face, edge, has(option, State_HasFocus));
}

/// Around a tick, a tab or a picture, also where the program has set the focus. Buttons and lists show it on
/// their own frame.
void QuillaStyle::drawFocusRing(QPainter* painter, const QStyleOption* option, const QWidget* widget) const
{
    if (qobject_cast<const QPushButton*>(widget) || qobject_cast<const QComboBox*>(widget)) return;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(m_theme.link, 1.5));
    painter->setBrush(Qt::NoBrush);
    painter->drawRoundedRect(
        QRectF(option->rect).adjusted(0.75, 0.75, -0.75, -0.75), FrameCorner, FrameCorner);
    painter->restore();
}

/// With the ring of the focus; Fusion's own is a shade over the text.
void QuillaStyle::drawTabLabel(QPainter* painter, const QStyleOptionTab& tab, const QWidget* widget) const
{
    QStyleOptionTab label(tab);
    label.state.setFlag(State_HasFocus, false);
    QProxyStyle::drawControl(CE_TabBarTabLabel, &label, painter, widget);
    label.rect = tab.rect.adjusted(3, 4, -4, -3);
    if (has(&tab, State_HasFocus)) drawFocusRing(painter, &label, widget);
}

/// The arrow of a sorted column stands over its caption, which keeps its room.
void QuillaStyle::drawHeader(QPainter* painter, const QStyleOptionHeader& header, const QWidget* widget) const
{
    QStyleOptionHeader unsorted(header);
    unsorted.sortIndicator = QStyleOptionHeader::None;
    QProxyStyle::drawControl(CE_Header, &unsorted, painter, widget);
    if (header.sortIndicator != QStyleOptionHeader::None) paintSortArrow(*painter, header, m_theme);
}

void QuillaStyle::drawPrimitive(
    PrimitiveElement element, const QStyleOption* option, QPainter* painter, const QWidget* widget) const
{
    switch (element) {
    case PE_PanelButtonCommand:
        return drawButtonFace(painter, option);
    case PE_PanelLineEdit:
        if (const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
            frame && frame->lineWidth > 0)
            return drawBox(painter, option->rect, option->palette.color(QPalette::Base), m_theme.border,
                has(option, State_HasFocus) && has(option, State_Enabled));
        return painter->fillRect(option->rect, option->palette.brush(QPalette::Base));
    case PE_IndicatorCheckBox:
        return paintCheck(*painter, *option, m_theme);
    case PE_IndicatorRadioButton:
        return paintRadio(*painter, *option, m_theme);
    case PE_FrameGroupBox:
        return paintGroupFrame(*painter, option->rect, m_theme);
    case PE_FrameFocusRect:
        return drawFocusRing(painter, option, widget);
    case PE_Frame:
    case PE_FrameMenu:
        return paintListFrame(*painter, *option, m_theme);
    case PE_FrameTabWidget:
        return paintTabPage(*painter, option->rect, m_theme);
    case PE_IndicatorArrowUp:
        return paintArrow(*painter, *option, Qt::UpArrow);
    case PE_IndicatorArrowDown:
        // in the corner of such a button it would stand over the text
        if (const auto* tool = qobject_cast<const QToolButton*>(widget); tool && tool->menu()) return;
        return paintArrow(*painter, *option, Qt::DownArrow);
    case PE_IndicatorArrowLeft:
        return paintArrow(*painter, *option, Qt::LeftArrow);
    case PE_IndicatorArrowRight:
        return paintArrow(*painter, *option, Qt::RightArrow);
    case PE_FrameWindow:
        painter->setPen(m_theme.border);
        return painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
    default:
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void QuillaStyle::drawControl(
    ControlElement element, const QStyleOption* option, QPainter* painter, const QWidget* widget) const
{
    if (element == CE_HeaderSection) return paintHeaderSection(*painter, option->rect, m_theme);
    if (const auto* header = qstyleoption_cast<const QStyleOptionHeader*>(option);
        header && element == CE_Header)
        return drawHeader(painter, *header, widget);
    if (const auto* tab = qstyleoption_cast<const QStyleOptionTab*>(option);
        tab && element == CE_TabBarTabShape)
        return paintTab(*painter, *tab, m_theme);
    if (const auto* tab = qstyleoption_cast<const QStyleOptionTab*>(option);
        tab && element == CE_TabBarTabLabel)
        return drawTabLabel(painter, *tab, widget);
    if (element == CE_ProgressBarGroove)
        return drawBox(painter, option->rect, m_theme.surface, m_theme.border, false);
    if (const auto* bar = qstyleoption_cast<const QStyleOptionProgressBar*>(option);
        bar && element == CE_ProgressBarContents)
        return paintProgress(*painter, *bar, m_theme);
    if (element == CE_ToolBar) {
        painter->fillRect(option->rect, m_theme.window);
        painter->setPen(m_theme.line);
        return painter->drawLine(option->rect.bottomLeft(), option->rect.bottomRight());
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void QuillaStyle::drawComplexControl(
    ComplexControl control, const QStyleOptionComplex* option, QPainter* painter, const QWidget* widget) const
{
    if (const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
        bar && control == CC_ScrollBar)
        return paintScrollBar(*painter, *bar, m_theme);
    if (const auto* title = qstyleoption_cast<const QStyleOptionTitleBar*>(option);
        title && control == CC_TitleBar)
        return paintTitleBar(*painter, *title, m_theme);
    if (control == CC_MdiControls) return paintWindowButtons(*painter, *option, m_theme);
    if (const auto* list = qstyleoption_cast<const QStyleOptionComboBox*>(option);
        list && control == CC_ComboBox && list->frame)
        return drawComboBox(painter, *list);
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

/// A group's title stands above its frame, flush with it.
QRect QuillaStyle::groupPart(const QStyleOptionGroupBox& group, SubControl part) const
{
    const int title = group.text.isEmpty() ? 0 : group.fontMetrics.height() + TitleGap;
    const QRect frame = group.rect.adjusted(0, title, 0, 0);
    if (part == SC_GroupBoxLabel)
        return QRect(group.rect.topLeft(), QSize(group.rect.width(), title - TitleGap));
    if (part == SC_GroupBoxContents) return frame.adjusted(1, 1, -1, -1);
    return frame;
}

QRect QuillaStyle::subControlRect(
    ComplexControl control, const QStyleOptionComplex* option, SubControl part, const QWidget* widget) const
{
    if (const auto* group = qstyleoption_cast<const QStyleOptionGroupBox*>(option);
        group && control == CC_GroupBox && !group->subControls.testFlag(SC_GroupBoxCheckBox))
        return groupPart(*group, part);
    if (const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
        bar && control == CC_ScrollBar)
        return scrollBarPart(*bar, part);
    if (const auto* title = qstyleoption_cast<const QStyleOptionTitleBar*>(option);
        title && control == CC_TitleBar)
        return titleBarPart(*title, part);
    if (control == CC_MdiControls) return windowButtonPart(*option, part);
    return QProxyStyle::subControlRect(control, option, part, widget);
}

QRect QuillaStyle::subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const
{
    const QRect rect = QProxyStyle::subElementRect(element, option, widget);
    return element == SE_LineEditContents ? rect.adjusted(3, 0, -3, 0) : rect;
}

QIcon QuillaStyle::standardIcon(
    StandardPixmap standard, const QStyleOption* option, const QWidget* widget) const
{
    switch (standard) {
    case SP_MessageBoxInformation:
        return messageIcon(Sign::Information);
    case SP_MessageBoxWarning:
        return messageIcon(Sign::Warning);
    case SP_MessageBoxCritical:
        return messageIcon(Sign::Stop);
    case SP_MessageBoxQuestion:
        return messageIcon(Sign::Question);
    case SP_ArrowLeft:
        return arrowIcon(Qt::LeftArrow);
    case SP_ArrowRight:
        return arrowIcon(Qt::RightArrow);
    default:
        return QProxyStyle::standardIcon(standard, option, widget);
    }
}

QSize QuillaStyle::sizeFromContents(
    ContentsType type, const QStyleOption* option, const QSize& size, const QWidget* widget) const
{
    if (type == CT_MdiControls) return windowButtonsSize();
    QSize result = QProxyStyle::sizeFromContents(type, option, size, widget);
    if (type == CT_PushButton) result = result.expandedTo(QSize(0, 30)) + QSize(8, 0);
    if (type == CT_LineEdit || type == CT_ComboBox) result = result.expandedTo(QSize(0, 30));
    return result;
}

} // namespace quilla
