#pragma once

#include "frame/record_ops.h"
#include "platform/core/editor_mode.h"
#include "platform/report/report_viewer.h"

#include <array>

namespace quilla {

/// The boxes of the parameter editor, and its list of types.
namespace ParameterBox {
enum {
    Type = -1,
    LoanDays,
    LoanCopies,
    OverdueFine,
    DefileFine,
    LostFine,
    Renewals,
    RenewalDays,
    HoldDays,
    HoldCopies,
    ArtsCopies,
    ScienceCopies,
    Count
};
}

/// How long a reader type's name may be.
inline constexpr int ReaderTypeWidth = 50;

/// The rules of one reader type, as texts of the editor's boxes.
struct Parameters {
    QString readerclass;
    std::array<QString, ParameterBox::Count> numbers;
    bool mayHoldOverdue = false;
    bool needsNoCard = false;
};

/// The rules of all types, one a row. Throws `Error`.
std::optional<Recordset> listParameters(Session& session);
/// The types that can be chosen, each once. Throws `Error`.
QStringList readerTypes(Session& session);
/// The numbers of a type as its rules have them; empty texts when there are none. Throws `Error`.
std::array<QString, ParameterBox::Count> readParameters(Session& session, const QString& readerclass);

/// Whether the text is a number that its column holds.
bool isParameter(int box, const QString& text);
/// The box was left: false for a text that is no number, which is told.
bool checkLeftBox(Session& session, int box, const QString& text);

/// What keeps the rules from being saved, which is told; nothing when they can be. While adding it enters
/// the type at once, known or not, and a later fault does not take it back. Throws `Error`.
std::optional<int> checkParameters(Session& session, const EditorMode& mode, const Parameters& parameters);

/// The rules and, where the operator wishes it, those of the cards of the type, in one transaction; the
/// question stands inside it. False when no connection can be had. Throws `Error`, and nothing is changed
/// then.
bool saveParameters(Session& session, const EditorMode& mode, const Parameters& parameters);

RecordRemoval parameterRemoval();

/// `first` is the type in the list's first line. Throws `Error`.
void printParameters(Session& session, ReportViewer& viewer, const QString& first);

} // namespace quilla
