#pragma once

#include <QPlainTextEdit>

namespace quilla {

/// Remarks of several lines and of a limited length. Enter moves on, Ctrl+Enter begins a line; the whole text
/// is selected on entry. What was there before may be longer than the limit, and is not cut.
class MemoBox final : public QPlainTextEdit {
    Q_OBJECT

public:
    explicit MemoBox(QWidget* parent = nullptr);

    /// How many characters can be typed.
    void setMaxLength(int length);
    void setText(const QString& text);
    QString text() const { return toPlainText(); }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool event(QEvent* event) override;

private:
    void cutTyped();

    int m_limit = -1; ///< none
    int m_longest = -1; ///< what may stand in the box now
};

} // namespace quilla
