#include "output/report_designs.h"

namespace quilla {

ReportCatalog reportDesigns()
{
    ReportCatalog all;
    for (const ReportCatalog& part : {loanReports(), listReports(), statisticReports()})
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

} // namespace quilla
