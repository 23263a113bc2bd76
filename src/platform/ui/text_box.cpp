#include "platform/ui/text_box.h"

#include "platform/core/text.h"
#include "platform/ui/theme.h"

#include <QFocusEvent>

namespace quilla {

TextBox::TextBox(QWidget* parent)
    : QLineEdit(parent)
{
}

TextBox::TextBox(const QString& text)
    : QLineEdit(text)
{
}

void TextBox::focusInEvent(QFocusEvent* event)
{
    QLineEdit::focusInEvent(event);
    if (event->reason() == Qt::PopupFocusReason || event->reason() == Qt::ActiveWindowFocusReason) return;
    selectAll();
    m_enteredByMouse = event->reason() == Qt::MouseFocusReason;
    if (!m_highlighted) return;
    QPalette colours = palette();
    colours.setColor(QPalette::Active, QPalette::Base, Theme().highlight);
    colours.setColor(QPalette::Inactive, QPalette::Base, Theme().highlight);
    setPalette(colours);
}

void TextBox::focusOutEvent(QFocusEvent* event)
{
    QLineEdit::focusOutEvent(event);
    if (m_highlighted && event->reason() != Qt::PopupFocusReason) setPalette({});
}

/// The click that brought the focus also sets the cursor, which drops the selection; it comes back
/// unless the operator dragged one of his own.
void TextBox::mouseReleaseEvent(QMouseEvent* event)
{
    QLineEdit::mouseReleaseEvent(event);
    if (m_enteredByMouse && !hasSelectedText()) selectAll();
    m_enteredByMouse = false;
}

MaskDateEdit::MaskDateEdit(const QString& mask, QChar blank)
    : m_blank(blank)
{
    setMask(mask);
}

void MaskDateEdit::setMask(const QString& mask)
{
    clear();
    m_mask = mask;
    QString digits = mask;
    digits.replace(u'#', u'0'); // Qt's "#" would take signs too
    setInputMask(digits.isEmpty() ? digits : digits + u';' + m_blank);
}

QString MaskDateEdit::Text() const
{
    return m_mask.isEmpty() ? text() : displayText();
}

QString MaskDateEdit::emptyText() const
{
    QString empty = m_mask;
    return empty.replace(u'#', m_blank);
}

} // namespace quilla
