#include "platform/ui/form/editor.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>

namespace quilla {

namespace {

void enable(QAbstractButton& button, bool wanted)
{
    if (button.isEnabled() != wanted) button.setEnabled(wanted);
}

class FilteredBox final : public QObject {
public:
    FilteredBox(QLineEdit& box, DigitFilter filter, Prompt& prompt)
        : QObject(&box)
        , m_box(box)
        , m_filter(std::move(filter))
        , m_prompt(prompt)
    {
        box.installEventFilter(this);
    }

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::KeyPress) return refuses(static_cast<QKeyEvent*>(event)->text());
        if (event->type() == QEvent::InputMethod)
            return refuses(static_cast<QInputMethodEvent*>(event)->commitString());
        return false;
    }

private:
    /// Keys without a character (arrows, Delete) are not the filter's; Tab leaves the box.
    bool refuses(const QString& typed)
    {
        for (QChar character : typed) {
            if (character == u'\t' || character == u'\x7f' || passesFilter(m_filter, character, m_prompt))
                continue;
            m_box.clear();
            m_box.setFocus();
            return true;
        }
        return false;
    }

    QLineEdit& m_box;
    DigitFilter m_filter;
    Prompt& m_prompt;
};

} // namespace

EditorMode SetDataMode(const QString& mode, QAbstractButton& cmdAdd, QAbstractButton& CmdSave)
{
    EditorMode kept(mode);
    enable(cmdAdd, kept.mayAdd());
    enable(CmdSave, kept.maySave());
    return kept;
}

void filterDigits(QLineEdit& box, const DigitFilter& filter, Prompt& prompt)
{
    new FilteredBox(box, filter, prompt);
}

void filterDigits(QComboBox& list, const DigitFilter& filter, Prompt& prompt)
{
    if (list.lineEdit()) filterDigits(*list.lineEdit(), filter, prompt);
}

} // namespace quilla
