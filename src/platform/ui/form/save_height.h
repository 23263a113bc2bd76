#pragma once

#include <initializer_list>

class QWidget;

namespace quilla {

/// For a form that would be higher than a small screen: brings its rows nearer together, and to the edges of
/// `parts`, which are the form itself and groups and pages in it. Call it after `build`.
void saveHeight(std::initializer_list<QWidget*> parts);

} // namespace quilla
