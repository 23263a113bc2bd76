#include "quilla-db/first_start.h"

#include "frame/connection_ops.h"
#include "frame/sublib.h"
#include "platform/db/connection_text.h"

namespace quilla {

bool hasStoredText(const SettingsStore& settings)
{
    const QString missing = StoredText::Missing.toString();
    return settings.get(StoredText::Application.toString(), StoredText::Section.toString(),
               StoredText::Key.toString(), missing)
        != missing;
}

void storeOwnDatabase(SettingsStore& settings)
{
    settings.set(StoredText::Application.toString(), StoredText::Section.toString(),
        StoredText::Key.toString(), buildConnectionText({BuiltInDataSource, u"quilla"_s, {}, {}, {}, {}}));
}

} // namespace quilla
