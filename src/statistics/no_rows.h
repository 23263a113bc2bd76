#pragma once

#include "platform/core/text.h"

namespace quilla {

/// What follows the title of a screen whose search found no rows.
inline const QString NoRowsNote = u"------没有符合条件的数据。。。。。。"_s;

} // namespace quilla
