#pragma once

#include <QStringList>

#include <functional>

namespace quilla {

/// A pop-up menu built from a list of texts, shown at the mouse.
class CreateMenu {
public:
    /// Takes the place of the operator: gets the entries and returns the number to choose, 0 for none.
    using Chooser = std::function<int(const QStringList& items)>;

    /// One entry an element, numbered from 1 in their order; an element that trims to "-" is a separator
    /// and counts too. The number chosen, 0 when the menu was dismissed.
    int Popup(const QStringList& items);
    /// The trimmed text of the last choice, empty after none; at most 255 characters.
    const QString& SelMenuString() const { return m_chosen; }

    void setChooser(Chooser chooser) { m_chooser = std::move(chooser); }

private:
    int ask(const QStringList& items) const;

    Chooser m_chooser;
    QString m_chosen;
};

} // namespace quilla
