#include "platform/PowerManagement.h"

namespace platform {
namespace {

class NullPowerManagement final : public PowerManagement {
public:
    std::uint32_t registerForSystemPower(void *, Callback) override { return 0; }
    void allowPowerChange(std::uint32_t, void *) override { }
};

} // namespace

std::shared_ptr<PowerManagement> makeNullPowerManagement()
{
    return std::make_shared<NullPowerManagement>();
}

} // namespace platform
