#include "platform/ui/form/save_height.h"

#include <QGridLayout>
#include <QWidget>

namespace quilla {

namespace {

constexpr int EdgeGap = 7;
constexpr int RowGap = 5;

/// What stands side by side in a field keeps its distance, which it would take from the rows.
void bringRowsNearer(QGridLayout& rows)
{
    for (auto* field : rows.findChildren<QBoxLayout*>())
        field->setSpacing(field->spacing());
    rows.setVerticalSpacing(RowGap);
}

} // namespace

void saveHeight(std::initializer_list<QWidget*> parts)
{
    for (QWidget* part : parts) {
        const QMargins usual = part->layout()->contentsMargins();
        part->layout()->setContentsMargins(usual.left(), EdgeGap, usual.right(), EdgeGap);
        for (auto* rows : part->layout()->findChildren<QGridLayout*>())
            bringRowsNearer(*rows);
    }
}

} // namespace quilla
