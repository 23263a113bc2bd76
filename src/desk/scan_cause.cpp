#include "desk/scan_cause.h"

#include "platform/core/text.h"

#include <QStringList>

namespace quilla {

namespace {

/// The platform's sentence; the engine's words follow it on lines of their own.
QString sentenceOf(const Failure& failure)
{
    if (failure.number == 0) return u"数据库没有报错，但这本书的记录没有改变：它可能刚被登记为丢失或注销。"_s;
    return failure.text.section(u'\n', 0, 0);
}

QString adviceFor(const Failure& failure)
{
    if (failure.number == 0) return u"请按 F4 查询这本书，再决定如何处理。"_s;
    if (failure.number == ErrorNumber::InUse) return u"请稍等片刻，再扫描一次。"_s;
    const bool isGone
        = sentenceOf(failure).contains(u"数据库服务器"_s); // whatever number its driver has for it
    if (isGone || failure.number == ErrorNumber::NotOpen || failure.number == ErrorNumber::CannotOpen)
        return u"请检查网络和数据库服务器，然后再扫描一次。"_s;
    if (failure.text.contains(u"磁盘"_s) || failure.text.contains(u"资源不足"_s))
        return u"请通知管理员清理磁盘空间；在此之前不要借还。"_s;
    return u"请再扫描一次；仍然失败时，把以下内容告诉管理员。"_s;
}

} // namespace

QString causeText(const Failure& failure)
{
    QStringList parts {sentenceOf(failure), adviceFor(failure)};
    const QString words = failure.text.section(u'\n', 1);
    if (failure.number != 0) parts.append(u"错误号 %1 %2"_s.arg(QString::number(failure.number), words));
    return parts.join(u"\n\n"_s);
}

QString causeLine(const ScanEntry& scan, const Failure& failure)
{
    return QStringList {isoDate(scan.time.date), scan.time.time.toString(u"HH:mm:ss"_s), wordOf(scan.kind),
        scan.barcode, scan.readercode, QString::number(failure.number), sentenceOf(failure)}
        .join(u'\t');
}

} // namespace quilla
