#pragma once

#include "frame/session.h"
#include "platform/ui/editor_mode.h"

#include <QStringList>

#include <array>

namespace quilla {

/// The text boxes of the card editor.
namespace CardBox {
enum {
    ReaderCode,
    Name,
    LoanCopies,
    OnLoan,
    Issued,
    Term,
    Memo,
    Type, ///< repeats the list of types
    LoanDays,
    OverdueFine,
    DefileFine,
    LostFine,
    Renewals,
    RenewalDays,
    HoldDays,
    HoldCopies,
    ArtsCopies,
    ScienceCopies,
    ArtsOnLoan,
    ScienceOnLoan,
    Reserved,
    Count
};
}

/// Its lists.
namespace CardList {
enum { Sex, Type, Unit, Status, Count };
}

/// Its check boxes.
namespace CardCheck {
enum { MayHoldOverdue, NeedsNoCard, Count };
}

/// The boxes of the reader's papers.
namespace CardDetail {
enum { Number, Email, Address, Count };
}

/// How many characters may be typed; nothing else is limited.
inline constexpr int ReaderNameLimit = 10;
inline constexpr int ReaderMemoLimit = 100;

/// A reader's papers, a row of their own that may be missing.
struct ReaderPapers {
    QString kind;
    std::array<QString, CardDetail::Count> texts;
};

/// The circulation parameters of a reader type or of one card, as texts of the boxes.
struct CardParameters {
    std::array<std::pair<int, QString>, 11> boxes; ///< which box holds which text
    std::array<bool, CardCheck::Count> checks {};
};

/// A card as it stands on the screen.
struct ReaderCard {
    std::array<QString, CardBox::Count> boxes;
    std::array<QString, CardList::Count> lists;
    std::array<bool, CardCheck::Count> checks {};
    QString photo; ///< path of the picture file
    ReaderPapers papers;
};

/// What is being done to a card.
struct CardEdit {
    EditorMode mode;
    /// The code that the card had when its change was asked for, else empty.
    QString previousCode;
};

/// The screen of a card, as far as saving needs it.
class ReaderCardView {
public:
    virtual ~ReaderCardView() = default;
    virtual ReaderCard shownCard() const = 0;
    virtual bool hasChoices(int list) const = 0;
    virtual void setBox(int box, const QString& text) = 0;
    virtual void setList(int list, const QString& text) = 0;
    virtual void focusBox(int box) = 0; ///< enables it
    virtual void focusList(int list) = 0;
    virtual void showParameters() = 0; ///< at the screen's full height
    virtual void tellFailure(const QString& headline, const QString& detail) = 0;
};

/// A card that is found, and what is known of its papers.
struct LoadedCard {
    ReaderCard card;
    /// Nothing when they could not be read: they must not be written over then.
    std::optional<ReaderPapers> papers;
};

// All of these go on after a failing statement.

/// The reader types and units that can be chosen, each once; nothing when they could not be read.
std::optional<QStringList> cardTypes(Session& session);
std::optional<QStringList> cardUnits(Session& session);
/// The card with that code; nothing when there is none or it could not be read.
std::optional<LoadedCard> readCard(Session& session, const QString& readercode);
/// The parameters that a new card of the type takes, all 0 when the type has none; nothing when they could not
/// be read.
std::optional<CardParameters> parametersOfType(Session& session, const QString& readerclass);
/// The boxes and states of a new card: issued today, valid for a year.
ReaderCard newCard(Session& session);

/// The term meant by a count of 1 to 5 years from the day of issue, or from today where that is none; nothing for any other text.
std::optional<QString> termOfYears(Session& session, const QString& years, const QString& issued);

/// Checks the card shown and writes it; false when it was refused or could not be written, which is told. A new card and a change under the same code are written without a transaction: what worked before a failure stays. A new code is carried through all tables of the reader in one, except for the lost-book register, whose open entries keep the old one. Throws `Error` when the number of loans is none: that ends the program.
bool saveCard(Session& session, const CardEdit& edit, ReaderCardView& view);

} // namespace quilla
