#include "agent/WireTypes.h"
#include "agent_check/Check.h"
#include "agent_check/Translation.h"
#include "platform/QtCompat.h"
#include "platform/bus/BusHandshake.h"

#include <QLocale>
#include <QTranslator>

using namespace agent_check;

namespace {

const QString ConnectionName = QStringLiteral("ks7-agent-check");

/// Loads a translation for the session's language. Do not call it for --json, whose texts stay English.
void install(QTranslator &translator, const QString &name, const QString &folder)
{
    if (translator.load(QLocale(), name, QStringLiteral("_"), folder))
        QCoreApplication::installTranslator(&translator);
}

/// Tests the session bus with a timeout, because Qt waits for a silent bus without a limit.
bool answersOnSessionBus()
{
    return platform::BusHandshake(QDBusConnection::SessionBus).wait()
        == platform::BusHandshake::Outcome::Answered;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("ks7-agent-check"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KS7_VERSION));
    QTranslator toolkit;
    QTranslator own;
    if (!Options::wantsJson(QCoreApplication::arguments())) {
        install(toolkit, QStringLiteral("qtbase"), platform::qtTranslationsPath());
        install(own, QStringLiteral("ks7"), QStringLiteral(":/agent_check"));
    }
    const Options options = Options::parse(QCoreApplication::arguments());
    if (!answersOnSessionBus())
        return refuse(Translation::tr("there is no session bus"));
    const auto bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, ConnectionName);
    if (!bus.isConnected())
        return refuse(Translation::tr("there is no session bus"));
    registerWireTypes();
    endOnSignals();
    return Check(options, bus).run();
}
