#include "holdings/built_in.h"

#include "platform/core/error.h"
#include "platform/core/text.h"

#include <QFile>

/// Of a static library nothing else would link it. The macro takes no namespace.
static void linkHoldingsResources()
{
    Q_INIT_RESOURCE(holdings);
}

namespace quilla {

QByteArray builtIn(const QString& name)
{
    linkHoldingsResources();
    QFile file(u":/holdings/"_s + name);
    if (!file.open(QIODevice::ReadOnly)) throw Error(53, u"holdings"_s, u"程序内缺少文件：%1"_s.arg(name));
    return file.readAll();
}

} // namespace quilla
