#pragma once

#include <QString>
#include <QUrl>

#include <memory>

namespace platform {

class BusConnection;

/// Posted on the workspace's notification center when the user's session becomes active on the screen or
/// stops being active.
inline const QString NSWorkspaceSessionDidBecomeActiveNotification =
    QStringLiteral("NSWorkspaceSessionDidBecomeActiveNotification");
inline const QString NSWorkspaceSessionDidResignActiveNotification =
    QStringLiteral("NSWorkspaceSessionDidResignActiveNotification");

/// Opens files and addresses in other programs. Operations return false if the file is missing or no program
/// can be started. A program's later failure is not reported.
class Workspace {
public:
    virtual ~Workspace() = default;

    virtual bool openURL(const QUrl &url) = 0;
    virtual bool openFile(const QString &path) = 0;
    /// Shows the file manager with the file selected.
    virtual bool selectFile(const QString &path) = 0;
    /// Opens the page of the desktop's settings where the user can turn Bluetooth on.
    virtual bool openBluetoothSettings() = 0;
};

/// Makes the workspace that uses the user's default programs. It does not wait until they have started.
std::shared_ptr<Workspace> makeWorkspace(std::shared_ptr<BusConnection> bus);

} // namespace platform
