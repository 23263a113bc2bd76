#pragma once

#include <QIcon>

namespace quilla {

/// The picture of a toolbar button by its key: "JHBook", "Reader", "Tj", "Fkcl", "BookOut", "Jycs",
/// "Password" or "Quit". Drawn anew at every size, so it is crisp at any scale. Null for another key.
QIcon toolbarIcon(const QString& key);

/// Left or right, as in the bar of a calendar.
QIcon arrowIcon(Qt::ArrowType direction);

/// The picture of the program itself.
QIcon applicationIcon();

enum class Sign { Information, Warning, Stop, Question };
/// The picture beside the text of a message box.
QIcon messageIcon(Sign sign);

} // namespace quilla
