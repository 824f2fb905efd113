#include "cameras/KS7AnimatingStatusTableView.h"
#include "cameras/KS7Cam.h"
#include "pane/KS7SettingsWindowController.h"
#include "pane/PaneWords.h"
#include "preview/KS7PreviewController.h"

#include <QPushButton>

namespace {

QMap<QString, QString> namesOf(const QHash<QString, std::shared_ptr<KS7Cam>> &cameras)
{
    QMap<QString, QString> names;
    for (auto camera = cameras.begin(); camera != cameras.end(); ++camera)
        names.insert(camera.key(), camera.value() ? camera.value()->friendlyName() : QString());
    return names;
}

} // namespace

void KS7SettingsWindowController::showWords()
{
    PaneFacts facts;
    facts.isShown = mIsShown && !mSwitchedOut;
    facts.isConnected = isConnected();
    facts.isListRead = mListWasRead;
    facts.isOn = mWasOn;
    facts.isBluetoothOff = mBluetoothOff;
    facts.isSearching = mIsSearching;
    facts.isPreviewing = mStreaming;
    facts.hasPicture = outlets.previewView->hasCamera();
    facts.isPreferredStreaming = !outlets.addButton->isEnabled();
    facts.isSelectionRemovable = outlets.removeButton->isEnabled();
    facts.cameras = namesOf(mLocalCameraList);
    facts.isListFocused = outlets.cameraListTable->hasFocus();
    if (const auto camera = selectedCam()) {
        facts.hasSelection = true;
        facts.isSelectionStreaming = camera->status() == kKS7CamStreaming;
        facts.isSelectionSettled = camera->status() != kKS7CamPairing && camera->status() != kKS7CamStarting;
        facts.selectedAddress = selectedCamAddress();
        facts.selectedName = camera->friendlyName();
        facts.selectedStatus = camera->statusString();
    }
    outlets.words->show(facts);
}
