#include "db/error_of.h"
#include "platform/core/text.h"
#include "platform/db/odbc/odbc_text.h"
#include "support/cases.h"

#include <QTest>

using namespace quilla;

namespace {

const std::vector<std::pair<QString, QString>> Sources {{u"tushu"_s, u"PostgreSQL Unicode"_s},
    {u"jiu"_s, u"/usr/lib/odbc/libtdsodbc.so"_s}, {u"other"_s, u"Some Driver"_s}};

/// What is appended for PostgreSQL when the stored text tells none of it.
const QString Postgres
    = u"UseServerSidePrepare=1;Protocol=7.4-0;UseDeclareFetch=0;UpdatableCursors=0;BoolsAsChar=0;"
      u"LFConversion=0;"
      "Parse=0;CommLog=0;Debug=0;"
      "pqopt={keepalives_idle=15 keepalives_interval=5 keepalives_count=3 tcp_user_timeout=30000};"_s;

} // namespace

/// What the driver manager is given for a stored text; no server is asked.
class TestOdbcText : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void texts_data()
    {
        const QStringList usual {u"FreeTDS"_s, u"PostgreSQL Unicode"_s};
        const QString dated = u"ODBC Driver %1 for SQL Server"_s;
        cases<QString, QStringList, QString>({
            {"driver of the dialog",
                {u"PROVIDER=MSDASQL;Driver=SQL Server;Server=ku;UID=sa;PWD=x;Database=lib;"_s, usual,
                    u"Driver={FreeTDS};Server=ku;UID=sa;PWD={x};Database=lib;ClientCharset=UTF-8;TDS_Version=7.4;Port=1433;"_s}},
            {"named instance",
                {u"Driver=SQL Server;Server=ku\\lib;UID=sa;"_s, usual,
                    u"Driver={FreeTDS};Server=ku\\lib;UID=sa;ClientCharset=UTF-8;TDS_Version=7.4;"_s}},
            {"own port and version",
                {u"Driver=SQL Server;Server=ku;Port=14330;TDS_Version=7.1;"_s, usual,
                    u"Driver={FreeTDS};Server=ku;Port=14330;TDS_Version=7.1;ClientCharset=UTF-8;"_s}},
            {"a driver of that very name",
                {u"Driver=sql server;Server=ku;"_s, QStringList {u"FreeTDS"_s, u"SQL Server"_s},
                    u"Driver={SQL Server};Server=ku;"_s}},
            {"the newest of its maker",
                {u"Driver=SQL Server;Server=ku;"_s, QStringList {dated.arg(17), dated.arg(18)},
                    u"Driver={ODBC Driver 18 for SQL Server};Server=ku;"_s}},
            {"postgres",
                {u"PROVIDER=MSDASQL;Driver={postgresql unicode};Servername=/run/pg;UID=a;PWD=;"_s, usual,
                    u"Driver={PostgreSQL Unicode};Servername=/run/pg;UID=a;PWD=;"_s + Postgres}},
            {"what may differ and what may not",
                {u"DSN=tushu;Protocol=7.4-2;pqopt={x=1};Debug=1;"_s, usual,
                    u"DSN=tushu;pqopt={x=1};Debug=1;"_s + Postgres.left(Postgres.indexOf(u"CommLog"_s))
                        + u"CommLog=0;"_s}},
            {"source by the file of its driver",
                {u"DSN=JIU;UID=sa;PWD=;"_s, usual,
                    u"DSN=JIU;UID=sa;PWD=;ClientCharset=UTF-8;TDS_Version=7.4;"_s}},
            {"source of an unknown driver, quotes and signs",
                {u"DSN=other;UID=o''hara;PWD=a''b}c={@,;Database=l''ib;"_s, usual,
                    u"DSN=other;UID=o'hara;PWD={a'b}}c={@,};Database=l'ib;"_s}},
        });
    }

    void texts()
    {
        const auto [stored, drivers, text] = given<QString, QStringList, QString>();
        QCOMPARE(odbcText(ConnectionItems(stored), {drivers, Sources}), text);
    }

    void refusals()
    {
        const std::tuple<QString, QStringList, QString> texts[] {
            {u"Driver=SQL Server;Server=ku;PWD=geheim;"_s, {u"PostgreSQL Unicode"_s},
                u"没有安装数据库驱动“SQL Server”，请先安装。\n已安装：PostgreSQL Unicode"_s},
            {u"Driver=SQL Server;PWD=geheim;"_s, {}, u"没有任何驱动"_s},
            {u"Driver=Oracle;PWD=geheim;"_s, {u"SQL Server"_s}, u"“Oracle”"_s},
            {u"DSN=none;PWD=geheim;"_s, {}, u"没有名为“none”的数据源"_s},
            {u"Server=ku;PWD=geheim;"_s, {}, u"既没有数据源"_s}};
        for (const auto& [stored, drivers, words] : texts) {
            QString told;
            QVERIFY(errorOf([&] { odbcText(ConnectionItems(stored), {drivers, Sources}); }, &told));
            QVERIFY2(told.contains(words), qPrintable(told));
            QVERIFY(!told.contains(u"geheim"_s));
        }
    }
};

QTEST_GUILESS_MAIN(TestOdbcText)
#include "tst_odbc_text.moc"
