#include "platform/ui/form/window_places.h"

#include "platform/core/error.h"
#include "platform/core/settings.h"
#include "platform/core/text.h"
#include "platform/ui/form/on_screen.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QMdiSubWindow>
#include <QMessageBox>
#include <QScreen>

namespace quilla {

namespace {

const QString Application = u"青简文库"_s;
const QString Section = u"Places"_s;
const QString Whole = u"whole"_s; ///< in place of a rectangle

QString nameOf(const QWidget& window)
{
    const auto* frame = qobject_cast<const QMdiSubWindow*>(&window);
    const QWidget* screen = frame ? frame->widget() : &window;
    return screen ? screen->objectName() : QString();
}

/// Whether its place is the operator's: a message or a list under a box stands where it is needed.
bool isPlaced(const QWidget& window)
{
    if (qobject_cast<const QMessageBox*>(&window) || nameOf(window).isEmpty()) return false;
    if (window.testAttribute(Qt::WA_DontShowOnScreen)) return false;
    const bool isDialogOrWindow = window.windowType() == Qt::Window || window.windowType() == Qt::Dialog;
    return qobject_cast<const QMdiSubWindow*>(&window) || (window.isWindow() && isDialogOrWindow);
}

/// The screen that shows most of the place, else the one that the window opens on.
QRect roomOf(const QWidget& window, const QRect& place)
{
    if (!window.isWindow()) return window.parentWidget()->rect();
    const QScreen* screen = QGuiApplication::screenAt(place.center());
    return (screen ? screen : window.screen())->availableGeometry();
}

QString written(const QWidget& window)
{
    const QRect place(window.pos(), window.size());
    if (window.isMaximized() || place == roomOf(window, place)) return Whole;
    return u"%1,%2,%3,%4"_s.arg(place.x()).arg(place.y()).arg(place.width()).arg(place.height());
}

QRect readPlace(const QString& text)
{
    const QStringList parts = text.split(u',');
    if (parts.size() != 4) return {};
    return {parts[0].toInt(), parts[1].toInt(), parts[2].toInt(), parts[3].toInt()};
}

void fillRoom(QWidget& window)
{
    if (window.isWindow())
        window.setWindowState(window.windowState() | Qt::WindowMaximized);
    else
        window.setGeometry(roomOf(window, {}));
}

} // namespace

WindowPlaces::WindowPlaces(SettingsStore& settings)
    : m_settings(settings)
{
    qApp->installEventFilter(this);
}

bool WindowPlaces::putBack(QWidget& window) const
{
    const QString text = stored(nameOf(window));
    const QRect place = readPlace(text);
    if (text == Whole) {
        fillRoom(window);
        return true;
    }
    if (!place.isValid()) return false;
    const QRect seen = placedWithin(place, roomOf(window, place));
    window.setWindowState(window.windowState() & ~Qt::WindowMaximized);
    // the client area scrolls, a screen does not
    const QSize least = window.isWindow() ? QSize() : window.minimumSizeHint();
    window.resize(seen.size().expandedTo(least));
    window.move(seen.topLeft());
    return true;
}

bool WindowPlaces::eventFilter(QObject* watched, QEvent* event)
{
    auto* window = qobject_cast<QWidget*>(watched);
    if (window && event->type() == QEvent::WindowActivate && window == m_appeared) {
        m_appeared = nullptr;
        keepOnScreen(*window);
    }
    const bool appears = event->type() == QEvent::Show;
    if (!window || event->spontaneous() || !(appears || event->type() == QEvent::Hide)) return false;
    if (auto* dialog = qobject_cast<QFileDialog*>(window); dialog && appears) followFolder(*dialog);
    if (!isPlaced(*window)) return false;
    if (!appears)
        keep(*window);
    else if (window->isWindow())
        open(*window);
    return false;
}

/// Its frame comes around it after it has appeared, and is there for certain when it has become active.
void WindowPlaces::open(QWidget& window)
{
    putBack(window);
    m_appeared = &window;
    QMetaObject::invokeMethod(
        &window, [&window] { keepOnScreen(window); }, Qt::QueuedConnection);
}

void WindowPlaces::keep(const QWidget& window)
{
    if (!window.isMinimized()) store(nameOf(window), written(window));
}

void WindowPlaces::followFolder(QFileDialog& dialog)
{
    const QString key = u"Folder."_s + dialog.windowTitle();
    const QString folder = stored(key);
    if (!folder.isEmpty() && QDir(folder).exists()) dialog.setDirectory(folder);
    connect(&dialog, &QFileDialog::fileSelected, this,
        [this, key](const QString& file) { store(key, QFileInfo(file).absolutePath()); });
}

/// A place that cannot be stored is no reason to stop the operator's work.
void WindowPlaces::store(const QString& key, const QString& text)
{
    try {
        if (stored(key) != text) m_settings.set(Application, Section, key, text);
    } catch (const Error&) {
        return;
    }
}

QString WindowPlaces::stored(const QString& key) const
{
    return m_settings.get(Application, Section, key, {});
}

} // namespace quilla
