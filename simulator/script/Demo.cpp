#include "simulator/script/Demo.h"

#include "settings/KS7Domain.h"
#include "simulator/model/AgentModel.h"

#include <QTimer>

namespace simulator {

namespace {

const QString KitchenAddress = QStringLiteral("00-1b-dc-0f-2a-9c");
const QString DeskAddress = QStringLiteral("00-1b-dc-0f-3b-71");
const QString WorkshopAddress = QStringLiteral("00-1b-dc-0f-5d-04");

/// A name that somebody has given the camera since stands.
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
    model.roster().add(known(model, WorkshopAddress, QStringLiteral("Workshop"), kKS7CamNotStreaming));
    model.cable().plug(WorkshopAddress, true);
}

} // namespace

void Demo::begin(AgentModel &model, const Timing &timing)
{
    model.roster().add({known(model, KitchenAddress, QStringLiteral("Kitchen"), kKS7CamNotStreaming),
                        known(model, DeskAddress, QStringLiteral("Desk"), kKS7CamNotFound)});
    model.choose(KitchenAddress);
    QTimer::singleShot(timing.plugging, &model, [&model] { plugWorkshop(model); });
}

} // namespace simulator
