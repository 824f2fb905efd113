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
    // The box only tells what the agent has decided; nobody stores a click on it.
}

void KS7SettingsWindowController::sheetDidEnd(QWidget *sheet, int, void *)
{
    // With the focus on the sheet itself, a field that is being edited gives up its cursor and input method.
    sheet->setFocus(Qt::OtherFocusReason);
    sheet->hide();
}
