#pragma once

#include <QColor>
#include <QLabel>
#include <QPointer>
#include <QTimer>

#include <array>
#include <memory>
#include <vector>

namespace quilla {

/// Balloon help for the controls of one window, with a text of its own for each that may change while the
/// mouse moves.
class cTooltip : public QObject {
    Q_OBJECT

public:
    enum Kind { Automatic = 0, Reshow = 1, Autopop = 2, Initial = 3 };

    cTooltip() = default;

    /// Makes the tip window at the first call; later calls do nothing. True if it exists.
    bool Create(QWidget* parent);
    /// False without a tip window, for a control that is registered already (its text stays) and for an
    /// object that is no control. An empty text becomes "Tool" and the number of the tool.
    bool AddTool(QObject* control, const QString& text);
    /// True if the control was registered.
    bool RemoveTool(QObject* control);

    QColor BackColor() const { return m_backColor; }
    void setBackColor(const QColor& colour);
    /// Reading turns the text black and returns that black.
    QColor ForeColor();
    void setForeColor(const QColor& colour);
    /// Milliseconds; the lowest two bits of `kind` count. Setting the automatic time sets all three.
    int DelayTime(int kind) const;
    void setDelayTime(int kind, int milliseconds);
    /// 0 without a tip window.
    WId hwnd() const;
    /// Sides 0 to 3: left, top, right, bottom; pixels.
    int Margin(int side) const;
    void setMargin(int side, int pixels);
    /// Pixels; -1 for no limit, which any value below 1 asks for.
    int MaxTipWidth() const { return m_maxWidth; }
    void setMaxTipWidth(int pixels);
    qint16 ToolCount() const { return qint16(m_tools.size()); }
    /// Up to the first zero character; empty for an unknown control.
    QString ToolText(QObject* control) const;
    void setToolText(QObject* control, const QString& text);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Tool {
        QWidget* control;
        QString text;
    };

    const Tool* find(const QObject* control) const;
    static QWidget* mouseTarget(QWidget& control);
    static QPoint tipPlace(const QPoint& pointer, const QSize& tip, const QRect& screen);
    void waitForRest(QWidget& control);
    void showTip();
    void hideTip();
    void dress();

    std::vector<Tool> m_tools;
    std::unique_ptr<QLabel> m_tip;
    QPointer<QWidget> m_parent;
    QPointer<QWidget> m_under; ///< the registered control under the mouse
    QTimer m_wait;
    QTimer m_pop;
    std::array<int, 4> m_delays {500, 100, 5000, 500};
    std::array<int, 4> m_margins {0, 0, 0, 0};
    QColor m_backColor;
    QColor m_foreColor;
    int m_maxWidth = -1;
};

} // namespace quilla
