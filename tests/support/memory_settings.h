#pragma once

#include "platform/core/settings.h"

#include <QHash>

namespace quilla {

/// Settings that live as long as the test.
class MemorySettings final : public SettingsStore {
public:
    QString get(const QString& application, const QString& section, const QString& key,
        const QString& fallback) const override
    {
        return values.value(application + u'/' + section + u'/' + key, fallback);
    }
    void set(
        const QString& application, const QString& section, const QString& key, const QString& value) override
    {
        values.insert(application + u'/' + section + u'/' + key, value);
    }
    QHash<QString, QString> values;
};

} // namespace quilla
