#pragma once

#include <memory>

namespace platform {

class Bundle;
class Capture;
class ConnectionRegistry;
class HostClasses;
class KeyboardModifiers;
class NotificationCenter;
class PowerManagement;
class ProcessorClock;
class ProgramLauncher;
class RunLoop;
class SheetPresenter;
class SoftwareUpdateFramework;
class UserDefaults;
class Workspace;

/// The desktop services that the pane uses: real ones from makeDesktopServices(), or fakes in tests.
struct Services {
    std::shared_ptr<RunLoop> runLoop;
    std::shared_ptr<NotificationCenter> localCenter;
    std::shared_ptr<NotificationCenter> distributedCenter;
    std::shared_ptr<NotificationCenter> workspaceCenter;
    std::shared_ptr<ConnectionRegistry> connections;
    std::shared_ptr<ProgramLauncher> launcher;
    std::shared_ptr<UserDefaults> userDefaults;
    std::shared_ptr<PowerManagement> power;
    std::shared_ptr<Capture> capture;
    std::shared_ptr<SheetPresenter> sheets;
    std::shared_ptr<Workspace> workspace;
    std::shared_ptr<HostClasses> hostClasses;
    std::shared_ptr<KeyboardModifiers> keyboard;
    std::shared_ptr<ProcessorClock> processorClock;
    std::shared_ptr<SoftwareUpdateFramework> updates;
    std::shared_ptr<Bundle> bundle;
};

} // namespace platform
