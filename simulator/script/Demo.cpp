#include "simulator/script/Demo.h"

#include "agent/AgentContract.h"
#include "simulator/model/AgentModel.h"

#include <QTimer>

namespace simulator {

namespace {

const QString KitchenAddress = QStringLiteral("00-1b-dc-0f-2a-9c");
const QString DeskAddress = QStringLiteral("00-1b-dc-0f-3b-71");
const QString WorkshopAddress = QStringLiteral("00-1b-dc-0f-5d-04");

/// Returns a camera of the demo. If the preferences contain a name that the user has given it, keeps that
/// name.
Camera known(AgentModel &model, const QString &address, const QString &name, int status)
{
    auto &preferences = model.preferences();
    const QVariant given = preferences.cameraValue(PreferenceKeys::FriendlyNames, address);
    if (!given.isValid())
        preferences.setCameraValue(PreferenceKeys::FriendlyNames, address, name);
    return {address, given.isValid() ? given.toString() : name, cameraIDFor(address), status,
            status != kKS7CamNotFound};
}

void plugWorkshop(AgentModel &model)
{
    model.registry().add(known(model, WorkshopAddress, QStringLiteral("Workshop"), kKS7CamNotStreaming));
    model.cable().plug(WorkshopAddress, true);
}

} // namespace

void Demo::begin(AgentModel &model)
{
    model.registry().add({known(model, KitchenAddress, QStringLiteral("Kitchen"), kKS7CamNotStreaming),
                          known(model, DeskAddress, QStringLiteral("Desk"), kKS7CamNotFound)});
    model.choose(KitchenAddress);
    QTimer::singleShot(model.behaviour().timing.plugging, &model, [&model] { plugWorkshop(model); });
}

} // namespace simulator
