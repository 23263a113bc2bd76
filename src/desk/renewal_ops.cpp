#include "desk/renewal_ops.h"

#include "frame/sublib.h"

namespace quilla {

namespace {

constexpr int InvalidUseOfNull = 94;

qint64 known(const Recordset& row, QStringView field)
{
    const auto number = row.field(field).integer();
    if (!number) throw Error(InvalidUseOfNull, u"desk"_s, u"无效使用 Null：%1"_s.arg(field));
    return *number;
}

qint16 refuse(Session& session, DeskView& desk, const QString& text)
{
    desk.untickRenewal();
    session.prompt.warn(text, OperationTitle);
    return RenewalRefused;
}

} // namespace

qint16 CheckRenewal(Session& session, DeskView& desk, const QString& barcode)
{
    Connection conn;
    if (OpenDbConnection(session, conn) != GoOn) return 0;
    const Recordset row = conn.open(
        u"Select recount,reday,res  From jhsk Left Join dzk On dzk.readercode=jhsk.readercode Where barcode='%1'"_s
            .arg(doubled(barcode)));
    if (row.eof()) {
        session.prompt.warn(u"此书刊没有借阅，或该读者类型不符。"_s, OperationTitle);
        return RenewalRefused;
    }
    const qint64 allowed = known(row, u"recount");
    const auto days = row.field(u"reday").integer();
    if (allowed == 0 || (days && *days == 0)) return refuse(session, desk, u"该读者不可续借书刊。"_s);
    const qint64 made = known(row, u"res");
    if (made >= allowed) return refuse(session, desk, u"此书刊已经续借%1次，不能再续借。"_s.arg(made));
    return static_cast<qint16>(made + 1);
}

} // namespace quilla
