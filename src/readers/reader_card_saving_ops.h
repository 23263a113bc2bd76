#pragma once

#include "platform/core/editor_mode.h"
#include "readers/reader_card_ops.h"

namespace quilla {

/// What is being done to a card.
struct CardEdit {
    EditorMode mode;
    /// The code as the database has it, blanks in front included; empty for a new card.
    QString storedCode {};
    bool takesNewCode = false; ///< the change of its code was asked for
};

/// The screen of a card, as far as saving needs it.
class ReaderCardView {
public:
    virtual ~ReaderCardView() = default;
    virtual ReaderCard shownCard() const = 0;
    virtual bool hasUnits() const = 0; ///< to choose from
    virtual void showQuota(const QString& text) = 0;
    virtual void showStatus(const QString& text) = 0;
    virtual void focusField(int field) = 0; ///< enables it
    virtual void showParameters() = 0; ///< at the screen's full height
    virtual void tellFailure(const QString& headline, const QString& detail) = 0;
};

/// Checks the card on the screen and writes it. False when it was refused or not wholly written; both are
/// reported.
///
/// A new card, and a change under the same code, is written without a transaction: what worked beside a
/// failing statement stays. A new code is carried into all tables of the reader in one transaction; an open
/// entry in the register of lost books keeps the old one. The number of loans goes back as it is shown.
/// Throws `Error` when the quota is no number.
bool saveCard(Session& session, const CardEdit& edit, ReaderCardView& view);

} // namespace quilla
