#include "platform/core/error.h"
#include "platform/core/text.h"
#include "platform/sql/parser.h"
#include "platform/sql/printer.h"
#include "platform/sql/shape_statement.h"
#include "platform/sql/statement_refusal.h"
#include "platform/sql/translator.h"

#include <sqlite3.h>

#include <QFile>

#include <cstdio>
#include <cstdlib>

using namespace quilla;
using namespace quilla::sql;

namespace {

[[noreturn]] void fault(const char* what, const QString& statement, const QString& text)
{
    std::fprintf(stderr, "%s\n  given: %s\n  text:  %s\n", what, qPrintable(statement), qPrintable(text));
    std::abort();
}

/// The translators and a base without rows, as the cases have them.
struct Bench {
    Bench()
    {
        QFile file(QStringLiteral(QUILLA_CASES "library.sql"));
        if (!file.open(QIODevice::ReadOnly)) std::abort();
        const QString script = QString::fromUtf8(file.readAll());
        schema = readSchema(script);
        sqlite3_open(":memory:", &base);
        sqlite3_create_collation(base, "QUILLA", SQLITE_UTF8, nullptr,
            [](void*, int, const void*, int, const void*) { return 0; });
        for (const char* name : {"getdate", "qj_like", "qj_datediff", "qj_dateadd", "qj_convert_date",
                 "qj_convert_text", "qj_date", "qj_integer", "qj_decimal", "qj_part"})
            sqlite3_create_function(
                base, name, -1, SQLITE_UTF8, nullptr, [](sqlite3_context*, int, sqlite3_value**) {}, nullptr,
                nullptr);
        std::vector<Literal> literals;
        for (const ScriptPart& part : splitScript(script))
            sqlite3_exec(
                base, sqlite.translate(part.text, literals).text.constData(), nullptr, nullptr, nullptr);
    }

    Schema schema;
    Translator sqlite {Engine::Sqlite, schema, 10};
    Translator postgres {Engine::Postgres, schema, 10};
    Translator server {Engine::SqlServer, schema, 10};
    sqlite3* base = nullptr;
};

std::optional<Translation> translated(
    Translator& translator, const QString& statement, std::vector<Literal>& literals)
{
    try {
        return translator.translate(statement, literals);
    } catch (const Error& error) {
        if (error.number != ErrorNumber::NotUnderstood || error.text.isEmpty())
            fault("another error than a refusal", statement, error.text);
        return {};
    }
}

/// One placeholder for each parameter, one literal behind each of them.
void checkParameters(const QString& statement, const Translation& translation, std::size_t literals)
{
    std::size_t count = 0;
    char closing = 0;
    for (const char c : translation.text) {
        if (closing)
            closing = c == closing ? 0 : closing;
        else if (c == '\'' || c == '"')
            closing = c;
        else if (c == '?')
            ++count;
    }
    const bool procedure = translation.text.isEmpty() && !translation.procedure.isEmpty();
    if (!procedure && count != translation.parameters.size())
        fault("placeholders and parameters differ", statement, QString::fromUtf8(translation.text));
    for (const Parameter& parameter : translation.parameters)
        if (parameter.literal < 0 || std::size_t(parameter.literal) >= literals)
            fault("a parameter without literal", statement, QString::fromUtf8(translation.text));
}

/// The engine may not know a name, but it understands what is written.
void checkSyntax(sqlite3* base, const QString& statement, const Translation& translation)
{
    sqlite3_stmt* prepared = nullptr;
    if (sqlite3_prepare_v2(base, translation.text.constData(), -1, &prepared, nullptr) != SQLITE_OK) {
        const QByteArray message = sqlite3_errmsg(base);
        for (const char* bad : {"syntax error", "unrecognized token", "incomplete input", "unterminated"})
            if (message.contains(bad))
                fault(message.constData(), statement, QString::fromUtf8(translation.text));
    }
    sqlite3_finalize(prepared);
}

/// Printed as T-SQL again it is the same statement: it reads the same and leads to the same text.
void checkRoundTrip(const QString& statement, Translator& translator, const Translation& translation)
{
    const QString printed = Printer().print(parse(statement).statement);
    try {
        if (Printer().print(parse(printed).statement) != printed) fault("printed twice", statement, printed);
    } catch (const Refusal& refusal) {
        fault("what was printed is refused", statement, printed + u' ' + refusal.reason);
    }
    std::vector<Literal> literals;
    const auto again = translated(translator, printed, literals);
    if (!again || again->text != translation.text)
        fault("the printed one means something else", statement, printed);
}

void checkTranslation(const QString& statement, Translator& translator)
{
    std::vector<Literal> literals;
    const auto translation = translated(translator, statement, literals);
    if (!translation) return;
    checkParameters(statement, *translation, literals.size());
    const auto again = translated(translator, statement, literals);
    if (!again || again->text != translation->text) fault("another text at the second time", statement, {});
    checkRoundTrip(statement, translator, *translation);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static Bench bench;
    const QString statement = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    checkTranslation(statement, bench.sqlite);
    checkTranslation(statement, bench.postgres);
    std::vector<Literal> literals;
    if (const auto translation = translated(bench.sqlite, statement, literals))
        if (!translation->text.isEmpty()) checkSyntax(bench.base, statement, *translation);
    translated(bench.server, statement, literals);
    try {
        readShape(statement);
    } catch (const Error&) {
    }
    try {
        readSchema(statement, bench.schema);
    } catch (const Error&) {
    }
    return 0;
}
