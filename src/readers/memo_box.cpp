#include "readers/memo_box.h"

#include "platform/ui/form/text_box.h"

#include <QPainter>
#include <QSignalBlocker>
#include <QStyleOption>

namespace quilla {

namespace {

constexpr int Lines = 2;

} // namespace

MemoBox::MemoBox(QWidget* parent)
    : QPlainTextEdit(parent)
{
    setTabChangesFocus(true);
    setViewportMargins(1, 1, 1, 1); // leaves the rounded corners of the frame
    connect(this, &QPlainTextEdit::textChanged, this, &MemoBox::cutTyped);
}

void MemoBox::setMaxLength(int length)
{
    m_limit = length;
    m_longest = std::max(m_limit, int(toPlainText().size()));
}

void MemoBox::setText(const QString& text)
{
    m_longest = std::max(m_limit, int(text.size()));
    setPlainText(text);
}

QSize MemoBox::sizeHint() const
{
    const int around = int(2 * document()->documentMargin()) + 2 * frameWidth();
    return {QPlainTextEdit::sizeHint().width(), Lines * fontMetrics().lineSpacing() + around};
}

QSize MemoBox::minimumSizeHint() const
{
    return {QPlainTextEdit::minimumSizeHint().width(), sizeHint().height()};
}

void MemoBox::keyPressEvent(QKeyEvent* event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!enter) return QPlainTextEdit::keyPressEvent(event);
    if (event->modifiers() & (Qt::ControlModifier | Qt::ShiftModifier))
        insertPlainText(QStringLiteral("\n"));
    else
        focusNextChild();
}

void MemoBox::focusInEvent(QFocusEvent* event)
{
    QPlainTextEdit::focusInEvent(event);
    update();
    const Qt::FocusReason reason = event->reason();
    const bool comesByItself = reason == Qt::PopupFocusReason || reason == Qt::ActiveWindowFocusReason;
    if (!comesByItself && reason != Qt::MouseFocusReason) selectAll();
}

void MemoBox::focusOutEvent(QFocusEvent* event)
{
    QPlainTextEdit::focusOutEvent(event);
    update();
}

/// The frame is that of a text box, with the ring of the focus.
bool MemoBox::event(QEvent* event)
{
    if (event->type() != QEvent::Paint) return QPlainTextEdit::event(event);
    QStyleOptionFrame frame;
    initStyleOption(&frame);
    QPainter painter(this);
    style()->drawPrimitive(QStyle::PE_PanelLineEdit, &frame, &painter, this);
    return true;
}

/// Takes back what stands before the cursor beyond the limit, no more of it and no half character.
void MemoBox::cutTyped()
{
    const QString text = toPlainText();
    const int surplus = int(text.size()) - m_longest;
    if (m_limit < 0 || surplus <= 0) return;
    const QSignalBlocker once(this);
    QTextCursor cursor = textCursor();
    int keptEnd = std::max(cursor.position() - surplus, 0);
    if (keptEnd > 0 && text[keptEnd - 1].isHighSurrogate()) --keptEnd;
    cursor.setPosition(keptEnd, QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    tellFull(*this, m_longest);
}

} // namespace quilla
