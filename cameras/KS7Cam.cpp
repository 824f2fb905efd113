#include "cameras/KS7Cam.h"

#include "platform/desktop/BluetoothDevice.h"
#include "platform/preferences/UserDefaults.h"
#include "settings/KS7Domain.h"

#include <QCoreApplication>
#include <QVariantMap>

namespace {

QString translated(const char *text)
{
    return QCoreApplication::translate("KS7Cam", text);
}

QString addressOf(const platform::BluetoothDevice *device)
{
    return device ? device->getAddressString() : QString();
}

/// Reads the device's entry in the dictionary that the preferences store under `key`. Returns an invalid
/// variant if there is no entry.
QVariant storedFor(const platform::BluetoothDevice *device, platform::UserDefaults *defaults,
                   const QString &key)
{
    const QString address = addressOf(device);
    if (address.isNull() || !defaults)
        return {};
    return KS7Domain::domainObjectForKey(*defaults, key).toMap().value(address);
}

/// Writes the device's entry in the dictionary that the preferences store under `key`. Does nothing without
/// an address, or if the stored value is not a dictionary.
void storeFor(const platform::BluetoothDevice *device, platform::UserDefaults *defaults, const QString &key,
              const QVariant &value)
{
    const QString address = addressOf(device);
    if (address.isNull() || !defaults)
        return;
    const QVariant stored = KS7Domain::domainObjectForKey(*defaults, key);
    if (stored.isValid() && stored.userType() != QMetaType::QVariantMap)
        return;
    QVariantMap entries = stored.toMap();
    entries.insert(address, value);
    KS7Domain::domainSetObject(*defaults, entries, key);
}

} // namespace

std::shared_ptr<KS7Cam> KS7Cam::camWithName(const QString &name, const QString &cameraID, std::int32_t status)
{
    auto cam = std::make_shared<KS7Cam>();
    cam->initWithName(name, cameraID, status);
    return cam;
}

KS7Cam *KS7Cam::initWithName(const QString &name, const QString &cameraID, std::int32_t status)
{
    mDevice.reset();
    mStatus = status;
    mWasFound = false; // Only a later setStatus() reports the camera as found; the initial status does not.
    mFriendlyName = name;
    mCameraID = cameraID;
    mDefaults = nullptr;
    return this;
}

KS7Cam *KS7Cam::initWithDevice(std::shared_ptr<platform::BluetoothDevice> device,
                               platform::UserDefaults *defaults)
{
    initWithName(QString(), QString(), kKS7CamNotFound);
    mDevice = std::move(device);
    mDefaults = defaults;
    return this;
}

std::shared_ptr<KS7Cam> KS7Cam::copy() const
{
    auto cam = std::make_shared<KS7Cam>();
    cam->initWithDevice(mDevice, mDefaults);
    return cam;
}

void KS7Cam::setStatus(std::int32_t status)
{
    mStatus = status;
    if (status == kKS7CamNotStreaming || status == kKS7CamPairing || status == kKS7CamStreaming)
        mWasFound = true;
}

QString KS7Cam::statusString() const
{
    switch (mStatus) {
    case kKS7CamNotFound:
        return translated(QT_TRANSLATE_NOOP("KS7Cam", "Not Found"));
    case kKS7CamNotStreaming:
        return translated(QT_TRANSLATE_NOOP("KS7Cam", "Not Streaming"));
    case kKS7CamPairing:
        return translated(QT_TRANSLATE_NOOP("KS7Cam", "Pairing"));
    case kKS7CamStarting:
        return translated(QT_TRANSLATE_NOOP("KS7Cam", "Starting"));
    case kKS7CamStreaming:
        return translated(QT_TRANSLATE_NOOP("KS7Cam", "Streaming"));
    case kKS7CamError:
        return translated(QT_TRANSLATE_NOOP("KS7Cam", "Error"));
    default:
        return QStringLiteral("");
    }
}

QString KS7Cam::cameraIDStringForDevice(const platform::BluetoothDevice *device)
{
    constexpr int IDLength = 4;
    QString address = addressOf(device);
    if (address.isNull())
        return {};
    address.remove(QLatin1Char('-'));
    return address.right(IDLength).toUpper();
}

QString KS7Cam::defaultFriendlyNameForDevice(const platform::BluetoothDevice *device)
{
    const QString cameraID = cameraIDStringForDevice(device);
    if (cameraID.isNull())
        return translated(QT_TRANSLATE_NOOP("KS7Cam", "Unknown"));
    return translated(QT_TRANSLATE_NOOP("KS7Cam", "Orvex KS-7 %1")).arg(cameraID);
}

QString KS7Cam::cameraIDString() const
{
    return mDevice ? cameraIDStringForDevice(mDevice.get()) : mCameraID;
}

QString KS7Cam::friendlyName() const
{
    if (!mDevice)
        return mFriendlyName;
    const QVariant name = storedFor(mDevice.get(), mDefaults, PreferenceKeys::FriendlyNames);
    return name.userType() == QMetaType::QString ? name.toString()
                                                 : defaultFriendlyNameForDevice(mDevice.get());
}

void KS7Cam::setFriendlyName(const QString &name)
{
    storeFor(mDevice.get(), mDefaults, PreferenceKeys::FriendlyNames, name);
}

bool KS7Cam::shouldIgnore() const
{
    return storedFor(mDevice.get(), mDefaults, PreferenceKeys::IgnoredCams).toDouble() != 0;
}

void KS7Cam::setShouldIgnore(bool ignore)
{
    storeFor(mDevice.get(), mDefaults, PreferenceKeys::IgnoredCams, ignore);
}
