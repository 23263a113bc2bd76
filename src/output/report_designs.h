#pragma once

#include "platform/report/report_design.h"

namespace quilla {

/// The labels that screens write into, by their names in the designs.
namespace ReportLabels {
inline const QString Month = QStringLiteral("labYue"); ///< `ydztjRtp`: "2003年4月"
inline const QString Year = QStringLiteral("labNian"); ///< `ndztjrpt`: "2003"
inline const QString Unit = QStringLiteral("labDanWei"); ///< `ndztjrpt`
inline const QString Type = QStringLiteral("labLeiXing"); ///< `ndztjrpt`
inline const QString From = QStringLiteral("labCong"); ///< `dzjyphbRpt`: "2003年01月01日"
inline const QString To = QStringLiteral("labDao"); ///< `dzjyphbRpt`
inline const QString Heading = QStringLiteral("labBiaoTi"); ///< `jylsRpt`: "借阅历史统计表"
inline const QString Kind = QStringLiteral("labZhongLei"); ///< `jylsRpt`: "读者" or "图书"
inline const QString Code = QStringLiteral("labTiaoMa"); ///< `jylsRpt`: the code that was searched
} // namespace ReportLabels

/// All reports of the library.
ReportCatalog reportDesigns();

// Its parts.
ReportCatalog loanReports();
ReportCatalog listReports();
ReportCatalog statisticReports();

} // namespace quilla
