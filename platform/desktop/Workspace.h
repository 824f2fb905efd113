#pragma once

#include <QString>
#include <QUrl>

#include <memory>

namespace platform {

class BusConnection;

/// Posted on the workspace's centre when the user's session gets or loses the screen.
inline const QString NSWorkspaceSessionDidBecomeActiveNotification =
    QStringLiteral("NSWorkspaceSessionDidBecomeActiveNotification");
inline const QString NSWorkspaceSessionDidResignActiveNotification =
    QStringLiteral("NSWorkspaceSessionDidResignActiveNotification");

/// Opens files and addresses in the user's other programs. Each operation returns whether a program took the
/// request.
class Workspace {
public:
    virtual ~Workspace() = default;

    virtual bool openURL(const QUrl &url) = 0;
    virtual bool openFile(const QString &path) = 0;
    /// Shows the file, selected, in the file manager.
    virtual bool selectFile(const QString &path) = 0;
    /// Opens the page of the desktop's own settings where Bluetooth is turned on.
    virtual bool openBluetoothSettings() = 0;
};

/// The user's default programs. Starts them without waiting for them.
std::shared_ptr<Workspace> makeWorkspace(std::shared_ptr<BusConnection> bus);

} // namespace platform
