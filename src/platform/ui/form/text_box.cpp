#include "platform/ui/form/text_box.h"

#include "platform/core/text.h"
#include "platform/ui/look/theme.h"

#include <QFocusEvent>
#include <QToolTip>

namespace quilla {

namespace {

/// The focus that goes and comes back with the window, or with a menu.
bool goesWithWindow(const QFocusEvent& event)
{
    return event.reason() == Qt::PopupFocusReason || event.reason() == Qt::ActiveWindowFocusReason;
}

bool isUnseen(QChar c)
{
    return c.category() == QChar::Other_Control || c == QChar::LineSeparator
        || c == QChar::ParagraphSeparator;
}

/// Line breaks and tabs between words as blanks, and nothing else of what is unseen; no half character at the
/// end, where a limit may have cut one.
QString plainText(const QString& text)
{
    QString lines = text;
    lines.replace(u"\r\n"_s, u"\n"_s);
    QString plain;
    for (const QChar c : lines)
        if (!isUnseen(c) || c.isSpace()) plain += isUnseen(c) ? QChar(u' ') : c;
    if (!text.isEmpty() && isUnseen(text.back()))
        while (plain.endsWith(u' '))
            plain.chop(1);
    if (!plain.isEmpty() && plain.back().isHighSurrogate()) plain.chop(1);
    return plain;
}

} // namespace

void tellFull(QWidget& box, int limit)
{
    QToolTip::showText(
        box.mapToGlobal(QPoint(0, box.height())), u"最多 %1 个字符，多出的没有输入"_s.arg(limit), &box);
}

void keepPlain(QLineEdit& box)
{
    QObject::connect(&box, &QLineEdit::inputRejected, &box, [&box] {
        if (box.text().size() >= box.maxLength()) tellFull(box, box.maxLength());
    });
    QObject::connect(&box, &QLineEdit::textEdited, &box, [&box](const QString& text) {
        const QString before = plainText(text.left(box.cursorPosition()));
        const QString plain = before + text.mid(box.cursorPosition());
        if (plain == text) return;
        box.setText(plain);
        box.setCursorPosition(int(before.size()));
    });
}

TextBox::TextBox(QWidget* parent)
    : QLineEdit(parent)
{
    keepPlain(*this);
}

TextBox::TextBox(const QString& text)
    : QLineEdit(text)
{
    keepPlain(*this);
}

void TextBox::focusInEvent(QFocusEvent* event)
{
    QLineEdit::focusInEvent(event);
    // A box that is sent the focus before its window is active again, as after a message, gets it with the
    // window, and is entered even so.
    const bool comesBack = std::exchange(m_leftWithWindow, false) && goesWithWindow(*event);
    if (m_highlighted) showHighlight();
    if (comesBack) return;
    selectAll();
    m_enteredByMouse = event->reason() == Qt::MouseFocusReason;
}

void TextBox::showHighlight()
{
    QPalette colours = palette();
    colours.setColor(QPalette::Active, QPalette::Base, Theme::current().highlight);
    colours.setColor(QPalette::Inactive, QPalette::Base, Theme::current().highlight);
    setPalette(colours);
}

void TextBox::focusOutEvent(QFocusEvent* event)
{
    QLineEdit::focusOutEvent(event);
    m_leftWithWindow = goesWithWindow(*event);
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

} // namespace quilla
