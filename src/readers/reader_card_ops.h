#pragma once

#include "frame/session.h"
#include "platform/core/editor_mode.h"

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
    bool operator==(const ReaderPapers&) const = default;
};

/// A card as it stands on the screen.
struct ReaderCard {
    std::array<QString, CardBox::Count> boxes;
    std::array<QString, CardList::Count> lists;
    std::array<bool, CardCheck::Count> checks {};
    QString photo; ///< path of the picture file
    ReaderPapers papers;
    bool operator==(const ReaderCard&) const = default;
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

/// The texts to choose from in the list of types or units, each once; nothing when they could not be read.
std::optional<QStringList> cardChoices(Session& session, int list);
/// The card with that code; nothing when there is none or it could not be read.
std::optional<LoadedCard> readCard(Session& session, const QString& readercode);
/// A new card: issued today, valid for a year.
ReaderCard newCard(Session& session);
/// Puts the parameters of a reader type over those of the card, all 0 where the type has none. False when
/// they could not be read; the card is as it was then.
bool takeParameters(Session& session, const QString& readerclass, ReaderCard& card);
/// The boxes that `takeParameters` fills.
std::vector<int> parameterBoxes();
/// The term that is meant by a number of up to 5 years after the day of issue, or after today where that is
/// none. Nothing for any other text.
std::optional<QString> termOfYears(Session& session, const QString& years, const QString& issued);

/// Checks the card on the screen and writes it. False when it was refused or not wholly written, which is
/// told.
///
/// A new card, and a change under the same code, is written without a transaction: what worked beside a
/// failing statement stays. A new code is carried into all tables of the reader in one transaction; an open
/// entry in the register of lost books keeps the old one. The number of loans goes back as it is shown.
/// Throws `Error` when the quota is no number.
bool saveCard(Session& session, const CardEdit& edit, ReaderCardView& view);

} // namespace quilla
