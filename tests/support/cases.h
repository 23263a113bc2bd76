#pragma once

#include <QTest>

namespace quilla {

/// The table of a data-driven test: each row a name and a struct of what is given and what must come of it.
template <typename Case> void cases(std::initializer_list<std::pair<const char*, Case>> rows)
{
    QTest::addColumn<Case>("case");
    for (const auto& [name, row] : rows)
        QTest::newRow(name) << row;
}

/// The row that runs.
template <typename Case> Case given()
{
    return *static_cast<const Case*>(QTest::qData("case", qMetaTypeId<Case>()));
}

} // namespace quilla
