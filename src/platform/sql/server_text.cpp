#include "platform/sql/server_text.h"

#include "platform/sql/analyser.h"
#include "platform/sql/parser.h"
#include "platform/sql/scan.h"
#include "platform/sql/statement_refusal.h"

#include <algorithm>
#include <numeric>

namespace quilla::sql {

namespace {

Kind kindOf(const Literal& literal)
{
    if (literal.quoted) return Kind::Text;
    const bool whole
        = std::all_of(literal.text.begin(), literal.text.end(), [](QChar c) { return isDigit(c.unicode()); });
    return whole ? Kind::Integer : Kind::Decimal;
}

/// Where the literal begins in the statement, with its quote and the N in front of it.
qsizetype beginOf(QStringView tsql, const Literal& literal)
{
    qsizetype begin = literal.text.utf16() - tsql.utf16();
    if (!literal.quoted) return begin;
    --begin;
    const bool national = begin > 0 && tsql[begin - 1].toUpper() == u'N'
        && (begin == 1 || !continuesWord(tsql[begin - 2].unicode()));
    return national ? begin - 1 : begin;
}

void takeOutLiterals(QStringView tsql, const std::vector<Literal>& literals, const std::vector<int>& pinned,
    Translation& result)
{
    QString text;
    qsizetype at = 0;
    for (int i = 0; i < int(literals.size()); ++i) {
        if (std::ranges::find(pinned, i) != pinned.end()) continue;
        const Literal& literal = literals[i];
        const qsizetype begin = beginOf(tsql, literal);
        text += tsql.sliced(at, begin - at);
        text += u'?';
        at = literal.text.utf16() - tsql.utf16() + literal.text.size() + (literal.quoted ? 1 : 0);
        result.parameters.push_back({i, kindOf(literal), -1});
    }
    result.text = text.append(tsql.sliced(at)).toUtf8();
}

void describe(Statement& statement, const Schema& schema, Translation& result)
{
    const auto* call = std::get_if<Execute>(&statement);
    if (call) result.procedure = call->procedure;
    result.returnsRows = call || std::holds_alternative<Query>(statement);
    try {
        for (const Column& column : Analyser(schema).run(statement))
            if (result.returnsRows) result.columns.push_back(column.kind);
    } catch (const Refusal&) {
        result.columns.clear(); // the server decides whether the kinds go together
    }
}

} // namespace

Translation serverTranslation(
    QStringView tsql, const std::vector<Literal>& literals, const Schema& schema, std::vector<int>& pinned)
{
    Translation result;
    try {
        Parsed parsed = parse(tsql);
        pinned = std::move(parsed.pinned);
        describe(parsed.statement, schema, result);
    } catch (const Refusal&) {
        pinned.resize(literals.size());
        std::iota(pinned.begin(), pinned.end(), 0);
        const std::vector<Token> tokens = lex(tsql);
        for (const QStringView word : {u"select", u"exec", u"execute", u"shape"})
            result.returnsRows = result.returnsRows || tokens.front().isWord(word);
    }
    result.writes = !result.returnsRows;
    takeOutLiterals(tsql, literals, pinned, result);
    return result;
}

} // namespace quilla::sql
