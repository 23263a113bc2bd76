#pragma once

#include "platform/sql/number_range.h"

#include <memory>

namespace quilla::sql {

enum class Engine { Sqlite, Postgres, SqlServer };

/// One literal that was taken out of a statement.
struct Literal {
    QStringView text; ///< as written: of a quoted one what stands between the quotes, still doubled
    bool quoted = false;
    bool hasDoubledQuote = false; ///< `text` holds "''" that must be undoubled before use
};

/// How a literal becomes a parameter of the engine's statement.
///
/// A Decimal must reach SQLite as a number, never as a text: an expression has no affinity that would turn
/// the text into one. PostgreSQL's text names the type of each parameter ("?::bigint"), so that all may be
/// given as texts.
struct Parameter {
    int literal = 0; ///< index into the literals of the statement
    Kind kind = Kind::Text; ///< what the engine must be given; a literal that is none of it is an error
    int scale = -1; ///< a Decimal on its way into a column is rounded to so many digits, a half away from 0
    NumberRange range {}; ///< of the column on the way into one
};

/// A statement in the engine's dialect. Shared by all statements of one shape.
struct Translation {
    QByteArray text; ///< UTF-8
    std::vector<Parameter> parameters; ///< in the order of the placeholders
    std::vector<Kind> columns; ///< of the result, as far as known; empty for a statement without rows
    std::vector<QString>
        names; ///< of these columns as statement and schema spell them; empty for one without
    bool returnsRows = false;
    bool writes = false;
    int id = 0; ///< dense number of this translation, an index for the drivers' prepared statements
    /// Of an "exec": the name, without owner. On SQLite and PostgreSQL `text` is empty then, and
    /// `parameters` are the arguments in their order.
    QString procedure;
};

/// Turns the T-SQL of the program into an engine's own dialect.
///
/// A statement's shape is its text with the literals taken out; each shape is lexed, parsed and printed
/// once. Literals that must stay where they are (the number of `top`, the width and style of `convert`)
/// belong to the shape. Not thread safe; one a factory.
class Translator {
public:
    /// `capacity`: how many translations stay at hand; twice as many are kept at most. `schema` must
    /// outlive the translator.
    Translator(Engine engine, const Schema& schema, int capacity = 2000);
    ~Translator();

    /// The translation of `tsql`; `literals` receives what its parameters point to, as views into
    /// `tsql`. Throws `Error` (NotUnderstood) that names the word and its place when the statement is
    /// outside the dialect, never a guess.
    ///
    /// The translation stays where it is until `capacity` other ones were made after it was last asked for.
    const Translation& translate(QStringView tsql, std::vector<Literal>& literals);

    /// What an empty database needs before its first table is created, statement by statement in the
    /// engine's own dialect: the order of texts, types, functions. Empty for engines that bring them along.
    std::vector<Translation> preparation();

    /// What lets rows bring their own numbers into the identity column of a table, and what ends that so that
    /// the next number comes after theirs and after `given`; as above. Empty where rows may bring them at
    /// any time.
    std::vector<Translation> beginOwnNumbers(const Table& table);
    std::vector<Translation> endOwnNumbers(const Table& table, qint64 given);
    /// A select of the highest number that the identity column of a table ever gave, also to a row that is
    /// gone. Nullopt for a table without such a column.
    std::optional<Translation> lastNumber(const Table& table);

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace quilla::sql
