#pragma once

#include <QHash>
#include <QString>

#include <array>
#include <chrono>

namespace quilla {

/// Per-user storage of texts, addressed by application, section and key.
class SettingsStore {
public:
    virtual ~SettingsStore() = default;
    /// The stored text, or `fallback` when the key is missing.
    virtual QString get(const QString& application, const QString& section, const QString& key,
        const QString& fallback) const = 0;
    /// Stores the text for good. Throws `Error` when it could not be written.
    virtual void set(
        const QString& application, const QString& section, const QString& key, const QString& value)
        = 0;
};

/// One ini file an application below `folder` ("<folder>/<application>/settings.ini"), readable by its
/// owner alone, since the stored connection text holds a password. Another process's change is seen a
/// tenth of a second later at most.
class FileSettings final : public SettingsStore {
public:
    /// The user's own configuration folder when `folder` is empty.
    explicit FileSettings(QString folder = {});

    QString get(const QString& application, const QString& section, const QString& key,
        const QString& fallback) const override;
    void set(const QString& application, const QString& section, const QString& key,
        const QString& value) override;

    QString fileOf(const QString& application) const;

    /// Takes what can be read out of a file that holds something else too. Returns the name under which the
    /// file stays as it was; empty for one that is sound or missing. Throws `Error` that says what to do when
    /// the file can't be read at all.
    QString mend(const QString& application);

private:
    /// What the file held when it was last read, and how it looked then: each database operation asks
    /// for the stored text several times, and a file that did not change is not read again.
    struct Snapshot {
        QByteArray path;
        std::chrono::steady_clock::time_point lookedAt {};
        std::array<qint64, 4> look {};
        QHash<QString, QString> values;
        bool damaged = false; ///< the file holds more than could be read
    };
    const Snapshot& snapshotOf(const QString& application) const;

    QString m_folder;
    mutable QHash<QString, Snapshot> m_snapshots; ///< by application
};

} // namespace quilla
