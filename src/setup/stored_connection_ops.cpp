#include "setup/stored_connection_ops.h"

#include "frame/connection_ops.h"
#include "frame/sublib.h"
#include "platform/db/about_database.h"
#include "platform/db/connection_text.h"

namespace quilla {

namespace {

QString storedText(const SettingsStore& settings)
{
    return settings.get(StoredText::Application.toString(), StoredText::Section.toString(),
        StoredText::Key.toString(), StoredText::Missing.toString());
}

void store(SettingsStore& settings, const QString& text)
{
    settings.set(
        StoredText::Application.toString(), StoredText::Section.toString(), StoredText::Key.toString(), text);
}

} // namespace

bool hasStoredText(const SettingsStore& settings)
{
    return storedText(settings) != StoredText::Missing;
}

void storeConnection(SettingsStore& settings, const Target& target)
{
    if (target.file == embeddedDatabaseFile()) return storeOwnDatabase(settings);
    store(settings, target.connectionText);
}

void storeOwnDatabase(SettingsStore& settings)
{
    store(settings, buildConnectionText({BuiltInDataSource, u"quilla"_s, {}, {}, {}, {}}));
}

QString storedPlace(const SettingsStore& settings)
{
    if (!hasStoredText(settings)) return {};
    const DatabaseFacts facts = databaseFacts(ConnectionItems(storedText(settings)));
    return facts.engine + u"，"_s + facts.place;
}

} // namespace quilla
