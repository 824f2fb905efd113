#include "tests/fakes/FakeAgent.h"

FakeAgent::FakeAgent(Journal journal)
    : mJournal(std::move(journal))
{
}

void FakeAgent::addCamera(const QString &address, const QString &name, int status, const QString &cameraID)
{
    cameraDict[address] = {{QStringLiteral("Status"), status},
                           {QStringLiteral("FriendlyName"), name},
                           {QStringLiteral("CameraIDString"), cameraID}};
    if (!sorted.contains(address))
        sorted.append(address);
    if (indexOfPreferred != NoPreferredCamera && sorted.value(static_cast<int>(indexOfPreferred)) == address)
        prefer(address);
}

void FakeAgent::prefer(const QString &address)
{
    const auto entry = cameraDict.value(address);
    indexOfPreferred = static_cast<std::uint64_t>(sorted.indexOf(address));
    preferred = CameraRecord{entry.value(QStringLiteral("Status")).toInt(),
                             entry.value(QStringLiteral("CameraIDString")).toString(),
                             entry.value(QStringLiteral("FriendlyName")).toString()};
}
