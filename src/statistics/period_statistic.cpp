#include "statistics/period_statistic.h"

#include "statistics/no_rows.h"

namespace quilla {

namespace {

using enum PeriodKind;

const QString Workload = u"|借出册数|还回册数|过期册数|罚款金额|读者人次|注销册数"_s;
const QString Classes
    = u"|A类|B类|C类|D类|E类|F类|G类|H类|I类|J类|K类|N类|O类|P类|Q类|R类|S类|T类|U类|V类|X类|Z类|小计"_s;
const QString ReaderTypes
    = u"^读者类型|^小计|^1号|^2号|^3 号|^4号|^5号|^6号|^7号|^8号|^9号|^10号|^11号|^12号|^13号|^14号|^15号|^16号|^17号|^18号|^19号|^20号|^21号|^22号|^23号|^24号|^25号|^26号|^27号|^28号|^29号|^30号|^31号"_s;
const QString Day = u"^日期"_s;
const QString DayOfClasses = u"^第几天"_s; // on the screen alone
const QString MonthName = u"^月份"_s;

const std::vector<int> WorkloadWidths {900, 1200, 1200, 1200, 1200, 1200, 1200};
const std::vector<int> ClassWidths(24, 500);
constexpr int FineColumn = 4;

const QString UprightHint = u"请将打印机设置为【A4--纵向打印】"_s;
const QString WideHint = u"请将打印机设置为【A4--横向打印】"_s;
const QString WideReportHint = u"请将打印机设置为【A4--横向(宽行)打印】"_s;

/// The fields that the statistics of the workload share, over a month or a year.
PeriodStatistic workload(PeriodKind kind)
{
    const QString format = (kind == Month ? Day : MonthName) + Workload;
    return {
        .kind = kind,
        .frameTitle = u"流量统计结果"_s,
        .format = format,
        .emptyFormat = format,
        .paperFormat = format,
        .widths = WorkloadWidths,
        .moneyColumn = FineColumn,
        .countsReaders = true,
        .paperHint = UprightHint,
        .chart = workloadChart,
    };
}

PeriodStatistic monthlyWorkload()
{
    PeriodStatistic statistic = workload(Month);
    statistic.name = u"frmYueLiuTongtj"_s;
    statistic.title = u"流通工作量月统计报表"_s;
    statistic.printCaption = u"打印到报表( &P )"_s;
    statistic.procedure = u"dbo.YueLiuTongTJ"_s;
    statistic.paperName = u"frmYueLiuTongPrint"_s;
    statistic.sheet = [](const Period& period) { return monthlyWorkloadLayout(period.year, period.month); };
    return statistic;
}

PeriodStatistic yearlyWorkload()
{
    PeriodStatistic statistic = workload(Year);
    statistic.name = u"frmNianLiuTongTj"_s;
    statistic.title = u"流通工作量年统计报表"_s;
    statistic.printCaption = u"打印报表( &P )"_s;
    statistic.procedure = u"dbo.nianLiuTongTJ"_s;
    statistic.paperName = u"frmNianLiuTongPrint"_s;
    statistic.sheet = [](const Period& period) { return yearlyWorkloadLayout(period.year); };
    return statistic;
}

/// The fields that the statistics of the classes share, over a month or a year.
PeriodStatistic classes(PeriodKind kind)
{
    const QString format = (kind == Month ? Day : MonthName) + Classes;
    return {
        .kind = kind,
        .frameTitle = u"分类统计结果"_s,
        .printCaption = u"打印到报表( &P )"_s,
        .format = format,
        .emptyFormat = format,
        .paperFormat = format,
        .widths = ClassWidths,
        .paper = Paper::Wide,
        .paperHint = WideHint,
        .chart = classesChart,
    };
}

PeriodStatistic monthlyClasses()
{
    PeriodStatistic statistic = classes(Month);
    statistic.name = u"frmJieYueFltj"_s;
    statistic.title = u"月图书借阅分类统计报表"_s;
    statistic.procedure = u"dbo.YueJieChuFenLeiTJ"_s;
    statistic.format = DayOfClasses + Classes;
    statistic.paperName = u"frmJieYueFLPrint"_s;
    statistic.sheet = [](const Period& period) { return monthlyClassesLayout(period.year, period.month); };
    return statistic;
}

PeriodStatistic yearlyClasses()
{
    PeriodStatistic statistic = classes(Year);
    statistic.name = u"frmNianJieYueTj"_s;
    statistic.title = u"年图书借阅分类统计报表"_s;
    statistic.procedure = u"dbo.NianJieChuFenLeiTJ"_s;
    statistic.paperName = u"frmNianJieYuePrint"_s;
    statistic.sheet = [](const Period& period) { return yearlyClassesLayout(period.year); };
    return statistic;
}

PeriodStatistic monthlyReaders()
{
    return {
        .name = u"frmYueDuzheJieYuetj"_s,
        .title = u"读者借阅月统计报表"_s,
        .kind = Month,
        .frameTitle = u"分类统计结果"_s,
        .printCaption = u"打印报表( &P )"_s,
        .procedure = u"procydztj"_s,
        .format = ReaderTypes,
        .emptyFormat = ReaderTypes,
        .emptyNote = NoRowsNote,
        .paperHint = WideReportHint,
        .chart = readerTypesChart,
        .sheet = [](const Period& period) { return monthlyReadersLayout(period.year, period.month); },
    };
}

} // namespace

const std::vector<PeriodStatistic>& periodStatistics()
{
    static const std::vector<PeriodStatistic> statistics {
        monthlyWorkload(), monthlyClasses(), monthlyReaders(), yearlyWorkload(), yearlyClasses()};
    return statistics;
}

} // namespace quilla
