#pragma once

#include "platform/sql/ast.h"

namespace quilla::sql {

/// The server turns values of one kind into another silently; the other engines do not, or differently.
/// These make every such turn visible: a literal gets the kind that its place asks for, any other
/// expression a conversion around it. They refuse a turn that the server would make by reading texts as
/// numbers, row by row: no statement needs it, and engines differ over what they do with "abc".

/// What `expr` must become when it is stored in a column of `target`.
void assign(ExprPtr& expr, const Type& target);

/// What a function takes as an argument of this kind.
void pass(ExprPtr& expr, Kind kind);

/// What stands on the left of "like". A date is searched in the form in which the screens show it.
void searchAsText(ExprPtr& expr);

/// Makes two sides of a comparison or all values of a list one kind, and returns it. The server's order of
/// precedence: date, decimal, integer, bit, text; literals follow the columns.
Type unify(const std::vector<ExprPtr*>& exprs);

bool isNumber(Kind kind);

} // namespace quilla::sql
