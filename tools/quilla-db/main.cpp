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
    } catch (const std::exception& error) {
        err << QString::fromUtf8("没有做完，可能是内存或者磁盘不够：") << error.what() << u'\n';
    }
    return int(quilla::Outcome::Failed);
}
