#pragma once

#include "frame/session.h"
#include "platform/report/slip.h"

#include <optional>

namespace quilla {

/// How slips are printed at this desk; off until somebody chooses a paper.
struct SlipChoice {
    std::optional<SlipPaper> paper {};
    bool asPdf = false; ///< to a file instead of the printer
};

SlipChoice slipChoice(const SettingsStore& settings);
/// Throws `Error` when it could not be stored.
void keepSlipChoice(SettingsStore& settings, const SlipChoice& choice);

/// What the reader has on loan, with due dates, as the database has it. nullopt for an unknown reader, which
/// is reported.
std::optional<Slip> loanSlip(Session& session, const QString& readercode, SlipPaper paper);

/// Where the slip goes as a file: in the documents folder, by reader and time.
QString slipFile(const QString& readercode, const Moment& now);

} // namespace quilla
