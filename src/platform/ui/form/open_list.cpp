#include "platform/ui/form/open_list.h"

#include "platform/core/text.h"
#include "platform/ui/form/text_box.h"

#include <QComboBox>
#include <QLineEdit>

namespace quilla {

void takeAnyText(QComboBox& list)
{
    list.setEditable(true);
    list.setInsertPolicy(QComboBox::NoInsert);
    list.setCompleter(nullptr);
    keepPlain(*list.lineEdit());
    QObject::disconnect(list.lineEdit(), &QLineEdit::editingFinished, &list, nullptr);
}

QString chosenOrTyped(const QComboBox& list)
{
    const QString text = list.currentText();
    return list.findText(text, Qt::MatchExactly) >= 0 ? text : trimBlanks(text);
}

} // namespace quilla
