// A desk that charges, or charges and takes back, without a pause, until it is told to stop or killed. After
// each operation that it would tell the operator as done it prints a line: "+ barcode reader" or "- barcode".
//
//   desk_loop CONNECTION-TEXT SEED MILLISECONDS READERS COPIES charge|both

#include "database/library_schema.h"
#include "database/scale.h"
#include "desk/charge_ops.h"
#include "desk/discharge_ops.h"
#include "platform/db/pooled_factory.h"
#include "support/quiet_session.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <cstdio>
#include <random>

using namespace quilla;

int main(int argc, char** argv)
{
    settleTimeZone();
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 7) return 2;
    OneText settings(arguments[1]);
    QuietPrompt prompt;
    NoEditor editor;
    NoDesk desk;
    NoFines fines;
    const SystemClock clock;
    const sql::Schema schema = librarySchema();
    PooledFactory factory(schema, clock);
    Session session {settings, prompt, clock, factory, editor};
    session.OperatorName = u"desk"_s;

    std::mt19937 random(arguments[2].toUInt());
    const auto upTo = [&](const QString& most) { return int(random() % most.toUInt()) + 1; };
    QStringList out;
    QElapsedTimer timer;
    timer.start();
    const auto tell = [](char sign, const QString& rest) {
        std::fprintf(stdout, "%c %s\n", sign, qPrintable(rest));
        std::fflush(stdout);
    };
    while (timer.elapsed() < arguments[3].toInt()) {
        const bool giveBack = arguments[6] == u"both" && !out.isEmpty() && (out.size() > 20 || random() % 2);
        if (giveBack) {
            const QString barcode = out.takeAt(int(random() % out.size()));
            if (DischargeBook(session, desk, fines, barcode) == Discharged) tell('-', barcode);
        } else {
            const QString barcode = scaleBarcode(upTo(arguments[5]));
            const QString reader = scaleReaderCode(upTo(arguments[4]));
            if (ChargeBook(session, desk, barcode, reader) != Charged) continue;
            tell('+', barcode + u' ' + reader);
            out.append(barcode);
        }
    }
    return 0;
}
