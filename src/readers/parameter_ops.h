#pragma once

#include "frame/record_ops.h"
#include "frame/refusal.h"
#include "platform/core/editor_mode.h"
#include "platform/report/report_viewer.h"
#include "readers/rule_texts.h"

namespace quilla {

/// How long a reader type's name may be.
inline constexpr int ReaderTypeWidth = 50;

/// The rules of one reader type, as texts of the editor's boxes.
struct Parameters {
    QString readerclass;
    RuleTexts rules;
};

/// The box of a refusal: the list of types, or else the place of the rule in `numberRules`.
namespace ParameterBox {
inline constexpr int Type = NumberRules;
}

/// The rules of all types, one a row. Throws `Error`.
std::optional<Recordset> listParameters(Session& session);
/// The types that can be chosen, each once. Throws `Error`.
QStringList readerTypes(Session& session);
/// The numbers of a type as its rules have them; empty texts when there are none. Throws `Error`.
RuleTexts readParameters(Session& session, const QString& readerclass);

/// The refusal of a box that was left with a text that is no number, or none that its column can hold.
std::optional<Refusal> leftBoxRefusal(int box, const QString& text);

/// What keeps the rules from being saved. While adding it enters the type at once, known or not, and a later
/// fault does not take it back. Throws `Error`.
std::optional<Refusal> checkParameters(
    Session& session, const EditorMode& mode, const Parameters& parameters);

/// The rules and, where the operator wishes it, those of the cards of the type, in one transaction; the
/// question stands inside it. False when no connection can be had. Throws `Error`, and nothing is changed
/// then.
bool saveParameters(Session& session, const EditorMode& mode, const Parameters& parameters);

RecordRemoval parameterRemoval();

/// `first` is the type in the list's first line. Throws `Error`.
void printParameters(Session& session, ReportViewer& viewer, const QString& first);

} // namespace quilla
