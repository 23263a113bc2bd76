#include "desk/renewal_ops.h"

#include "frame/refusal.h"
#include "frame/work.h"

namespace quilla {

namespace {

constexpr int InvalidUseOfNull = 94;

qint64 known(const Recordset& row, QStringView field)
{
    const auto number = row.field(field).integer();
    if (!number) throw Error(InvalidUseOfNull, u"desk"_s, u"无效使用 Null：%1"_s.arg(field));
    return *number;
}

Refusal refusal(const QString& text)
{
    return {text, OperationTitle.toString(), Icon::Warning};
}

std::optional<Refusal> checkCounts(const Recordset& row)
{
    const qint64 allowed = known(row, u"recount");
    const auto days = row.field(u"reday").integer();
    if (allowed == 0 || (days && *days == 0)) return refusal(u"该读者不可续借书刊。"_s);
    const qint64 made = known(row, u"res");
    if (made >= allowed) return refusal(u"此书刊已经续借%1次，不能再续借。"_s.arg(made));
    return {};
}

} // namespace

qint16 CheckRenewal(Session& session, DeskView& desk, const QString& barcode)
{
    StrictWork work(session);
    if (!work) return 0;
    const Recordset row = work.open(
        u"Select recount,reday,res  From jhsk Left Join dzk On dzk.readercode=jhsk.readercode Where barcode='%1'"_s
            .arg(doubled(barcode)));
    const auto refuse = [&](const Refusal& objection) {
        desk.refusing(objection.text);
        tell(session.prompt, objection);
        return RenewalRefused;
    };
    if (row.eof()) return refuse(refusal(u"此书刊没有借阅，或该读者类型不符。"_s));
    if (const auto objection = checkCounts(row)) {
        desk.untickRenewal();
        return refuse(*objection);
    }
    return static_cast<qint16>(known(row, u"res") + 1);
}

} // namespace quilla
