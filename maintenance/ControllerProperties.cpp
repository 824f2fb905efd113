#include "cameras/KS7Cam.h"
#include "pane/KS7SettingsWindowController.h"
#include "platform/sheets/Sheets.h"

#include <QCheckBox>
#include <QLineEdit>

void KS7SettingsWindowController::showCameraProperties(QObject *)
{
    setupProperties();
    beginSheet(outlets.propertiesSheet);
}

void KS7SettingsWindowController::setupProperties()
{
    const auto camera = selectedCam();
    if (!camera)
        return;
    outlets.cameraNameText->setText(camera->friendlyName());
    outlets.cameraIDText->setText(camera->cameraIDString());
    outlets.ignoreCheckbox->setChecked(camera->shouldIgnore());
}

void KS7SettingsWindowController::propertiesOkay(QObject *)
{
    const QString address = selectedCamAddress();
    if (address.isNull())
        return;
    const QString name = outlets.cameraNameText->text();
    if (mSharedDeviceController->validateName(name))
        mSharedDeviceController->setName(name, address);
    mServices.sheets->endSheet(outlets.propertiesSheet);
}

void KS7SettingsWindowController::propertiesCancel(QObject *)
{
    mServices.sheets->endSheet(outlets.propertiesSheet);
}

void KS7SettingsWindowController::ignoreCamera(QObject *)
{
    // Empty on purpose: a click on the check box stores nothing. The box only shows whether the agent ignores
    // the camera.
}
