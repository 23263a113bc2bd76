#include "platform/ui/form/small_screen.h"

#include "platform/core/text.h"
#include "platform/ui/form/focus_scroller.h"

#include <QGridLayout>

namespace quilla {

namespace {

constexpr int EdgeGap = 7;
constexpr int RowGap = 5;
const QString WholeForm = u"WholeForm"_s;

/// What stands side by side in a field keeps its distance, which it would take from the rows.
void bringRowsNearer(QGridLayout& rows)
{
    for (auto* field : rows.findChildren<QBoxLayout*>())
        field->setSpacing(field->spacing());
    rows.setVerticalSpacing(RowGap);
}

/// Of a form that scrolls what is in it.
QLayout& contentOf(const QWidget& part)
{
    const auto* scroller = part.findChild<FocusScroller*>(WholeForm, Qt::FindDirectChildrenOnly);
    return scroller ? *scroller->widget()->layout() : *part.layout();
}

} // namespace

void saveHeight(std::initializer_list<QWidget*> parts)
{
    for (const QWidget* part : parts) {
        QLayout& content = contentOf(*part);
        const QMargins usual = content.contentsMargins();
        content.setContentsMargins(usual.left(), EdgeGap, usual.right(), EdgeGap);
        for (auto* rows : content.findChildren<QGridLayout*>())
            bringRowsNearer(*rows);
    }
}

void scrollWhereHigher(QWidget& form, int room)
{
    if (form.minimumSizeHint().height() <= room) return;
    auto* content = new QWidget;
    content->setLayout(form.layout());
    auto* scroller = new FocusScroller(&form);
    scroller->setObjectName(WholeForm);
    scroller->setWidget(content);
    auto* whole = new QVBoxLayout(&form);
    whole->setContentsMargins({});
    whole->addWidget(scroller);
}

} // namespace quilla
