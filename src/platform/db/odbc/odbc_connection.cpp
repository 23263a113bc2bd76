#include "platform/db/odbc/odbc_connection.h"

#include "platform/core/text.h"
#include "platform/db/odbc/odbc_text.h"

namespace quilla {

namespace {

template <typename Number> Number information(SQLHANDLE connection, SQLUSMALLINT what)
{
    Number value = 0;
    SQLGetInfoW(connection, what, &value, sizeof value, nullptr);
    return value;
}

QString productName(SQLHANDLE connection)
{
    SQLWCHAR name[200] {};
    SQLSMALLINT bytes = 0;
    SQLGetInfoW(connection, SQL_DBMS_NAME, name, sizeof name, &bytes);
    return textOf(name, std::min<qsizetype>(bytes / 2, std::size(name) - 1));
}

Error cannotConnect(const OdbcDiagnosis& diagnosis)
{
    return Error(diagnosis.number ? diagnosis.number : ErrorNumber::CannotOpen, u"ODBC"_s,
        u"不能连接数据库服务器。\n"_s + diagnosis.words);
}

} // namespace

OdbcConnection::OdbcConnection(const ConnectionItems& items)
{
    connect(odbcText(items, OdbcInstallation::read()));
    try {
        meet();
    } catch (...) {
        SQLDisconnect(get());
        throw;
    }
}

OdbcConnection::~OdbcConnection()
{
    if (m_connected) SQLDisconnect(get());
}

void OdbcConnection::connect(const QString& text)
{
    SQLSetConnectAttrW(get(), SQL_ATTR_LOGIN_TIMEOUT,
        reinterpret_cast<SQLPOINTER>(static_cast<SQLULEN>(LoginSeconds)), SQL_IS_UINTEGER);
    const SQLRETURN result = SQLDriverConnectW(get(), nullptr, const_cast<SQLWCHAR*>(wide(text)),
        SQLSMALLINT(text.size()), nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT);
    if (!SQL_SUCCEEDED(result)) throw cannotConnect(diagnose(SQL_HANDLE_DBC, get()));
}

/// Who is it, what can its driver do.
void OdbcConnection::meet()
{
    m_dialect = &serverDialect(productName(get()));
    m_holdsOneResult = information<SQLUSMALLINT>(get(), SQL_MAX_CONCURRENT_ACTIVITIES) == 1;
    m_readsBoundColumns
        = information<SQLUINTEGER>(get(), SQL_GETDATA_EXTENSIONS) & static_cast<SQLUINTEGER>(SQL_GD_BOUND);
    m_heard.start();
    run(m_dialect->setUp);
    m_connected = true;
}

void OdbcConnection::run(const char* text) const
{
    const OdbcHandle statement(SQL_HANDLE_STMT, get());
    check(SQLExecDirectW(statement.get(), const_cast<SQLWCHAR*>(wide(QString::fromLatin1(text))), SQL_NTS),
        statement.get());
}

qint64 OdbcConnection::number(const char* select) const
{
    const OdbcHandle statement(SQL_HANDLE_STMT, get());
    check(SQLExecDirectW(statement.get(), const_cast<SQLWCHAR*>(wide(QString::fromLatin1(select))), SQL_NTS),
        statement.get());
    check(SQLFetch(statement.get()), statement.get());
    SQLBIGINT value = 0;
    SQLLEN length = 0;
    check(SQLGetData(statement.get(), 1, SQL_C_SBIGINT, &value, sizeof value, &length), statement.get());
    return value;
}

void OdbcConnection::fail(SQLHANDLE statement) const
{
    OdbcDiagnosis diagnosis = diagnose(SQL_HANDLE_STMT, statement);
    m_lost = m_lost || diagnosis.isState(u"08") || isDead();
    // A server that ends a connection tells it as a failure of the statement.
    if (m_lost) diagnosis.state = u"08S01"_s;
    throw odbcError(diagnosis);
}

bool OdbcConnection::isDead() const
{
    SQLUINTEGER dead = SQL_CD_FALSE;
    SQLGetConnectAttrW(get(), SQL_ATTR_CONNECTION_DEAD, &dead, SQL_IS_UINTEGER, nullptr);
    return dead == SQL_CD_TRUE;
}

} // namespace quilla
