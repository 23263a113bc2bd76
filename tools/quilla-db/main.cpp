#include "platform/core/dates.h"
#include "platform/core/error.h"
#include "quilla-db/commands.h"

#include <QCoreApplication>

int main(int argc, char** argv)
{
    quilla::settleTimeZone();
    const QCoreApplication application(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    try {
        return int(quilla::runCommand(quilla::readArguments(QCoreApplication::arguments()), out));
    } catch (const quilla::Error& error) {
        err << error.text << u'\n';
        return int(quilla::Outcome::Failed);
    }
}
