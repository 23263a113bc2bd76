#pragma once

class QCoreApplication;

namespace quilla {

/// What holds for keys and wheel in the whole program:
///
/// - a wheel changes the value of a list, a number or a page only while that control has the focus, and gives
///   it to none;
/// - Alt and a letter that several controls share goes to the first of them in the screen under the
///   operator's hands, in the order of Tab: the letters of a screen come before those of the menu bar;
/// - Alt and a letter that means nothing types nothing.
void applyInputRules(QCoreApplication& application);

} // namespace quilla
