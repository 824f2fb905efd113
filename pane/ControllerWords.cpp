#include "cameras/KS7AnimatingStatusTableView.h"
#include "cameras/KS7Cam.h"
#include "pane/KS7SettingsWindowController.h"
#include "pane/PaneWords.h"
#include "preview/KS7PreviewController.h"

#include <QLabel>
#include <QPushButton>

namespace {

QStringList namesOf(const QHash<QString, std::shared_ptr<KS7Cam>> &cameras)
{
    QStringList names;
    for (const auto &camera : cameras)
        names.append(camera ? camera->friendlyName() : QString());
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
    facts.isSearching = !outlets.discoveringMessage->isHidden();
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
        facts.selectedName = camera->friendlyName();
        facts.selectedStatus = camera->statusString();
    }
    outlets.words->show(facts);
}
