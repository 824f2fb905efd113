#include "cameras/KS7Cam.h"
#include "platform/desktop/BluetoothDevice.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

class Device final : public platform::BluetoothDevice {
public:
    explicit Device(QString address)
        : mAddress(std::move(address))
    {
    }
    [[nodiscard]] QString getAddressString() const override { return mAddress; }

private:
    QString mAddress;
};

void require(bool condition)
{
    if (!condition)
        std::abort();
}

} // namespace

/// Checks the camera ID of any address: the last four characters in upper case, not counting hyphens.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    QString address = QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<int>(size));
    const Device device(address);
    const QString cameraID = KS7Cam::cameraIDStringForDevice(&device);
    require(!cameraID.contains(QLatin1Char('-')));
    const QString digits = address.remove(QLatin1Char('-'));
    require(cameraID == digits.right(4).toUpper());
    require(KS7Cam::defaultFriendlyNameForDevice(&device).endsWith(cameraID));
    return 0;
}
