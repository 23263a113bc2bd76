#include "setup/stored_connection_ops.h"

#include "frame/connection_ops.h"
#include "frame/sublib.h"
#include "platform/db/about_database.h"
#include "platform/db/connection_text.h"
#include "platform/db/embedded.h"

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

QString placeInWords(const QString& connectionText)
{
    const ConnectionItems items(connectionText);
    const bool named = items.value(u"DSN") && !embeddedFileOf(items);
    return named ? u"数据源 "_s + *items.value(u"DSN") : databaseFacts(items).place;
}

std::optional<QString> storedFile(const SettingsStore& settings)
{
    if (!hasStoredText(settings)) return embeddedDatabaseFile();
    return embeddedFileOf(ConnectionItems(storedText(settings)));
}

QString storedPlace(const SettingsStore& settings)
{
    return hasStoredText(settings) ? placeInWords(storedText(settings)) : QString();
}

} // namespace quilla
