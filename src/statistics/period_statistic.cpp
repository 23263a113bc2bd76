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

} // namespace

const std::vector<PeriodStatistic>& periodStatistics()
{
    static const std::vector<PeriodStatistic> statistics {
        {
            .name = u"frmYueLiuTongtj"_s,
            .title = u"流通工作量月统计报表"_s,
            .kind = Month,
            .frameTitle = u"流量统计结果"_s,
            .printCaption = u"打印到报表( &P )"_s,
            .procedure = u"dbo.YueLiuTongTJ"_s,
            .format = Day + Workload,
            .emptyFormat = Day + Workload,
            .paperFormat = Day + Workload,
            .widths = WorkloadWidths,
            .moneyColumn = FineColumn,
            .countsReaders = true,
            .paperName = u"frmYueLiuTongPrint"_s,
            .paperHint = UprightHint,
            .chart = workloadChart,
            .sheet = [](const Period& period) { return monthlyWorkloadLayout(period.year, period.month); },
        },
        {
            .name = u"frmJieYueFltj"_s,
            .title = u"月图书借阅分类统计报表"_s,
            .kind = Month,
            .frameTitle = u"分类统计结果"_s,
            .printCaption = u"打印到报表( &P )"_s,
            .procedure = u"dbo.YueJieChuFenLeiTJ"_s,
            .format = DayOfClasses + Classes,
            .emptyFormat = Day + Classes,
            .paperFormat = Day + Classes,
            .widths = ClassWidths,
            .paperName = u"frmJieYueFLPrint"_s,
            .paper = Paper::Wide,
            .paperHint = WideHint,
            .chart = classesChart,
            .sheet = [](const Period& period) { return monthlyClassesLayout(period.year, period.month); },
        },
        {
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
        },
        {
            .name = u"frmNianLiuTongTj"_s,
            .title = u"流通工作量年统计报表"_s,
            .kind = Year,
            .frameTitle = u"流量统计结果"_s,
            .printCaption = u"打印报表( &P )"_s,
            .procedure = u"dbo.nianLiuTongTJ"_s,
            .format = MonthName + Workload,
            .emptyFormat = MonthName + Workload,
            .paperFormat = MonthName + Workload,
            .widths = WorkloadWidths,
            .moneyColumn = FineColumn,
            .countsReaders = true,
            .paperName = u"frmNianLiuTongPrint"_s,
            .paperHint = UprightHint,
            .chart = workloadChart,
            .sheet = [](const Period& period) { return yearlyWorkloadLayout(period.year); },
        },
        {
            .name = u"frmNianJieYueTj"_s,
            .title = u"年图书借阅分类统计报表"_s,
            .kind = Year,
            .frameTitle = u"分类统计结果"_s,
            .printCaption = u"打印到报表( &P )"_s,
            .procedure = u"dbo.NianJieChuFenLeiTJ"_s,
            .format = MonthName + Classes,
            .emptyFormat = MonthName + Classes,
            .paperFormat = MonthName + Classes,
            .widths = ClassWidths,
            .paperName = u"frmNianJieYuePrint"_s,
            .paper = Paper::Wide,
            .paperHint = WideHint,
            .chart = classesChart,
            .sheet = [](const Period& period) { return yearlyClassesLayout(period.year); },
        },
    };
    return statistics;
}

} // namespace quilla
