#pragma once

#include <QLineEdit>

namespace quilla {

/// What is typed or pasted becomes one plain line: a line break from a spreadsheet's cell would stand in the
/// box unseen, and no statement takes a control character. What is longer than the box may hold is cut, and
/// a hint beside the box says so.
void keepPlain(QLineEdit& box);

/// Shows a hint beside the box: something was cut, since the box holds no more than `limit` characters.
void tellFull(QWidget& box, int limit);

/// A text box whose whole text is selected when it gets the focus, by key or by mouse, so that typing
/// replaces the old value.
class TextBox : public QLineEdit {
    Q_OBJECT

public:
    explicit TextBox(QWidget* parent = nullptr);
    explicit TextBox(const QString& text);

    /// Whether the box takes the highlight colour while it has the focus.
    void setHighlighted(bool highlighted) { m_highlighted = highlighted; }

protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void showHighlight();

    bool m_highlighted = false;
    bool m_leftWithWindow = false; ///< the focus went, but not to another box
    bool m_enteredByMouse = false;
};

/// A box with a date mask such as "####-##-##", where "#" takes a digit; without a mask a plain box.
class MaskDateEdit : public TextBox {
    Q_OBJECT

public:
    /// `blank` stands for each digit that is not typed yet.
    explicit MaskDateEdit(const QString& mask = QStringLiteral("####-##-##"), QChar blank = u'_');

    /// Empties the box.
    void setMask(const QString& mask);
    const QString& Mask() const { return m_mask; }
    /// As it stands in the box, with the blanks of what is missing: empty is "____-__-__".
    QString Text() const;

private:
    QString m_mask;
    QChar m_blank;
};

} // namespace quilla
