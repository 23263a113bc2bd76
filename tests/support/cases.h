#pragma once

#include <QTest>

namespace quilla {

/// The table of a data-driven test: each row a name and what is given and must come of it.
template <typename... Column>
void cases(std::initializer_list<std::pair<const char*, std::tuple<Column...>>> rows)
{
    QTest::addColumn<std::tuple<Column...>>("case");
    for (const auto& [name, row] : rows)
        QTest::newRow(name) << row;
}

/// The row that runs.
template <typename... Column> std::tuple<Column...> given()
{
    using Given = std::tuple<Column...>;
    return *static_cast<const Given*>(QTest::qData("case", qMetaTypeId<Given>()));
}

} // namespace quilla
