#include "platform/db/odbc/odbc_handle.h"

#include "platform/core/text.h"

#include <QRegularExpression>

namespace quilla {

namespace {

struct Sentence {
    QStringView state; ///< or its beginning
    QStringView text;
};

constexpr Sentence Sentences[] {
    {u"08", u"与数据库服务器的连接已断开。"},
    {u"22001", u"文字超出了字段的宽度。"},
    {u"22003", u"数字超出了字段的范围。"},
    {u"22007", u"文字不是日期。"},
    {u"22008", u"日期超出了范围。"},
    {u"22012", u"除数不能为零。"},
    {u"22018", u"文字不是字段要的数字或日期。"},
    {u"22P02", u"文字不是字段要的数字或日期。"},
    {u"23", u"数据违反了数据库的约束。"},
    {u"28", u"数据库服务器拒绝了该用户。"},
    {u"40", u"数据库服务器撤销了当前事务，请再试一次。"},
    {u"42P01", u"数据库里没有这个表。"},
    {u"42S02", u"数据库里没有这个表。"},
    {u"42703", u"数据库里没有这个字段。数据库可能是本程序以前的版本建立的。"},
    {u"42501", u"该用户没有访问数据的权限。"},
    {u"53", u"数据库服务器的资源不足，数据没有写入。"},
    {u"55P03", u"数据库正被其他工作站占用，请稍后再试。"},
    {u"HYT", u"数据库服务器没有及时回答。"},
};

QString sentenceFor(QStringView state)
{
    for (const Sentence& sentence : Sentences)
        if (state.startsWith(sentence.state)) return sentence.text.toString();
    return u"数据库执行语句时出错。"_s;
}

/// Texts that are no date or number.
bool isConversion(const OdbcDiagnosis& diagnosis)
{
    return diagnosis.isState(u"22007") || diagnosis.isState(u"22008") || diagnosis.isState(u"22018")
        || diagnosis.isState(u"22P02");
}

int numberOf(const OdbcDiagnosis& diagnosis)
{
    if (isConversion(diagnosis)) return ErrorNumber::CannotConvert;
    if (diagnosis.isState(u"55P03")) return ErrorNumber::InUse;
    return diagnosis.number ? diagnosis.number : 1;
}

/// "[maker][driver]words" without its brackets, and without what a driver says about its own doings.
QString engineWords(QString words)
{
    while (words.startsWith(u'[') && words.contains(u']'))
        words.remove(0, words.indexOf(u']') + 1);
    static const QRegularExpression doings(u";?\\nError while [a-z ]+$"_s);
    return words.remove(doings).trimmed();
}

} // namespace

OdbcHandle::OdbcHandle(SQLSMALLINT type, SQLHANDLE parent)
    : m_type(type)
{
    if (SQL_SUCCEEDED(SQLAllocHandle(type, parent, &m_handle))) return;
    throw Error(ErrorNumber::CannotOpen, u"ODBC"_s, u"ODBC 驱动管理器没有应答。"_s);
}

OdbcHandle::~OdbcHandle()
{
    SQLFreeHandle(m_type, m_handle);
}

OdbcDiagnosis diagnose(SQLSMALLINT type, SQLHANDLE handle)
{
    OdbcDiagnosis diagnosis;
    SQLWCHAR state[6] {};
    SQLWCHAR words[2000] {};
    SQLINTEGER number = 0;
    SQLSMALLINT length = 0;
    QStringList all;
    for (SQLSMALLINT record = 1; SQL_SUCCEEDED(SQLGetDiagRecW(
             type, handle, record, state, &number, words, SQLSMALLINT(std::size(words)), &length));
         ++record) {
        const QString code = textOf(state, 5);
        if (diagnosis.state.isEmpty() || diagnosis.isState(u"01")) {
            diagnosis.state = code;
            diagnosis.number = number;
        }
        all += engineWords(textOf(words, std::min<qsizetype>(length, std::size(words) - 1)));
    }
    all.removeDuplicates();
    diagnosis.words = all.join(u'\n');
    return diagnosis;
}

Error odbcError(const OdbcDiagnosis& diagnosis)
{
    return Error(numberOf(diagnosis), u"ODBC"_s, sentenceFor(diagnosis.state) + u'\n' + diagnosis.words);
}

OdbcEnvironment::OdbcEnvironment()
{
    SQLSetEnvAttr(
        m_handle.get(), SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), SQL_IS_INTEGER);
}

/// The files of the driver manager are UTF-8, whatever the locale.
std::vector<OdbcEnvironment::Entry> OdbcEnvironment::entries(List* list) const
{
    constexpr SQLSMALLINT Room = 1024;
    std::vector<Entry> found;
    SQLCHAR name[Room] {};
    SQLCHAR description[Room] {};
    SQLUSMALLINT which = SQL_FETCH_FIRST;
    while (SQL_SUCCEEDED(list(get(), which, name, Room, nullptr, description, Room, nullptr))) {
        found.push_back({QString::fromUtf8(reinterpret_cast<const char*>(name)),
            QString::fromUtf8(reinterpret_cast<const char*>(description))});
        which = SQL_FETCH_NEXT;
    }
    return found;
}

} // namespace quilla
