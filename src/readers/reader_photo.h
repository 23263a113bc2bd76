#pragma once

#include "platform/ui/form/photo_box.h"
#include "platform/ui/form/popup_menu.h"

#include <functional>

namespace quilla {

/// The photo of a reader, kept as the path of its file: a double click chooses another one, the right mouse
/// button can take it away. The path is the tool tip too.
class ReaderPhoto final : public PhotoBox {
    Q_OBJECT

public:
    explicit ReaderPhoto(QWidget* parent = nullptr);

    void setFile(const QString& file);
    QString file() const { return toolTip(); }

    /// Lets the operator choose a picture file: gets the dialog's filter, returns the path, or an empty text
    /// after a cancel.
    using Chooser = std::function<QString(QWidget* parent, const QString& filter)>;
    /// Takes the place of the file dialog.
    void setChooser(Chooser chooser) { m_choose = std::move(chooser); }

    CreateMenu PhotoMenu;

private:
    void offer();
    void choose();

    Chooser m_choose;
};

} // namespace quilla
