#pragma once

#include <QString>

#include <vector>

namespace quilla::sql {

/// A statement of the shaping service: the rows of a select in groups, " SHAPE {select ...} AS name COMPUTE
/// name BY 'column','column'". No engine knows it: whoever sends it runs the select and puts together the
/// rows that agree in all of `groupBy`, the groups in the order in which their first rows came.
struct ShapeStatement {
    QString select; ///< what stands between the braces, a statement of the dialect
    QString child; ///< name of the rows of a group, as the report knows them
    std::vector<QString> groupBy; ///< columns of the outer level
};

/// Throws `Error` (NotUnderstood) with the place of the word that does not fit.
ShapeStatement readShape(QStringView text);

} // namespace quilla::sql
