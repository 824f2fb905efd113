#include "agent/NotificationNames.h"
#include "agent/WireTypes.h"
#include "cameras/CamCell.h"
#include "cameras/CameraTableModel.h"
#include "cameras/KS7AnimatingStatusTableView.h"
#include "cameras/KS7Cam.h"
#include "logging/KS7OrvexLogger.h"
#include "pane/KS7SettingsWindowController.h"
#include "platform/base/RunLoop.h"
#include "preview/KS7PreviewController.h"
#include "widgets/Indicators.h"

#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QToolButton>

#include <limits>
#include <utility>

namespace {

std::shared_ptr<KS7Cam> cameraFromEntry(const QVariantMap &entry)
{
    const auto record = recordFromDictionary(entry).value_or(CameraRecord());
    return KS7Cam::camWithName(record.friendlyName, record.cameraIDString, record.status);
}

std::int32_t statusOf(const std::shared_ptr<KS7Cam> &camera)
{
    return camera ? camera->status() : kKS7CamNotFound;
}

/// A camera that is pairing, starting or streaming cannot be removed.
bool isRemovable(std::int32_t status)
{
    return status != kKS7CamStreaming && status != kKS7CamStarting && status != kKS7CamPairing;
}

std::optional<CameraRecord> recordOf(const std::shared_ptr<KS7Cam> &camera)
{
    if (!camera)
        return std::nullopt;
    return CameraRecord{camera->status(), camera->cameraIDString(), camera->friendlyName()};
}

/// Queues `work` for the main thread. Drops it if the host destroys the controller before, because the run
/// loop may outlive the controller.
void performLater(platform::RunLoop &runLoop, KS7SettingsWindowController *controller,
                  platform::RunLoop::Work work)
{
    runLoop.performOnMainThread([guard = QPointer(controller), work = std::move(work)] {
        if (guard)
            work();
    });
}

} // namespace

void KS7SettingsWindowController::setupCameraStatus()
{
    auto cell = std::make_unique<CamCell>();
    cell->initTextCell(QStringLiteral("foobar"), mServices.bundle);
    outlets.cameraListTable->setDataCell(std::move(cell));
    outlets.cameraListTable->setDoubleAction([this](QObject *sender) { doubleClickCamera(sender); });
}

void KS7SettingsWindowController::cameraStatusChanged()
{
    OrvexLog(u"cameraStatusChanged");
    mWasOn = isKS7On();
    const bool enabled = mWasOn && !mBluetoothOff;
    auto *table = outlets.cameraListTable;
    table->setUsable(enabled);
    table->setAllowsEmptySelection(!enabled);
    if (!enabled)
        table->deselectAll();
    copyCamerasLocal();
    reloadTable();
    enableUSBOptions();
    const auto preferred = mSharedDeviceController->getPreferredKS7Cam();
    outlets.addButton->setEnabled(!preferred || preferred->status != kKS7CamStreaming);
    const auto selected = selectedCam();
    outlets.removeButton->setEnabled(selected && isRemovable(selected->status()));
    if (!mStreaming)
        outlets.previewView->display();
    outlets.startButton->setEnabled(selected && mSharedDeviceController && enabled);
    showWords();
}

void KS7SettingsWindowController::copyCamerasLocal()
{
    mListWasRead = isConnected();
    const auto entries = mSharedDeviceController->cameraDict();
    const auto sorted = mSharedDeviceController->sortedDeviceList();
    mLocalCameraList.clear();
    for (auto entry = entries.begin(); entry != entries.end(); ++entry)
        mLocalCameraList.insert(entry.key(), cameraFromEntry(entry.value()));
    mLocalSortedNames = sorted;
    mIndexOfPreferred = static_cast<std::int32_t>(mSharedDeviceController->indexOfPreferredKS7Cam());
}

void KS7SettingsWindowController::reloadTable()
{
    outlets.cameraListTable->reloadData();
    pickPreferredCamera();
    outlets.cameraListTable->display();
}

int KS7SettingsWindowController::numberOfRowsInTableView(const QObject *table)
{
    if (!mSharedDeviceController || table != outlets.cameraListTable)
        return 0;
    const auto count = static_cast<int>(mLocalCameraList.size());
    outlets.pulldownMenu->setEnabled(count >= 1);
    return count;
}

QVariant KS7SettingsWindowController::tableViewObjectValue(const QObject *table, const QString &column,
                                                           int row)
{
    if (!mSharedDeviceController)
        return {};
    if (table != outlets.cameraListTable || column != KS7AnimatingStatusTableView::CameraColumn)
        return QString(QLatin1String(""));
    if (row < 0 || row >= mLocalSortedNames.size())
        return {};
    const auto camera = mLocalCameraList.value(mLocalSortedNames.at(row));
    return camera ? QVariant::fromValue(camera) : QVariant();
}

void KS7SettingsWindowController::tableViewSelectionDidChange(const Notification &)
{
}

QString KS7SettingsWindowController::selectedCamAddress()
{
    int row = outlets.cameraListTable->selectedRow();
    if (row < 0)
        row = outlets.cameraListTable->clickedRow();
    if (row < 0 || row >= mLocalCameraList.size())
        return {};
    return mLocalSortedNames.value(row);
}

std::shared_ptr<KS7Cam> KS7SettingsWindowController::selectedCam()
{
    const auto address = selectedCamAddress();
    return address.isNull() ? nullptr : mLocalCameraList.value(address);
}

void KS7SettingsWindowController::pickPreferredCamera()
{
    const bool isOn = isKS7On();
    const std::uint64_t row = mSharedDeviceController->indexOfPreferredKS7Cam();
    mIndexOfPreferred = static_cast<std::int32_t>(row);
    // Compare the whole 64-bit value: after a cast to 32 bits, an invalid index could name an existing row.
    const bool isRow = row <= std::uint64_t(std::numeric_limits<int>::max());
    if (row != NoPreferredCamera && isRow && isOn)
        outlets.cameraListTable->selectRow(static_cast<int>(row));
    enableUSBOptions();
}

void KS7SettingsWindowController::setActiveCamera(QObject *)
{
    mSharedDeviceController->setPreferredDeviceAddress(selectedCamAddress());
    cameraStatusChanged();
}

void KS7SettingsWindowController::clickedTableRow(QObject *sender)
{
    enableUSBOptions();
    outlets.removeButton->setEnabled(isRemovable(statusOf(selectedCam())));
    setActiveCamera(sender);
}

void KS7SettingsWindowController::doubleClickCamera(QObject *)
{
    showCameraProperties(nullptr);
}

void KS7SettingsWindowController::discover(QObject *)
{
    mServices.distributedCenter->postNotificationName(NotificationNames::StartDiscovering);
}

void KS7SettingsWindowController::addCameras(QObject *sender)
{
    discover(sender);
}

// Removes the selected camera. Starts no refresh, because the agent posts KS7CameraListChanged after the
// removal and this notification causes a refresh.
void KS7SettingsWindowController::removeCamera(QObject *)
{
    const auto camera = selectedCam();
    const int row = outlets.cameraListTable->selectedRow();
    mSharedDeviceController->removeCameraAtIndex(row, true);
    mSharedDeviceController->checkRemoveCurrentCam(recordOf(camera));
}

void KS7SettingsWindowController::startedDiscovering(const Notification &)
{
    outlets.searchingIndicator->startAnimation();
    outlets.discoveringMessage->show();
    mIsSearching = true;
    showWords();
}

void KS7SettingsWindowController::stoppedDiscovering(const Notification &)
{
    outlets.searchingIndicator->stopAnimation();
    outlets.discoveringMessage->hide();
    mIsSearching = false;
    showWords();
}

void KS7SettingsWindowController::cameraListChanged(const Notification &)
{
    performLater(*mServices.runLoop, this, [this] { cameraStatusChanged(); });
}

void KS7SettingsWindowController::cameraSelectionChanged(const Notification &)
{
    pickPreferredCamera();
    showWords();
}

void KS7SettingsWindowController::pairingInitiated(const Notification &)
{
    cameraStatusChanged();
}

void KS7SettingsWindowController::streamingInitiated(const Notification &)
{
    cameraStatusChanged();
}

void KS7SettingsWindowController::streamingEnded(const Notification &)
{
    cameraStatusChanged();
}

void KS7SettingsWindowController::receivedData(const Notification &)
{
    performLater(*mServices.runLoop, this, [this] { doReceivedData(nullptr); });
}

void KS7SettingsWindowController::doReceivedData(void *)
{
    cameraStatusChanged();
}
