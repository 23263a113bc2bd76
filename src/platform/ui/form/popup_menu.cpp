#include "platform/ui/form/popup_menu.h"

#include "platform/core/text.h"

#include <QApplication>
#include <QMenu>

namespace quilla {

namespace {

constexpr qsizetype LongestText = 255;

bool isSeparator(const QString& item)
{
    return trimBlanks(item) == u"-";
}

} // namespace

int CreateMenu::Popup(const QStringList& items)
{
    const int number = m_chooser ? m_chooser(items) : ask(items);
    const bool chosen = number >= 1 && number <= items.size() && !isSeparator(items[number - 1]);
    m_chosen = chosen ? trimBlanks(items[number - 1].left(LongestText)) : QString();
    return chosen ? number : 0;
}

int CreateMenu::ask(const QStringList& items) const
{
    QMenu menu(QApplication::activeWindow());
    for (qsizetype i = 0; i < items.size(); ++i) {
        QAction* entry = isSeparator(items[i]) ? menu.addSeparator() : menu.addAction(items[i]);
        entry->setData(int(i) + 1);
    }
    const QAction* chosen = menu.exec(QCursor::pos());
    return chosen ? chosen->data().toInt() : 0;
}

} // namespace quilla
