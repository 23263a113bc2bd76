#pragma once

#include <QString>

#include <vector>

namespace quilla::sql {

struct Token {
    enum class Form { Word, Name, Quoted, Number, Sign, End };

    Form form = Form::End;
    QStringView text; ///< of a name or a quoted literal what stands between its signs, still doubled
    qsizetype place = 0; ///< of its first character in the statement
    int literal = -1; ///< number of a literal among all of the statement
    bool whole = true; ///< a number without fraction and exponent

    bool isWord(QStringView lower) const
    {
        return form == Form::Word && text.compare(lower, Qt::CaseInsensitive) == 0;
    }
    bool isSign(QStringView sign) const { return form == Form::Sign && text == sign; }
};

/// Cuts a statement into tokens, comments and blanks left out; the last one is of form End. The tokens
/// point into `tsql`. Throws `Refusal`.
std::vector<Token> lex(QStringView tsql);

} // namespace quilla::sql
