#include "agent/NotificationNames.h"
#include "tests/support/PaneFixture.h"

#include <QApplication>

#include <fuzzer/FuzzedDataProvider.h>

using namespace std::chrono_literals;

namespace {

// These two objects are never deleted. At exit Qt destroys its own static objects first, and the destructors
// of these objects would still use them.
QApplication *application = nullptr;
PaneFixture *fixture = nullptr;
int argumentCount = 1;
char programName[] = "remote_answers_fuzzer";
char *arguments[] = {programName, nullptr};

QString anyString(FuzzedDataProvider &provider)
{
    return QString::fromStdString(provider.ConsumeRandomLengthString(64));
}

QVariant anyValue(FuzzedDataProvider &provider)
{
    switch (provider.ConsumeIntegralInRange(0, 7)) {
    case 0:
        return provider.ConsumeIntegral<int>();
    case 1:
        return provider.ConsumeIntegral<quint64>();
    case 2:
        return provider.ConsumeFloatingPoint<double>();
    case 3:
        return anyString(provider);
    case 4:
        return provider.ConsumeBool();
    case 5:
        return QVariantMap{{anyString(provider), provider.ConsumeIntegral<int>()}};
    case 6:
        return QByteArray::fromStdString(provider.ConsumeRandomLengthString(16));
    default:
        return {};
    }
}

QVariantMap anyUserInfo(FuzzedDataProvider &provider)
{
    namespace Keys = UserInfoKeys;
    QVariantMap info;
    for (const QString &key : {Keys::Value, Keys::Total, Keys::Result, Keys::PassKey}) {
        if (provider.ConsumeBool())
            info.insert(key, anyValue(provider));
    }
    return info;
}

void agentTells(FakeAgent &agent, FuzzedDataProvider &provider)
{
    agent.cameraDict.clear();
    agent.sorted.clear();
    for (int count = provider.ConsumeIntegralInRange(0, 5); count > 0; --count) {
        const QString address = anyString(provider);
        agent.cameraDict[address] = {{QStringLiteral("Status"), anyValue(provider)},
                                     {QStringLiteral("FriendlyName"), anyValue(provider)},
                                     {QStringLiteral("CameraIDString"), anyValue(provider)}};
        agent.sorted.append(provider.ConsumeBool() ? address : anyString(provider));
    }
    agent.indexOfPreferred = provider.ConsumeIntegral<std::uint64_t>();
    agent.preferred.reset();
    if (provider.ConsumeBool())
        agent.preferred =
            CameraRecord{provider.ConsumeIntegral<int>(), anyString(provider), anyString(provider)};
    agent.usbAddress = anyString(provider);
    agent.needsFirmware = provider.ConsumeBool();
    agent.startUpdateResult = 1 + provider.ConsumeIntegralInRange(0, 100);
    agent.left = provider.ConsumeFloatingPoint<float>();
    agent.right = provider.ConsumeFloatingPoint<float>();
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    application = new QApplication(argumentCount, arguments);
    fixture = new PaneFixture;
    fixture->show();
    return 0;
}

/// Sends arbitrary replies and notifications to the pane, which must not crash.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FuzzedDataProvider provider(data, size);
    const QStringList &names = fixture->distributedCenter->registrations;
    agentTells(fixture->agent, provider);
    while (provider.remaining_bytes() > 0) {
        const QString name =
            names.at(provider.ConsumeIntegralInRange<int>(0, static_cast<int>(names.size()) - 1));
        fixture->agentPosts(name, anyUserInfo(provider));
    }
    fixture->controller().cameraStatusChanged();
    fixture->window.grab();
    while (!fixture->sheets->alerts.empty())
        fixture->sheets->dismissAlert();
    fixture->takeJournal();
    return 0;
}
