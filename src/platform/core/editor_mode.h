#pragma once

#include "platform/core/text.h"

namespace quilla {

/// The mode letter of a record editor: "A" adds, "E" edits, anything else only shows the record.
/// Kept in upper case whatever is handed over.
class EditorMode {
public:
    EditorMode() = default;
    explicit EditorMode(const QString& mode)
        : m_letter(mode.toUpper())
    {
    }

    const QString& letter() const { return m_letter; }
    bool isAdd() const { return m_letter == u"A"; }
    bool isEdit() const { return m_letter == u"E"; }
    bool mayAdd() const { return isAdd(); } ///< state of the button that saves and stays
    bool maySave() const { return isAdd() || isEdit(); } ///< state of the button that saves and closes

private:
    QString m_letter;
};

} // namespace quilla
