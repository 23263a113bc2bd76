#include "holdings/built_in.h"

#include "platform/core/built_in_file.h"
#include "platform/core/text.h"

/// Of a static library nothing else would link it. The macro takes no namespace.
static void linkHoldingsResources()
{
    Q_INIT_RESOURCE(holdings);
}

namespace quilla {

QByteArray builtIn(const QString& name)
{
    linkHoldingsResources();
    return builtInFile(u":/holdings/"_s + name);
}

} // namespace quilla
