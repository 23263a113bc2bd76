// What a search among the titles costs, from the click until the titles are painted and the copies of the
// first one listed: one title, the titles of a class, a tenth of all, all. Medians of five.
//
//   bench_title_search [titles | --quick]

#include "catalogue/find_book_form.h"
#include "database/scale.h"
#include "reservations/reservation_form.h"
#include "support/test_library.h"

#include "bench/alternate.h"

#include <QApplication>

#include <cstdio>

using namespace quilla;

namespace {

void fill(TestLibrary& library, int titles)
{
    ScaleOptions options {10, 2 * titles, 0, 0, library.clock.now().date};
    Connection conn = library.factory.open(library.connectionText);
    conn.begin();
    fillScaleData(conn, options);
    conn.execute(u"update zsk set fzqfh=''");
    conn.commit();
}

double search(TitleSearchScreen& screen, const QString& text)
{
    std::vector<double> times;
    for (int round = 0; round < 5; ++round) {
        screen.Text1.setText(text);
        QElapsedTimer timer;
        timer.start();
        screen.cmdQuery.click();
        QCoreApplication::processEvents();
        times.push_back(double(timer.nsecsElapsed()) / 1e6);
    }
    return medianOf(times);
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const QString asked = QCoreApplication::arguments().value(1);
    const int titles = asked == u"--quick" ? 500 : asked.isEmpty() ? 100'000 : asked.toInt();
    TestLibrary library;
    fill(library, titles);
    frmFindBook finder(library.session);
    frmTushuYuYue reservation(library.session);
    for (TitleSearchScreen* screen : std::initializer_list<TitleSearchScreen*> {&finder, &reservation}) {
        screen->show();
        for (const QString& text : {u"图书%1"_s.arg(titles - 1), u"A1/"_s, u"书1"_s, u"图书"_s}) {
            const double time = search(*screen, text);
            std::printf("%s, %s: %.0f ms, %d titles\n", qPrintable(screen->objectName()), qPrintable(text),
                time, screen->Grid1.Rows() - 1);
        }
    }
}
