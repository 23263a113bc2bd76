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

/// The connection failed, or the server is going down.
bool tellsLoss(const OdbcDiagnosis& diagnosis)
{
    return diagnosis.isState(u"08") || diagnosis.isState(u"57P0");
}

/// A text that is sent as it stands; at the end its statement is ready for the next one.
class DirectCall {
public:
    DirectCall(const OdbcConnection& connection, SQLHANDLE statement, QStringView text)
        : m_statement(statement)
    {
        auto* sql = reinterpret_cast<SQLWCHAR*>(const_cast<char16_t*>(text.utf16()));
        connection.check(SQLExecDirectW(statement, sql, SQLINTEGER(text.size())), statement);
        connection.noteAnswer();
    }
    ~DirectCall() { SQLFreeStmt(m_statement, SQL_CLOSE); }
    Q_DISABLE_COPY_MOVE(DirectCall)

private:
    SQLHANDLE m_statement;
};

} // namespace

OdbcConnection::OdbcConnection(const ConnectionItems& items)
{
    connect(odbcText(items, OdbcInstallation::read()));
    try {
        meet();
    } catch (...) {
        m_direct.reset();
        SQLDisconnect(get());
        throw;
    }
}

OdbcConnection::~OdbcConnection()
{
    m_direct.reset();
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

/// Finds out which server it is and what its driver can do.
void OdbcConnection::meet()
{
    m_dialect = &serverDialect(productName(get()));
    m_holdsOneResult = information<SQLUSMALLINT>(get(), SQL_MAX_CONCURRENT_ACTIVITIES) == 1;
    m_readsBoundColumns
        = information<SQLUINTEGER>(get(), SQL_GETDATA_EXTENSIONS) & static_cast<SQLUINTEGER>(SQL_GD_BOUND);
    m_direct.emplace(SQL_HANDLE_STMT, get());
    SQLSetStmtAttrW(
        m_direct->get(), SQL_ATTR_NOSCAN, reinterpret_cast<SQLPOINTER>(SQL_NOSCAN_ON), SQL_IS_UINTEGER);
    m_heard.start();
    run(m_dialect->setUp);
    m_connected = true;
}

int OdbcConnection::run(QStringView text) const
{
    const DirectCall call(*this, m_direct->get(), text);
    SQLLEN rows = 0;
    SQLRowCount(m_direct->get(), &rows);
    return int(std::max<SQLLEN>(rows, 0));
}

qint64 OdbcConnection::number(QStringView select) const
{
    SQLHANDLE statement = m_direct->get();
    const DirectCall call(*this, statement, select);
    SQLBIGINT value = 0;
    SQLLEN length = 0;
    check(SQLFetch(statement), statement);
    check(SQLGetData(statement, 1, SQL_C_SBIGINT, &value, sizeof value, &length), statement);
    return value;
}

void OdbcConnection::fail(SQLHANDLE statement) const
{
    OdbcDiagnosis diagnosis = diagnose(SQL_HANDLE_STMT, statement);
    m_lost = m_lost || tellsLoss(diagnosis) || isDead() || (diagnosis.isState(u"HY000") && !answers());
    // A server that ends the connection reports that as a failure of the statement.
    if (m_lost) {
        diagnosis.state = u"08S01"_s;
        diagnosis.words = diagnosis.words.section(u'\n', 0, 0);
    }
    throw odbcError(diagnosis);
}

bool OdbcConnection::isDead() const
{
    SQLUINTEGER dead = SQL_CD_FALSE;
    SQLGetConnectAttrW(get(), SQL_ATTR_CONNECTION_DEAD, &dead, SQL_IS_UINTEGER, nullptr);
    return dead == SQL_CD_TRUE;
}

/// Whether the server still answers. Asked after a failure without a code of the server's, since the driver
/// for PostgreSQL does not notice a crashed server. Says yes, unasked, where a result that is being read
/// could bar the question.
bool OdbcConnection::answers() const
{
    if (m_holdsOneResult || !m_direct) return true;
    SQLHANDLE statement = m_direct->get();
    SQLFreeStmt(statement, SQL_CLOSE);
    const SQLRETURN result = SQLExecDirectW(statement, const_cast<SQLWCHAR*>(wide(u"select 1"_s)), SQL_NTS);
    // Inside a failed transaction a living server refuses the question with a state of class 25.
    const bool answered = SQL_SUCCEEDED(result) || diagnose(SQL_HANDLE_STMT, statement).isState(u"25");
    SQLFreeStmt(statement, SQL_CLOSE);
    return answered;
}

} // namespace quilla
