#pragma once

#include "frame/session.h"
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
/// 2027-3-7, the form in which a new card offers its term: as a text it sorts after 2027-03-07.
QString unpaddedDate(const QDate& day);
/// A new card: issued today, valid for a year.
ReaderCard newCard(Session& session);
/// The rules of a reader type, all 0 where the type has none; nullopt when they could not be read.
std::optional<RuleTexts> rulesOfType(Session& session, const QString& readerclass);
/// The term that is meant by a number of up to 5 years after the day of issue, or after today where that is
/// no date. Nullopt for any other text.
std::optional<QString> termOfYears(Session& session, const QString& years, const QString& issued);

} // namespace quilla
