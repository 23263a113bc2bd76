#pragma once

#include "platform/core/text.h"

namespace quilla {

/// The bare name in a caption, as a screen reader should say it: without access key, closing colon
/// and the blanks that only space the characters out. "用户名(&U):" is "用户名", "&Q 关闭" is "关闭",
/// "性    别：" is "性别".
QString captionName(QStringView caption);

/// "记录数：" and the count, as the count label of a list shows it.
QString recordCountText(qsizetype count);

} // namespace quilla
