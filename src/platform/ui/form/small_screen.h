#pragma once

#include <QSize>

#include <initializer_list>

class QWidget;

namespace quilla {

/// For a form that would be higher than a small screen: brings its rows nearer together, and to the edges of
/// `parts`, which are the form itself and groups and pages in it. Call it after `build`.
void saveHeight(std::initializer_list<QWidget*> parts);

/// Lets what is on the form scroll when it is higher than this room, so that its lowest buttons can be
/// reached. `build` does it for dialogs; a screen in the client area scrolls with that.
void scrollWhereHigher(QWidget& form, int room);

} // namespace quilla
