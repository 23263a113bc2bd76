#pragma once

#include "frame/refusal.h"
#include "readers/reader_card_ops.h"

namespace quilla {

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

} // namespace quilla
