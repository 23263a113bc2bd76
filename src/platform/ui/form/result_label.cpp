#include "platform/ui/form/result_label.h"

#include <QAccessibleWidget>

namespace quilla {

namespace {

QAccessibleInterface* makeInterface(const QString&, QObject* object)
{
    auto* label = qobject_cast<ResultLabel*>(object);
    return label ? new QAccessibleWidget(label, QAccessible::Notification) : nullptr;
}

} // namespace

ResultLabel::ResultLabel(QWidget* parent)
    : QLabel(parent)
{
    static const bool installed = (QAccessible::installFactory(makeInterface), true);
    Q_UNUSED(installed)
}

/// Readers differ in what they listen to: a name that changed, a notification that came up, an alert.
void ResultLabel::announce(const QString& text)
{
    setAccessibleName(text);
    if (!QAccessible::isActive()) return;
    for (const auto type : {QAccessible::ObjectShow, QAccessible::Alert}) {
        QAccessibleEvent event(this, type);
        QAccessible::updateAccessibility(&event);
    }
}

} // namespace quilla
