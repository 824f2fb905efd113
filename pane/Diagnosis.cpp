#include "pane/Diagnosis.h"

#include "about/Version.h"
#include "agent/AgentProxyFactory.h"
#include "agent/RemoteNames.h"
#include "agent/WireTypes.h"
#include "cameras/KS7Cam.h"
#include "cameras/SanitizedLine.h"
#include "logging/KS7OrvexLogger.h"
#include "platform/bus/Connection.h"
#include "platform/bus/NotificationCenter.h"
#include "platform/bus/ServiceProbe.h"
#include "platform/capture/Capture.h"
#include "platform/capture/PipeWireSocket.h"
#include "platform/desktop/Bundle.h"
#include "platform/preferences/AtomicFile.h"
#include "platform/preferences/UserDefaults.h"
#include "platform/updates/PackageKitUpdater.h"
#include "preview/KS7PreviewController.h"
#include "settings/KS7Domain.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QSysInfo>

#include <cstring>

using platform::ServiceProbe;

namespace {

const QString NotThere = QStringLiteral(" (not there)");

QString orNone(const QString &text)
{
    return text.isEmpty() ? QStringLiteral("none") : text;
}

QString inWords(ServiceProbe::Presence presence)
{
    switch (presence) {
    case ServiceProbe::Presence::NoBus:
        return QStringLiteral("unknown, no answer from the bus");
    case ServiceProbe::Presence::Absent:
        return QStringLiteral("not there");
    case ServiceProbe::Presence::Startable:
        return QStringLiteral("not running, started on demand");
    case ServiceProbe::Presence::Running:
        return QStringLiteral("running");
    }
    return {};
}

/// Returns the start time and process ID of a bus name's owner, formatted as the end of a report line.
QString sinceWhen(ServiceProbe &probe, const QString &busName)
{
    const auto process = probe.processOf(busName);
    if (!process)
        return {};
    const QDateTime start = platform::processStart(*process);
    const QString since = start.isValid() ? start.toString(Qt::ISODate) : QStringLiteral("an unknown time");
    return QStringLiteral(" since %1, process %2").arg(since).arg(*process);
}

QString describeCamera(const QVariantMap &record)
{
    const auto told = recordFromDictionary(record).value_or(CameraRecord());
    const auto camera = KS7Cam::camWithName(told.friendlyName, told.cameraIDString, told.status);
    // sanitizedLine() escapes line breaks. Otherwise a camera's name could imitate another line of the
    // report. A single arg() fills all markers, because a second one would fill those in the name.
    return QStringLiteral("%1 (%2): status %3 %4")
        .arg(sanitizedLine(camera->friendlyName()), sanitizedLine(camera->cameraIDString()),
             QString::number(camera->status()), camera->statusString())
        .trimmed();
}

QString modeOf(const QFileInfo &file)
{
    // QFileDevice::Permissions has a hexadecimal digit for the owner, this process, the group and others.
    // Print those of owner, group and others as octal digits, as ls and chmod do.
    const int bits = static_cast<int>(file.permissions());
    return QStringLiteral("0%1%2%3").arg((bits >> 12) & 7).arg((bits >> 4) & 7).arg(bits & 7);
}

} // namespace

Diagnosis::Diagnosis(platform::Services services, std::shared_ptr<AgentProxyFactory> protocols)
    : mServices(std::move(services))
    , mProtocols(std::move(protocols))
{
}

QString Diagnosis::report()
{
    mLines.clear();
    // Make both probes before the first question, so that two silent buses are waited for together.
    ServiceProbe sessionBus(QDBusConnection::SessionBus);
    ServiceProbe systemBus(QDBusConnection::SystemBus);
    describeProgram();
    describeAgent(sessionBus);
    describeCameras(sessionBus);
    describePicture();
    describeSystemServices(systemBus);
    describePreferences();
    describeLogs();
    return mLines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

void Diagnosis::add(const QString &subject, const QString &finding)
{
    mLines.append(subject + QStringLiteral(": ") + finding);
}

void Diagnosis::describeProgram()
{
    add(QStringLiteral("KS-7 preferences"), paneVersion(*mServices.bundle));
    add(QStringLiteral("Pane"), orNone(platform::ownCodeFile()));
    add(QStringLiteral("System"),
        QStringLiteral("%1, %2 %3, %4, Qt %5")
            .arg(QSysInfo::prettyProductName(), QSysInfo::kernelType(), QSysInfo::kernelVersion(),
                 QSysInfo::currentCpuArchitecture(), QString::fromLatin1(qVersion())));
}

void Diagnosis::describeAgent(ServiceProbe &sessionBus)
{
    describeConnection(sessionBus, RemoteNames::AgentServer);
    describeConnection(sessionBus, RemoteNames::AgentServerUSB);
    add(QStringLiteral("KS7_AGENT"), orNone(qEnvironmentVariable("KS7_AGENT")));
}

void Diagnosis::describeConnection(ServiceProbe &sessionBus, const QString &registeredName)
{
    const QString busName = RemoteNames::busName(registeredName);
    const auto presence = sessionBus.presenceOf(busName);
    const bool runs = presence == ServiceProbe::Presence::Running;
    add(busName, inWords(presence) + (runs ? sinceWhen(sessionBus, busName) : QString()));
}

void Diagnosis::describeCameras(ServiceProbe &sessionBus)
{
    const QString subject = QStringLiteral("Cameras");
    // Looking the agent up on a hung bus would wait again, because the pane has a connection of its own.
    if (!sessionBus.isReachable())
        return add(subject, inWords(ServiceProbe::Presence::NoBus));
    const auto connection = mServices.connections->connectionWithRegisteredName(RemoteNames::AgentServer);
    if (!connection)
        return add(subject, QStringLiteral("unknown, no agent"));
    const CameraDictionary cameras = mProtocols->deviceController(connection->rootProxy())->cameraDict();
    if (!connection->isValid())
        return add(subject, QStringLiteral("unknown, the agent does not answer"));
    add(subject, QString::number(cameras.size()));
    for (const QVariantMap &record : cameras)
        mLines.append(QStringLiteral("  ") + describeCamera(record));
    connection->invalidate();
}

void Diagnosis::describePicture()
{
    const QString socket = platform::pipeWireSocketPath();
    const bool runs = QFileInfo::exists(socket);
    add(QStringLiteral("PipeWire"), socket + (runs ? QString() : NotThere));
    // Without a socket, PipeWire is not running, so do not ask it for cameras.
    const auto devices = runs && mServices.capture ? mServices.capture->videoInputDevices()
                                                   : std::vector<std::shared_ptr<platform::CaptureDevice>>();
    QString camera;
    for (const auto &device : devices) {
        if (KS7PreviewController::isCamera(device->uniqueID()))
            camera = device->uniqueID();
    }
    add(QStringLiteral("Video sources"), QString::number(devices.size()));
    add(QStringLiteral("KS-7 node"), orNone(camera));
}

void Diagnosis::describeSystemServices(ServiceProbe &systemBus)
{
    add(QStringLiteral("BlueZ"), inWords(systemBus.presenceOf(platform::bus::BlueZ)));
    add(QStringLiteral("logind"), inWords(systemBus.presenceOf(platform::bus::Logind)));
    add(QStringLiteral("PackageKit"), inWords(systemBus.presenceOf(platform::bus::PackageKit)));
}

void Diagnosis::describePreferences()
{
    const QFileInfo file(platform::fileOfDomain(KS7Domain::Name));
    const auto contents = platform::AtomicFile::read(file.filePath());
    const QString subject = QStringLiteral("Preferences");
    if (contents.error != 0)
        return add(subject,
                   file.filePath() + QStringLiteral(", ")
                       + QString::fromLocal8Bit(std::strerror(contents.error)));
    const auto dictionary = platform::PropertyListDictionary::fromXml(contents.bytes);
    const QString state =
        dictionary ? QStringLiteral("a property list") : QStringLiteral("not a property list");
    add(subject, QStringLiteral("%1, mode %2, %3").arg(file.filePath(), modeOf(file), state));
    // Print only the keys, because the values are private.
    if (dictionary)
        add(QStringLiteral("Settings"), orNone(sanitizedLine(dictionary->keys().join(QStringLiteral(", ")))));
}

void Diagnosis::describeLogs()
{
    const QString folder = KS7OrvexLogger::logFolder();
    QDirIterator files(folder, QDir::Files, QDirIterator::Subdirectories);
    int count = 0;
    for (; files.hasNext(); files.next())
        ++count;
    const QString finding = QFileInfo::exists(folder) ? QStringLiteral(", files: %1").arg(count) : NotThere;
    add(QStringLiteral("Log folder"), folder + finding);
}
