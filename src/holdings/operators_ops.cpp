#include "holdings/operators_ops.h"

#include "holdings/in_transaction.h"
#include "platform/core/text.h"

namespace quilla {

namespace {

constexpr qsizetype Width = 50; // of both columns

Error fault(const QString& text)
{
    return Error(5, u"Operators"_s, text);
}

/// The login refuses quotes and compares without blanks at the end.
void checkLoginText(const QString& what, const QString& text)
{
    if (text.contains(u'\'')) throw fault(u"%1中不能包含【'】符号。"_s.arg(what));
    if (text.size() > Width) throw fault(u"%1太长，最多 %2 个字。"_s.arg(what).arg(Width));
    if (text != trimBlanks(text)) throw fault(u"%1的开头和结尾不能有空格。"_s.arg(what));
    if (std::any_of(text.begin(), text.end(), [](QChar c) { return !c.isPrint() && !c.isSurrogate(); }))
        throw fault(u"%1里有看不见的字符。"_s.arg(what));
}

bool isThere(Connection& connection, const QString& name)
{
    return !connection.open(u"select username from LibUse where username='%1'"_s.arg(doubled(name))).eof();
}

void needOperator(Connection& connection, const QString& name)
{
    if (!isThere(connection, name)) throw fault(u"没有这个操作员：%1。"_s.arg(name));
}

/// The rows of `LibUse` have no identity column.
qint64 nextUserId(Connection& connection)
{
    return connection.open(u"select max(userid) from LibUse").field(0).integer().value_or(0) + 1;
}

bool someoneElseMayBorrow(Connection& connection, const QString& name)
{
    const QString others = u"select username from LibUse where borrow=1 and username<>'%1'"_s;
    return !connection.open(others.arg(doubled(name))).eof();
}

} // namespace

std::vector<LibraryOperator> listOperators(Connection& connection)
{
    std::vector<LibraryOperator> operators;
    Recordset row = connection.open(u"select username,borrow,password from LibUse order by userid");
    for (; !row.eof(); row.next())
        operators.push_back({row.field(0).text(), row.field(1).isTrue(), !row.field(2).text().isEmpty()});
    return operators;
}

void checkOperatorName(const QString& name)
{
    if (isBlank(name)) throw fault(u"用户名不能为空。"_s);
    checkLoginText(u"用户名"_s, name);
}

void checkPassword(const QString& password)
{
    checkLoginText(u"密码"_s, password);
}

void addOperator(Connection& connection, const QString& name, const QString& password)
{
    checkOperatorName(name);
    checkPassword(password);
    inTransaction(connection, [&] {
        if (isThere(connection, name)) throw fault(u"操作员 %1 已经存在。"_s.arg(name));
        connection.execute(
            u"insert into LibUse(userid,username,password,borrow) values(%1,'%2','%3',1)"_s.arg(
                QString::number(nextUserId(connection)), doubled(name), doubled(password)));
    });
}

void setPassword(Connection& connection, const QString& name, const QString& password)
{
    checkPassword(password);
    needOperator(connection, name);
    connection.execute(
        u"update LibUse set password='%1' where username='%2'"_s.arg(doubled(password), doubled(name)));
}

void removeOperator(Connection& connection, const QString& name)
{
    inTransaction(connection, [&] {
        needOperator(connection, name);
        if (!someoneElseMayBorrow(connection, name))
            throw fault(u"%1 是最后一个可以使用流通台的操作员，不能删除。"_s.arg(name));
        connection.execute(u"delete from LibUse where username='%1'"_s.arg(doubled(name)));
    });
}

} // namespace quilla
