#pragma once

#include "frame/refusal.h"
#include "frame/session.h"
#include "platform/core/editor_mode.h"
#include "readers/rule_texts.h"

#include <QStringList>

namespace quilla {

/// How many characters may be typed; what is stored may be longer. The code has no limit.
namespace CardLimit {
inline constexpr int Name = 10;
inline constexpr int Sex = 10;
inline constexpr int Type = 50;
inline constexpr int Unit = 100;
inline constexpr int Status = 20;
inline constexpr int Memo = 100;
inline constexpr int PapersKind = 20;
inline constexpr int PapersNumber = 50;
inline constexpr int Email = 100;
inline constexpr int Address = 400;
} // namespace CardLimit

/// A reader's papers, a row of their own that may be missing.
struct ReaderPapers {
    QString kind {};
    QString number {};
    QString email {};
    QString address {};
    bool operator==(const ReaderPapers&) const = default;
};

/// A card as it stands on the screen.
struct ReaderCard {
    QString code;
    QString name;
    QString sex;
    QString type;
    QString unit;
    QString status;
    QString issued;
    QString term;
    QString memo;
    QString photo; ///< path of the picture file
    QString onLoan;
    QString artsOnLoan;
    QString scienceOnLoan;
    QString reserved;
    RuleTexts rules;
    ReaderPapers papers;
    bool operator==(const ReaderCard&) const = default;
};

/// What is being done to a card.
struct CardEdit {
    EditorMode mode;
    /// The code as the database has it, blanks in front included; empty for a new card.
    QString storedCode {};
    bool takesNewCode = false; ///< the change of its code was asked for
};

/// Where the focus goes after a refusal. A rule is `FirstRule` and its place in `numberRules`.
namespace CardField {
enum { Code, Name, Unit, Issued, Term, FirstRule };
}

/// What keeps a card from being saved, in the order in which an operator meets it.
std::optional<Refusal> missingReader(const ReaderCard& card);
std::optional<Refusal> missingTypeOrUnit(const ReaderCard& card, bool hasUnits);
std::optional<Refusal> wrongDates(const ReaderCard& card);
/// All rules but the quota.
std::optional<Refusal> wrongNumbers(const RuleTexts& rules);
/// A card without a quota and a loan period would borrow nothing. Throws `Error` when the quota is no number.
std::optional<Refusal> missingLimits(const RuleTexts& rules);

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

/// A card that is found, and what is known of its papers.
struct LoadedCard {
    ReaderCard card; ///< its texts without blanks around them
    QString storedCode; ///< the code as the database has it
    /// Nullopt when they could not be read: they must not be written over then.
    std::optional<ReaderPapers> papers;
};

// All of these go on after a failing statement.

/// Of what a card has one.
enum class CardChoice { Type, Unit };

/// The texts to choose from, each once, as they are stored; nullopt when they could not be read.
std::optional<QStringList> cardChoices(Session& session, CardChoice choice);
/// The card with that code; nullopt when there is none or it could not be read.
std::optional<LoadedCard> readCard(Session& session, const QString& readercode);
/// A new card: issued today, valid for a year.
ReaderCard newCard(Session& session);
/// The rules of a reader type, all 0 where the type has none; nullopt when they could not be read.
std::optional<RuleTexts> rulesOfType(Session& session, const QString& readerclass);
/// The term that is meant by a number of up to 5 years after the day of issue, or after today where that is
/// no date. Nullopt for any other text.
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
