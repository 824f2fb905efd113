#include "platform/DesktopServices.h"

#include "platform/base/RunLoop.h"
#include "platform/bus/BusConnection.h"
#include "platform/bus/DistributedNotificationCenter.h"
#include "platform/bus/NotificationCenter.h"
#include "platform/bus/RemoteConnection.h"
#include "platform/capture/PipeWireCapture.h"
#include "platform/desktop/Bundle.h"
#include "platform/desktop/HostClasses.h"
#include "platform/desktop/KeyboardModifiers.h"
#include "platform/desktop/ProcessorClock.h"
#include "platform/desktop/ProgramLauncher.h"
#include "platform/desktop/Workspace.h"
#include "platform/power/LogindPower.h"
#include "platform/power/LogindSession.h"
#include "platform/preferences/UserDefaults.h"
#include "platform/sheets/Sheets.h"
#include "platform/updates/PackageKitUpdater.h"

namespace platform {

Services makeDesktopServices(const Product &product)
{
    const auto bus = std::make_shared<SessionBus>(product.program);
    const auto systemBus = std::make_shared<SystemBus>(product.program);
    Services services;
    services.runLoop = makeQtRunLoop();
    services.bundle = product.bundle;
    services.localCenter = std::make_shared<LocalNotificationCenter>();
    services.distributedCenter = std::make_shared<DistributedNotificationCenter>(bus, product.busNames);
    services.workspaceCenter = std::make_shared<LogindSession>(systemBus);
    services.connections = std::make_shared<DBusConnectionRegistry>(bus, services.runLoop,
                                                                    services.localCenter, product.busNames);
    services.launcher = makeProgramLauncher();
    services.hostClasses = makeHostClasses();
    services.userDefaults = makeFileUserDefaults();
    services.keyboard = makeKeyboardModifiers();
    services.processorClock = makeProcessorClock(product.processorRoot);
    services.updates = makePackageKitFramework(systemBus, product.program);
    services.workspace = makeWorkspace(bus);
    services.capture = makePipeWireCapture(services.localCenter, services.runLoop);
    services.sheets = makeQtSheetPresenter();
    services.power = std::make_shared<LogindPower>(systemBus, product.sleepDelay);
    return services;
}

} // namespace platform
