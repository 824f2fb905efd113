#include "platform/Desktop.h"

#include "platform/AgentLauncher.h"
#include "platform/Bundle.h"
#include "platform/DBusConnection.h"
#include "platform/DistributedNotificationCenter.h"
#include "platform/Hardware.h"
#include "platform/Host.h"
#include "platform/LogindPower.h"
#include "platform/LogindSession.h"
#include "platform/NotificationCenter.h"
#include "platform/PackageKitUpdater.h"
#include "platform/PipeWireCapture.h"
#include "platform/RunLoop.h"
#include "platform/SessionBus.h"
#include "platform/Sheets.h"
#include "platform/UserDefaults.h"
#include "platform/Workspace.h"

namespace platform {

Services makeDesktopServices()
{
    const auto bus = std::make_shared<SessionBus>();
    Services services;
    services.runLoop = makeQtRunLoop();
    services.bundle = makePaneBundle();
    services.localCenter = std::make_shared<LocalNotificationCenter>();
    services.distributedCenter = std::make_shared<DistributedNotificationCenter>(bus);
    services.workspaceCenter = std::make_shared<LogindSession>();
    services.connections =
        std::make_shared<DBusConnectionRegistry>(bus, services.runLoop, services.localCenter);
    services.agentLauncher = makeAgentLauncher();
    services.hostClasses = makeHostClasses();
    services.userDefaults = makeFileUserDefaults();
    services.keyboard = makeKeyboardModifiers();
    services.processorClock = makeProcessorClock();
    services.updates = makePackageKitFramework();
    services.workspace = makeWorkspace();
    services.capture = makePipeWireCapture(services.localCenter, services.runLoop);
    services.sheets = makeQtSheetPresenter();
    services.power = std::make_shared<LogindPower>();
    return services;
}

} // namespace platform
