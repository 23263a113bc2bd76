#pragma once

#include <QObject>

class QFileDialog;
class QRect;
class QWidget;

namespace quilla {

class SettingsStore;

/// Remembers in the settings where each window was left and how large, by the object name of its screen, and
/// from which folder each file dialog took its last file, by its title. A window that filled its room fills
/// it again, whatever the size of the room is by then.
///
/// Watches the whole program from its making to its end: windows and dialogs need do nothing for it. Windows
/// inside a main window are put back by the main window, which knows where they stand at first.
class WindowPlaces final : public QObject {
    Q_OBJECT

public:
    /// `settings` must outlive it.
    explicit WindowPlaces(SettingsStore& settings);

    /// Puts a window where it was left, or as near as its room allows. False when it is not known yet.
    bool putBack(QWidget& window) const;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void open(QWidget& window);
    void keep(const QWidget& window);
    void followFolder(QFileDialog& dialog);
    void store(const QString& key, const QString& text);
    QString stored(const QString& key) const;

    SettingsStore& m_settings;
    const QWidget* m_appeared = nullptr; ///< the latest window, until it is active; only compared
};

} // namespace quilla
